// Colours: each pixel is computed from itself alone, or from its counterpart in another texture.
#include <algorithm>
#include <cstdlib>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/ChannelMaps.h"
#include "paint/kernels/ColorModel.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/math/Random.h"
#include "paint/records/FilterParams.h"

// Noise.

namespace {

constexpr int channelCount = 3;

/// The amplitude of each kind of noise, in the 16 bits that it is computed in, and how near to
/// black and white it acts otherwise.
constexpr short greySpread = 4000;
constexpr int greyMargin = 4000;
constexpr short sharedSpread = 2000;
constexpr short coloredSpread = 2000;
constexpr int coloredMargin = 6000;
constexpr short colorfulSpread = 4000;
constexpr int colorfulMargin = 8000;

constexpr int whitest = 65535;

/// The pixels of a run of Noise. Takes its draws from a copy of the program's generator, which
/// stays in a register.
class NoiseSource {
  public:
    explicit NoiseSource(short newAmount) : random(Seed()), amount(newAmount) {}
    NoiseSource(const NoiseSource&) = delete;
    NoiseSource& operator=(const NoiseSource&) = delete;
    ~NoiseSource() { SetSeed(random.State()); }

    /// `disturb` changes the three channels of the pixels that are drawn, in place, in 16 bits.
    template <typename Disturb>
    void DisturbRow(unsigned char* pixels, int count, Disturb disturb) {
        for (int i = 0; i < count; ++i, pixels += bytesPerPixel) {
            // Range(0, 100) < amount, without its division.
            if (random.Rand() * 100 >= amount * 32767) {
                continue;
            }
            int channels[channelCount] = {pixels[0] << 8, pixels[1] << 8, pixels[2] << 8};
            disturb(channels);
            for (int c = 0; c < channelCount; ++c) {
                pixels[c] = static_cast<unsigned char>(channels[c] >> 8);
            }
        }
    }

    /// One disturbance for all channels, so that greys stay grey.
    void DisturbGrey(int (&channels)[channelCount]) {
        int disturbance = random.Spread(greySpread);
        int lowest = -greyMargin;
        int highest = greyMargin;
        for (const int channel : channels) {
            if (channel <= greyMargin) {
                lowest = std::max(lowest, -channel);
            }
            if (channel >= whitest - greyMargin - 1) {
                highest = std::min(highest, whitest - channel);
            }
        }
        if (lowest != -greyMargin || highest != greyMargin) {
            disturbance = Between(lowest, highest);
            // Near black and white small disturbances are drawn once more.
            if (std::abs(disturbance) < (highest - lowest) / 2) {
                disturbance = Between(lowest, highest);
            }
        }
        for (int& channel : channels) {
            channel += disturbance;
        }
    }

    /// A shared disturbance and one of each channel's own.
    void DisturbColored(int (&channels)[channelCount]) {
        const int shared = random.Spread(sharedSpread);
        for (int& channel : channels) {
            if (!ReplacedInMargin(channel, coloredMargin)) {
                channel += random.Spread(coloredSpread) + shared;
            }
        }
    }

    /// A disturbance for each channel.
    void DisturbColorful(int (&channels)[channelCount]) {
        for (int& channel : channels) {
            if (!ReplacedInMargin(channel, colorfulMargin)) {
                channel += random.Spread(colorfulSpread);
            }
        }
    }

  private:
    int Between(int lowest, int highest) { return random.Range(0, highest - lowest) + lowest; }

    /// A channel so near to black or white gets any new value there. False if it is not.
    bool ReplacedInMargin(int& channel, int margin) {
        const int brightMargin = whitest - margin - 1;
        if (channel <= margin) {
            channel = random.Range(0, margin);
        } else if (channel >= brightMargin) {
            channel = random.Range(brightMargin, whitest);
        } else {
            return false;
        }
        return true;
    }

    RandomGenerator random;
    short amount;
};

}  // namespace

namespace {

template <typename Disturb>
void TwoPasses(PaintClass& pic, ShowClass& progress, NoiseSource& source, Disturb disturb) {
    constexpr short reportStep = 6;
    for (int pass = 0; pass < 2; ++pass) {
        for (short y = 0; y < pic.grY; ++y) {
            if (y % reportStep == 0) {
                progress.Report(static_cast<short>(pic.grY * pass + y));
            }
            source.DisturbRow(pic.PixelAddress(0, y), pic.grX, disturb);
        }
    }
}

}  // namespace

void PaintClass::Noise(short amount, int mode) {
    ShowClass progress(static_cast<short>(2 * grY));
    SeedRandom();
    NoiseSource source(amount);
    switch (mode) {
        case noiseGrey:
            TwoPasses(*this, progress, source, [&](auto& c) { source.DisturbGrey(c); });
            break;
        case noiseColored:
            TwoPasses(*this, progress, source, [&](auto& c) { source.DisturbColored(c); });
            break;
        case noiseColorful:
            TwoPasses(*this, progress, source, [&](auto& c) { source.DisturbColorful(c); });
            break;
        default:
            // A kind that no dialog gives: draws, but disturbs nothing.
            TwoPasses(*this, progress, source, [](auto&) {});
            break;
    }
    progress.Report(static_cast<short>(2 * grY));
    Unlock();
    SetDirty();
}

