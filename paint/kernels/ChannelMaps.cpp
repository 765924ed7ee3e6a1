#include "paint/kernels/ChannelMaps.h"

#include <algorithm>
#include <cstdlib>

#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"

namespace {

constexpr int channelCount = 3;

/// The numbers that each byte of a group of pixels is computed with, in the order of the bytes.
constexpr int groupBytes = 32;

template <typename Number>
struct GroupNumbers {
    Number numbers[groupBytes];

    GroupNumbers(Number red, Number green, Number blue, Number alpha) {
        const Number ofPixel[bytesPerPixel] = {red, green, blue, alpha};
        for (int i = 0; i < groupBytes; ++i) {
            numbers[i] = ofPixel[i % bytesPerPixel];
        }
    }
};

/// Runs `change(byte, i)` on all bytes, where `i` is the byte's place in its group.
template <typename Change>
void ChangeBytes(unsigned char* bytes, int count, Change change) {
    for (; count >= groupBytes; count -= groupBytes, bytes += groupBytes) {
        for (int i = 0; i < groupBytes; ++i) {
            bytes[i] = change(bytes[i], i);
        }
    }
    for (int i = 0; i < count; ++i) {
        bytes[i] = change(bytes[i], i);
    }
}

}  // namespace

void ChannelTables::MapRow(unsigned char* pixels, int count) const {
    for (int i = 0; i < count; ++i) {
        const Pixel pixel = LoadPixel(pixels, i);
        StorePixel(pixels, i,
                   tables[0][RedOf(pixel)] | tables[1][GreenOf(pixel)] | tables[2][BlueOf(pixel)] |
                       (pixel & alphaMask));
    }
}

// Brightness and contrast.

namespace {

/// The steepness 1 of a line.
constexpr std::uint16_t evenFactor = 1 << 14;

unsigned char OnLine(unsigned char value, short offset, std::uint16_t factor, short start) {
    const auto brighter = std::clamp<short>(static_cast<short>(value + offset), 0, 255);
    const auto high = static_cast<std::uint16_t>(brighter << 8);
    const auto scaled = static_cast<std::uint16_t>(std::uint32_t{high} * factor >> 16);
    const auto raised = static_cast<short>(static_cast<short>(scaled + start) >> 6);
    return static_cast<unsigned char>(std::clamp<short>(raised, 0, 255));
}

/// The numbers of a line for the bytes of a group; alpha bytes stay.
struct LineGroup {
    LineGroup(short offset, std::uint16_t factor, short start)
        : offsets(offset, offset, offset, 0),
          factors(factor, factor, factor, evenFactor),
          starts(start, start, start, 0) {}

    GroupNumbers<short> offsets;
    GroupNumbers<std::uint16_t> factors;
    GroupNumbers<short> starts;
};

void LineLoop(const LineGroup& group, unsigned char* bytes, int count) {
    ChangeBytes(bytes, count, [&](unsigned char byte, int i) {
        return OnLine(byte, group.offsets.numbers[i], group.factors.numbers[i],
                      group.starts.numbers[i]);
    });
}

}  // namespace

ContrastMap::ContrastMap(int newOffset, double steepness)
    : offset(static_cast<short>(std::clamp(newOffset, -255, 255))) {
    for (int c = 0; c < channelCount; ++c) {
        tables.Fill(c, [&](int value) {
            const int brighter = std::clamp(value + newOffset, 0, 255);
            return std::clamp(static_cast<int>((brighter - 128) * steepness + 128.0), 0, 255);
        });
    }
    FindLine(steepness);
}

/// Tries the factors around the steepness.
void ContrastMap::FindLine(double steepness) {
    constexpr int farthest = 8;  // of the factors that are needed; none farther fits the others
    const double exactFactor = steepness * evenFactor;
    if (!(exactFactor >= farthest && exactFactor <= 2.0 * evenFactor)) {
        return;
    }
    const auto nearest = static_cast<int>(exactFactor);
    for (int away = 0; away <= farthest && !isLine; ++away) {
        isLine = FitLine(static_cast<std::uint16_t>(nearest + away)) ||
                 FitLine(static_cast<std::uint16_t>(nearest - away));
    }
}

