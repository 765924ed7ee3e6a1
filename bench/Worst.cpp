// Searches random records and tile sizes for those with which each operation takes longest.
//
//     bench-worst [--damaged] [RECORDS [SEED [OPERATION]]]
//
// 1000 records of each operation, or of one, in the dialog's ranges with a preference for their
// ends; with --damaged, any bytes at all, as a damaged preset holds. Ends with 1 if one run takes a
// second or more of the processor's time.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/Platform.h"
#include "bench/CoreHost.h"
#include "paint/Catalog.h"
#include "paint/EffectRun.h"
#include "paint/PaintClass.h"
#include "paint/Stroke.h"

namespace {

/// In seconds.
constexpr double limit = 1.0;

class Random {
  public:
    explicit Random(unsigned seed) : generator(seed) {}

    /// `lo` to `hi`, both included.
    int Number(int lo, int hi) {
        return lo + static_cast<int>(generator() % static_cast<unsigned>(hi - lo + 1));
    }
    double Real(double lo, double hi) {
        return lo + (hi - lo) * static_cast<double>(generator()) / 4294967295.0;
    }
    bool OneIn(int count) { return Number(1, count) == 1; }

  private:
    std::mt19937 generator;
};

/// One operation with its settings drawn, and what tells them again.
struct Trial {
    std::string settings;
    std::function<void(PaintClass&)> run;
};

struct Operation {
    std::string name;
    std::function<Trial(Random&, short width, short height)> draw;
};

double ValueOf(const Field& field, Random& random) {
    if (!field.words.empty()) {
        const auto last = static_cast<int>(field.words.size()) - 1;
        return field.words[static_cast<std::size_t>(random.Number(0, last))].value;
    }
    switch (random.Number(0, 3)) {
        case 0:
            return field.low;
        case 1:
            return field.high;
        default:
            return random.Real(field.low, field.high);
    }
}

std::string SettingsOf(const CatalogRow& row, const AnyRecord& record) {
    std::string settings;
    for (const Field& field : row.fields) {
        if (field.type != FieldType::color) {
            char text[80];
            std::snprintf(text, sizeof text, " %s=%g", field.name,
                          ReadNumber(field, record.Data()));
            settings += text;
        }
    }
    return settings;
}

Trial DrawRecord(const CatalogRow& row, Random& random, bool isDamaged) {
    AnyRecord record(row);
    if (isDamaged) {
        std::vector<unsigned char> bytes(row.recordSize);
        std::ranges::generate(bytes,
                              [&] { return static_cast<unsigned char>(random.Number(0, 255)); });
        std::memcpy(record.Data(), bytes.data(), bytes.size());
    } else {
        for (const Field& field : row.fields) {
            if (field.type != FieldType::color) {
                WriteNumber(field, record.Data(), ValueOf(field, random));
            }
        }
    }
    return {SettingsOf(row, record),
            [&row, record](PaintClass& pic) { row.run(pic, record.Data()); }};
}

hostapi::Point DrawPoint(Random& random) {
    const auto coordinate = [&] { return static_cast<std::int16_t>(random.Number(-600, 1200)); };
    const std::int16_t v = coordinate();
    return {.v = v, .h = coordinate()};
}

std::string TextOf(const char* name, int value) {
    return std::string(" ") + name + "=" + std::to_string(value);
}

std::string TextOf(const char* name, hostapi::Point point) {
    return std::string(" ") + name + "=" + std::to_string(point.h) + "," + std::to_string(point.v);
}

template <typename ToolStroke>
Trial DrawStroke(Random& random, short, short) {
    const hostapi::Point from = DrawPoint(random);
    const hostapi::Point to = DrawPoint(random);
    const auto size = static_cast<short>(random.Number(1, brushTableSide));
    const auto offset = static_cast<short>(random.Number(-512, 512));
    return {
        TextOf("from", from) + TextOf("to", to) + TextOf("size", size) + TextOf("offset", offset),
        [=](PaintClass& pic) {
            pic.brushSize = size;
            pic.stampSize = size;
            pic.stampOffsetH = offset;
            ToolStroke stroke(pic);
            stroke.Paint(from, to);
        }};
}

Trial DrawFill(Random& random, short, short) {
    const hostapi::Point start = DrawPoint(random);
    const auto tolerance = static_cast<short>(random.Number(0, 100));
    const auto antiAlias = static_cast<short>(random.Number(0, 1));
    return {
        TextOf("start", start) + TextOf("tolerance", tolerance) + TextOf("antiAlias", antiAlias),
        [=](PaintClass& pic) {
            pic.fillTolerance = tolerance;
            pic.fillAntiAlias = antiAlias;
            pic.FloodFill(start);
        }};
}

Trial DrawGradient(Random& random, short, short) {
    const hostapi::Point from = DrawPoint(random);
    hostapi::Point to = DrawPoint(random);
    (random.OneIn(2) ? to.h : to.v) = 0;
    if (to.h == 0) {
        to.h = from.h;
    } else {
        to.v = from.v;
    }
    return {TextOf("from", from) + TextOf("to", to),
            [=](PaintClass& pic) { pic.Gradient(from, to); }};
}

Trial DrawCombine(Random& random, short width, short height) {
    const auto amount = static_cast<std::int16_t>(random.Number(0, 100));
    const int mode = random.Number(1, 3);
    // Shared, as a function object is copied.
    const std::shared_ptr<PaintClass> other = PaintClass::Make(width, height);
    return {TextOf("amount", amount) + TextOf("mode", mode),
            [=](PaintClass& pic) { RunCombine(pic, *other, amount, mode); }};
}

Trial DrawTile(Random& random, short, short) {
    const auto across = static_cast<short>(random.Number(1, 4));
    const auto down = static_cast<short>(random.Number(1, 4));
    return {TextOf("across", across) + TextOf("down", down),
            [=](PaintClass& pic) { RunTile(pic, across, down); }};
}

Trial DrawResize(Random& random, short, short) {
    const auto width = static_cast<short>(random.Number(1, maximalTextureSide));
    const auto height = static_cast<short>(random.Number(1, maximalTextureSide));
    return {TextOf("width", width) + TextOf("height", height),
            [=](PaintClass& pic) { RunResize(pic, width, height); }};
}

Trial DrawMove(Random& random, short, short) {
    const int right = random.Number(-600, 600);
    const int down = random.Number(-600, 600);
    return {TextOf("right", right) + TextOf("down", down),
            [=](PaintClass& pic) { RunMove(pic, right, down); }};
}

template <void (PaintClass::*operation)()>
Trial WithoutSettings(Random&, short, short) {
    return {"", [](PaintClass& pic) { (pic.*operation)(); }};
}

Trial DrawAddBump(Random&, short, short) {
    return {"", [](PaintClass& pic) { pic.AddBump(); }};
}

std::vector<Operation> Operations(bool isDamaged) {
    std::vector<Operation> operations;
    for (const CatalogRow& row : Catalog()) {
        operations.push_back({row.name, [&row, isDamaged](Random& random, short, short) {
                                  return DrawRecord(row, random, isDamaged);
                              }});
    }
    const std::vector<Operation> others = {
        {"Add Bump", DrawAddBump},
        {"Invert", WithoutSettings<&PaintClass::Invert>},
        {"Combine", DrawCombine},
        {"Tile", DrawTile},
        {"Resize", DrawResize},
        {"Move", DrawMove},
        {"Brush", DrawStroke<BrushStroke>},
        {"Eraser", DrawStroke<EraserStroke>},
        {"Pencil", DrawStroke<PencilStroke>},
        {"Stamp", DrawStroke<StampStroke>},
        {"Fill", DrawFill},
        {"Gradient", DrawGradient},
    };
    operations.insert(operations.end(), others.begin(), others.end());
    return operations;
}

/// A side of the tile: most often one of the extremes.
short DrawSide(Random& random) {
    constexpr short extremes[] = {1, 2, 3, 511, maximalTextureSide, maximalTextureSide};
    const int choice = random.Number(0, 9);
    return choice < 6 ? extremes[choice] : static_cast<short>(random.Number(1, maximalTextureSide));
}

/// Noise, one colour, or a few colours.
void DrawPicture(Random& random, PaintClass& pic) {
    const int kind = random.Number(0, 2);
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            const int tone = kind == 2 ? random.Number(0, 2) * 60 : random.Number(0, 255);
            pic.SetPixel(x, y, kind == 1 ? 0x123456 : static_cast<Pixel>(tone * 0x010203));
        }
    }
}

double CpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double SecondsOf(const Trial& trial, PaintClass& pic) {
    const double start = CpuSeconds();
    try {
        trial.run(pic);
    } catch (std::int16_t) {
        // An assertion: Dividers has one that a draw in 32768 fails.
    }
    return CpuSeconds() - start;
}

/// Returns the longest time in seconds, and prints it with what took it.
double SearchWorst(const Operation& operation, int records, Random& random) {
    double longest = 0;
    std::string what;
    for (int i = 0; i < records; ++i) {
        const short width = DrawSide(random);
        const short height = DrawSide(random);
        PaintClass pic(width, height);
        DrawPicture(random, pic);
        const Trial trial = operation.draw(random, width, height);
        const double seconds = SecondsOf(trial, pic);
        if (seconds > longest) {
            longest = seconds;
            what = std::to_string(width) + " by " + std::to_string(height) + trial.settings;
        }
    }
    std::printf("%-20s %9.3f ms  %s\n", operation.name.c_str(), longest * 1000, what.c_str());
    std::fflush(stdout);
    return longest;
}

}  // namespace

int main(int argc, char** argv) {
    const bool isDamaged = argc > 1 && std::string_view(argv[1]) == "--damaged";
    const std::vector<std::string> arguments(argv + (isDamaged ? 2 : 1), argv + argc);
    const int records = arguments.empty() ? 1000 : std::stoi(arguments[0]);
    const int seed = arguments.size() < 2 ? 1 : std::stoi(arguments[1]);
    const CoreHost host;
    platformServices.clockSeconds = [] { return std::uint32_t{1}; };
    platformServices.reportFault = [](std::int16_t, const char*, int) {};
    Random random(static_cast<unsigned>(seed));
    double longest = 0;
    for (const Operation& operation : Operations(isDamaged)) {
        if (arguments.size() < 3 || operation.name == arguments[2]) {
            longest = std::max(longest, SearchWorst(operation, records, random));
        }
    }
    return longest < limit ? 0 : 1;
}