// Saturation, Brightness and Contrast, Add Color.

namespace {

/// Runs `changeRow` on each row. Every pixel is read before it is written, so nothing is copied
/// into the clone; but without memory for one nothing is changed.
template <typename ChangeRow>
void ChangeRows(PaintClass& pic, ChangeRow changeRow) {
    CursorClass cursor;
    if (!pic.HasRoomForClone()) {
        return;
    }
    for (short y = 0; y < pic.grY; ++y) {
        changeRow(pic.PixelAddress(0, y));
        cursor.Tick();
    }
    pic.DeleteClone();
    pic.Unlock();
    pic.SetDirty();
}

}  // namespace

void PaintClass::Saturation(short saturation) {
    const double delta = saturation * 0.01 - 0.5;
    ChangeRows(*this, [&](unsigned char* row) { SaturateRow(row, grX, delta); });
}

void PaintClass::BrightnessContrast(short contrast, short brightness) {
    const int offset = brightness * 2 - 100;
    const double steepness = contrast * 0.01 * 2.0;
    const ContrastMap map(offset, steepness);
    ChangeRows(*this, [&](unsigned char* row) { map.MapRow(row, grX); });
}

void PaintClass::AddColor(const RGBColor16& color, short opacity) {
    const ColorMap map(color, opacity * 0.01);
    ChangeRows(*this, [&](unsigned char* row) { map.MapRow(row, grX); });
}

// Invert.

namespace {

void InvertLoop(unsigned char* pixels, int count) {
    for (int i = 0; i < count; ++i) {
        StorePixel(pixels, i, LoadPixel(pixels, i) ^ ~alphaMask);
    }
}

}  // namespace

void PaintClass::Invert() {
    AssertLocked(lockedAtSetRGB);
    ForThisProcessor<InvertLoop>(Base(), grX * grY);
    Unlock();
    SetDirty();
}

// Combine.

namespace {

enum CombineMode : std::int32_t { combineBlend = 1, combineStructure = 2, combineColor = 3 };

/// A row of each texture. The loops read what stands at a place before they write there, so any of
/// the rows may be the same.
struct CombineRows {
    const unsigned char* target;
    const unsigned char* other;
    unsigned char* out;
    int count;
};

/// `amount` percent of `b` and the rest of `a`.
int Mixed(int a, int b, int amount) {
    return (b * amount + a * (100 - amount)) / 100;
}

void BlendLoop(const CombineRows& rows, int amount) {
    const auto [target, other, out, count] = rows;
    for (int i = 0; i < count; ++i) {
        const Pixel t = LoadPixel(target, i);
        const Pixel o = LoadPixel(other, i);
        StorePixel(
            out, i,
            WithColor(LoadPixel(out, i), Mixed(RedOf(t), RedOf(o), amount),
                      Mixed(GreenOf(t), GreenOf(o), amount), Mixed(BlueOf(t), BlueOf(o), amount)));
    }
}

int ClampedToByte(int value) {
    return std::clamp(value, 0, 255);
}

/// Middle grey in the other texture leaves a pixel as it is.
void StructureLoop(const CombineRows& rows, int amount) {
    const auto [target, other, out, count] = rows;
    for (int i = 0; i < count; ++i) {
        const Pixel t = LoadPixel(target, i);
        const int grey = GreyOf(LoadPixel(other, i));
        const auto rise = static_cast<int>((grey - 128) * 2.0 * amount * 0.01);
        StorePixel(out, i,
                   WithColor(LoadPixel(out, i), ClampedToByte(RedOf(t) + rise),
                             ClampedToByte(GreenOf(t) + rise), ClampedToByte(BlueOf(t) + rise)));
    }
}

void CombineRow(const CombineRows& rows, std::int32_t mode, int amount) {
    switch (mode) {
        case combineBlend:
            ForThisProcessor<BlendLoop>(rows, amount);
            break;
        case combineStructure:
            ForThisProcessor<StructureLoop>(rows, amount);
            break;
        case combineColor:
            TurnHueRow(rows.target, rows.other, rows.out, rows.count, amount * 0.01);
            break;
        default:
            break;
    }
}

}  // namespace

void PaintClass::Combine(const CombineRecord* record) {
    const CursorClass cursor;
    const auto lastX = static_cast<short>(grX - 1);
    const auto lastY = static_cast<short>(grY - 1);
    // Texture of smaller sides fail this accessor's assertion, before anything is changed.
    record->target->GetPixel(lastX, lastY);
    record->other->GetPixel(lastX, lastY);
    for (short y = 0; y < grY; ++y) {
        CombineRow({record->target->PixelAddress(0, y), record->other->PixelAddress(0, y),
                    PixelAddress(0, y), grX},
                   record->mode, record->amount);
    }
    Unlock();
    SetDirty();
}