/// Looks for a start with which the line gives the table's values. False if there is none.
bool ContrastMap::FitLine(std::uint16_t newFactor) {
    int lowest = -32768;
    int highest = 32767;
    for (int value = 0; value < 256 && lowest <= highest; ++value) {
        const int brighter = std::clamp(value + offset, 0, 255);
        const int scaled = (brighter << 8) * newFactor >> 16;
        const int result = tables.Value(0, value);
        if (result > 0) {
            lowest = std::max(lowest, (result << 6) - scaled);
        }
        if (result < 255) {
            highest = std::min(highest, (result << 6) + 63 - scaled);
        }
        // The sum has 16 bits.
        highest = std::min(highest, 32767 - scaled);
    }
    if (lowest > highest) {
        return false;
    }
    factor = newFactor;
    start = static_cast<short>(std::clamp(0, lowest, highest));
    return true;
}

void ContrastMap::MapRow(unsigned char* pixels, int count) const {
    if (isLine) {
        const LineGroup group(offset, factor, start);
        ForThisProcessor<LineLoop>(group, pixels, count * bytesPerPixel);
    } else {
        tables.MapRow(pixels, count);
    }
}

// Towards a colour.

namespace {

unsigned char Moved(unsigned char value, unsigned char goal, std::uint16_t factor) {
    const auto larger = static_cast<std::uint16_t>(std::max(value, goal));
    const auto smaller = static_cast<std::uint16_t>(std::min(value, goal));
    const auto twice = static_cast<std::uint16_t>(2 * (larger - smaller));
    const auto way = static_cast<std::uint16_t>(std::uint32_t{twice} * factor >> 16);
    return static_cast<unsigned char>(value > goal ? value - way : value + way);
}

/// The numbers of a move for the bytes of a group; alpha bytes stay.
struct MoveGroup {
    MoveGroup(const unsigned char (&goal)[channelCount], std::uint16_t factor)
        : goals(goal[0], goal[1], goal[2], 0), factors(factor, factor, factor, 0) {}

    GroupNumbers<unsigned char> goals;
    GroupNumbers<std::uint16_t> factors;
};

void MoveLoop(const MoveGroup& group, unsigned char* bytes, int count) {
    ChangeBytes(bytes, count, [&](unsigned char byte, int i) {
        return Moved(byte, group.goals.numbers[i], group.factors.numbers[i]);
    });
}

}  // namespace

ColorMap::ColorMap(const RGBColor16& color, double share)
    : goals{HighByte(color.red), HighByte(color.green), HighByte(color.blue)} {
    for (int c = 0; c < channelCount; ++c) {
        tables.Fill(
            c, [&](int value) { return value - static_cast<int>((value - goals[c]) * share); });
    }
    FindFactor(share);
}

/// Tries the two factors next to the share.
void ColorMap::FindFactor(double share) {
    if (!(share >= 0.0 && share <= 1.0)) {
        return;
    }
    const auto below = static_cast<std::uint16_t>(share * 32768.0);
    for (const int next : {0, 1}) {
        factor = static_cast<std::uint16_t>(below + next);
        if (FitsTable()) {
            isLine = true;
            return;
        }
    }
}

bool ColorMap::FitsTable() const {
    for (int c = 0; c < channelCount; ++c) {
        for (int value = 0; value < 256; ++value) {
            if (Moved(static_cast<unsigned char>(value), goals[c], factor) !=
                tables.Value(c, value)) {
                return false;
            }
        }
    }
    return true;
}

void ColorMap::MapRow(unsigned char* pixels, int count) const {
    if (isLine) {
        const MoveGroup group(goals, factor);
        ForThisProcessor<MoveLoop>(group, pixels, count * bytesPerPixel);
    } else {
        tables.MapRow(pixels, count);
    }
}
