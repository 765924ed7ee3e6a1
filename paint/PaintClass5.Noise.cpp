// Colours: Noise.
//
// How many draws a pixel takes depends on its first one, and which ones it takes on all pixels
// before it. So a loop as short as can be goes from each pixel's first draw to the next pixel's,
// without a branch that a processor could mispredict; the other draws are computed from the first.
#include <algorithm>
#include <cstdlib>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/math/Random.h"
#include "paint/records/FilterParams.h"

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

constexpr DrawSteps oneDraw(1);

// Choices by masks, which the compiler does not turn into branches.

/// All bits if `value` is below 0, else none.
std::uint32_t BelowZeroMask(std::int32_t value) {
    return static_cast<std::uint32_t>(value >> 31);
}

std::uint32_t Chosen(std::uint32_t mask, std::uint32_t with, std::uint32_t without) {
    return (with & mask) | (without & ~mask);
}

int Chosen(std::uint32_t mask, int with, int without) {
    return static_cast<int>(
        Chosen(mask, static_cast<std::uint32_t>(with), static_cast<std::uint32_t>(without)));
}

/// The pixels of a run, in their order.
class NoiseRun {
  public:
    explicit NoiseRun(short amount)
        : decision(oneDraw.From(Seed())), limit(DecisionLimit(amount)) {}
    NoiseRun(const NoiseRun&) = delete;
    NoiseRun& operator=(const NoiseRun&) = delete;
    ~NoiseRun() {
        // Back to before the first draw of the pixel that did not come.
        SetSeed(DrawSteps(-1u).From(decision));
    }

  protected:
    /// All bits if the pixel with this first draw is disturbed: RandomRange(0, 100) < amount.
    std::uint32_t DisturbedMask(std::uint32_t state) const {
        return BelowZeroMask(static_cast<std::int32_t>((state & 0x7FFF0000) - limit));
    }

    /// Whether only the highest draw leaves a pixel as it is, if any.
    bool DisturbsNearlyAll() const { return limit >= 0x7FFF0000; }

    /// The state of the generator after the first draw of the next pixel.
    std::uint32_t decision;

  private:
    /// In the bits of the generator's state. A draw r of 0 to 32767 is below if
    /// r * 100 < amount * 32767.
    static std::uint32_t DecisionLimit(short amount) {
        const int draws = (std::max<int>(amount, 0) * 32767 + 99) / 100;
        return static_cast<std::uint32_t>(std::min(draws, 32768)) << 16;
    }

    const std::uint32_t limit;
};

/// The pixels of a row that go together, and as many more whose states may be written after those.
constexpr int chunk = 256;
constexpr int chunkSlack = 8;

/// A run by chunks of rows: first the state after the first draw of each pixel, then what the
/// pixels become, many at a time.
class ChunkRun : public NoiseRun {
  protected:
    using NoiseRun::NoiseRun;

    template <typename DisturbChunk>
    static void ForEachChunk(unsigned char* pixels, int count, DisturbChunk disturbChunk) {
        for (int first = 0; first < count; first += chunk) {
            disturbChunk(pixels + first * bytesPerPixel, std::min(chunk, count - first));
        }
    }

    std::uint32_t states[chunk + chunkSlack];
};

/// The next draw after a state.
std::int32_t NextDraw(std::uint32_t& state) {
    state = oneDraw.From(state);
    return static_cast<std::int32_t>(state >> 16 & 0x7FFF);
}

// Colours.

/// Each channel has a draw of its own. With `sharesOne`, a draw before them is shared by all.
template <bool sharesOne, short spread, int margin>
class ColorNoise : public ChunkRun {
  public:
    using ChunkRun::ChunkRun;

    void DisturbRow(unsigned char* pixels, int count) {
        ForEachChunk(pixels, count, [this](unsigned char* chunkPixels, int chunkCount) {
            FindStates(chunkCount);
            ForThisProcessor<DisturbLoop>(chunkPixels, chunkCount, *this);
        });
    }

  private:
    void FindStates(int count) {
        constexpr DrawSteps drawsOfDisturbed(1 + channelCount + (sharesOne ? 1 : 0));
        std::uint32_t state = decision;
        for (int i = 0; i < count; ++i) {
            states[i] = state;
            state = Chosen(DisturbedMask(state), drawsOfDisturbed.From(state), oneDraw.From(state));
        }
        decision = state;
    }

    static void DisturbLoop(unsigned char* pixels, int count, const ColorNoise& run) {
        for (int i = 0; i < count; ++i) {
            std::uint32_t state = run.states[i];
            const std::uint32_t mask = run.DisturbedMask(state) & ~alphaMask;
            const Pixel pixel = LoadPixel(pixels, i);
            int shared = 0;
            if constexpr (sharesOne) {
                shared = By16383((sharedSpread + 1) * NextDraw(state)) - sharedSpread - 1;
            }
            const auto red = static_cast<Pixel>(Disturbed(RedOf(pixel) << 8, shared, state));
            const auto green = static_cast<Pixel>(Disturbed(GreenOf(pixel) << 8, shared, state));
            const auto blue = static_cast<Pixel>(Disturbed(BlueOf(pixel) << 8, shared, state));
            const Pixel disturbed = red >> 8 | (green & 0xFF00) | (blue & 0xFF00) << 8;
            StorePixel(pixels, i, Chosen(mask, disturbed, pixel));
        }
    }

    /// A channel so near to black or white gets any new value there; others move by the spread.
    static int Disturbed(int channel, int shared, std::uint32_t& state) {
        constexpr int nearWhite = whitest - margin - 1;
        const std::int32_t draw = NextDraw(state);
        const int moved = channel + By16383((spread + 1) * draw) - spread - 1 + shared;
        const int black = By32767(margin * draw);
        const int white = By32767((margin + 1) * draw) + nearWhite;
        const int other = channel >= nearWhite ? white : moved;
        return channel <= margin ? black : other;
    }
};

// Greys.

/// So many draws, and then those of pixels that are disturbed away from black and white: two each.
struct FreeSteps {
    explicit constexpr FreeSteps(std::uint32_t drawsBefore) {
        constexpr DrawSteps twoDraws(2);
        std::uint32_t draws = drawsBefore;
        std::uint32_t addend = DrawSteps(draws).From(0);
        std::uint32_t factor = DrawSteps(draws).From(1) - addend;
        for (int i = 0; i < chunk + chunkSlack; ++i) {
            factors[i] = factor;
            addends[i] = addend;
            factor = twoDraws.From(factor) - twoDraws.From(0);
            addend = twoDraws.From(addend);
        }
    }

    /// The state `pixels` pixels on.
    std::uint32_t From(std::uint32_t state, int pixels) const {
        return state * factors[pixels] + addends[pixels];
    }

    std::uint32_t factors[chunk + chunkSlack] = {};
    std::uint32_t addends[chunk + chunkSlack] = {};
};

constexpr FreeSteps freeSteps(0);

// From the draw of one pixel near black or white to that of the next: the first draw of the pixel
// after it, and before that another if its disturbance is small; the pixels between them; and the
// two draws before the draw.
constexpr FreeSteps stepsAfterLarge(1 + 2);
constexpr FreeSteps stepsAfterSmall(2 + 2);

// How near to black and white the channels of a pixel are: the steps from black of the lowest, and
// from white of the highest, as far as they count.
constexpr int darkSteps = greyMargin / 256 + 1;
constexpr int lightSteps = greyMargin / 256;
constexpr int nearnesses = (darkSteps + 1) * (lightSteps + 1);

constexpr int NearnessOf(int stepsFromBlack, int stepsFromWhite) {
    return std::min(stepsFromBlack, darkSteps) * (lightSteps + 1) +
           std::min(stepsFromWhite, lightSteps);
}

constexpr int LowestAt(int stepsFromBlack) {
    return stepsFromBlack < darkSteps ? -256 * stepsFromBlack : -greyMargin;
}

constexpr int HighestAt(int stepsFromWhite) {
    return stepsFromWhite < lightSteps ? 256 * stepsFromWhite + 255 : greyMargin;
}

/// The draws, in the bits of the generator's state, that make the disturbance of a pixel small.
struct SmallDraws {
    std::uint32_t first;
    std::uint32_t count;
};

/// The first draw that becomes `quotient` of the range or more.
constexpr std::uint32_t FirstDrawOf(int quotient, int range) {
    const int draw = (quotient * 32767 + range - 1) / range;
    return static_cast<std::uint32_t>(std::clamp(draw, 0, 32768)) << 16;
}

struct SmallDrawTable {
    constexpr SmallDrawTable() {
        for (int dark = 0; dark <= darkSteps; ++dark) {
            for (int light = 0; light <= lightSteps; ++light) {
                const int lowest = LowestAt(dark);
                const int range = HighestAt(light) - lowest;
                // Between minus and plus half the range, both excluded.
                const std::uint32_t first = FirstDrawOf(std::max(1 - range / 2 - lowest, 0), range);
                const std::uint32_t end = FirstDrawOf(std::max(range / 2 - lowest, 0), range);
                entries[NearnessOf(dark, light)] = {first, end - first};
            }
        }
    }

    SmallDraws entries[nearnesses] = {};
};

constexpr SmallDrawTable smallDraws;

constexpr bool IsSmall(int dark, int light, std::uint32_t draw) {
    const int lowest = LowestAt(dark);
    const int range = HighestAt(light) - lowest;
    const int disturbance = By32767(range * static_cast<int>(draw >> 16)) + lowest;
    return (disturbance < 0 ? -disturbance : disturbance) < range / 2;
}

/// On both sides of each end that is not an end of all draws.
constexpr bool AreSmallDrawsRight() {
    constexpr std::uint32_t one = 1u << 16;
    constexpr std::uint32_t afterAll = 32768u << 16;
    for (int dark = 0; dark <= darkSteps; ++dark) {
        for (int light = 0; light <= lightSteps; ++light) {
            const SmallDraws& draws = smallDraws.entries[NearnessOf(dark, light)];
            const std::uint32_t end = draws.first + draws.count;
            if ((draws.first != 0 && IsSmall(dark, light, draws.first - one)) ||
                !IsSmall(dark, light, draws.first) || !IsSmall(dark, light, end - one) ||
                (end != afterAll && IsSmall(dark, light, end))) {
                return false;
            }
        }
    }
    return true;
}
static_assert(AreSmallDrawsRight());

/// One disturbance for all channels, so that greys stay grey.
class GreyNoise : public ChunkRun {
  public:
    using ChunkRun::ChunkRun;

    void DisturbRow(unsigned char* pixels, int count) {
        ForEachChunk(pixels, count, [this](unsigned char* chunkPixels, int chunkCount) {
            ForThisProcessor<LimitsLoop>(chunkPixels, chunkCount, *this);
            FindStates(chunkCount);
            ForThisProcessor<DisturbLoop>(chunkPixels, chunkCount, *this);
        });
    }

  private:
    /// Between which a disturbance keeps all channels of each pixel in range: less than the margin
    /// on either side only if a channel is in it.
    static void LimitsLoop(const unsigned char* pixels, int count, GreyNoise& run) {
        for (int i = 0; i < count; ++i) {
            const Pixel pixel = LoadPixel(pixels, i);
            const int red = RedOf(pixel);
            const int green = GreenOf(pixel);
            const int blue = BlueOf(pixel);
            const int dark = std::min(std::min(red, green), blue);
            const int light = 255 - std::max(std::max(red, green), blue);
            run.lowest[i] = LowestAt(dark);
            run.range[i] = HighestAt(light) - LowestAt(dark);
            run.nearness[i] = NearnessOf(dark, light);
        }
    }

    void FindStates(int count) {
        if (DisturbsNearlyAll()) {
            std::uint32_t after = 0;
            bool areAllDisturbed = false;
            ForThisProcessor<DisturbedStatesLoop>(*this, count, after, areAllDisturbed);
            if (areAllDisturbed) {
                decision = after;
                return;
            }
        }
        FindStatesOneByOne(count);
    }

    /// The states if all pixels are disturbed. In one step from each pixel near black or white to
    /// the next, as only these wait for their draws; then those between them, many at a time.
    static void DisturbedStatesLoop(GreyNoise& run, int count, std::uint32_t& after,
                                    bool& areAllDisturbed) {
        int narrow[chunk + 1];
        int narrowCount = 0;
        for (int i = 0; i < count; ++i) {
            narrow[narrowCount] = i;
            narrowCount += run.IsNarrow(i) ? 1 : 0;
        }
        // After the last one comes none.
        narrow[narrowCount] = count;
        std::uint32_t state = run.decision;
        std::uint32_t draw = narrowCount > 0 ? freeSteps.From(state, narrow[0] + 1) : 0;
        int first = 0;
        for (int k = 0; k < narrowCount; ++k) {
            const int place = narrow[k];
            run.StoreFreeStates(state, first, place);
            const std::uint32_t isSmall = run.SmallMask(place, draw);
            constexpr DrawSteps twoDraws(2);
            state = Chosen(isSmall, twoDraws.From(draw), oneDraw.From(draw));
            first = place + 1;
            // Not from the state: the next draw depends on this one alone, by one multiplication.
            const int between = narrow[k + 1] - first;
            draw = Chosen(isSmall, stepsAfterSmall.From(draw, between),
                          stepsAfterLarge.From(draw, between));
        }
        run.StoreFreeStates(state, first, count - 1);
        after = freeSteps.From(state, count - first);
        std::uint32_t disturbed = ~0u;
        for (int i = 0; i < count; ++i) {
            disturbed &= run.DisturbedMask(run.states[i]);
        }
        areAllDisturbed = disturbed != 0;
    }

    /// From pixel `first`, which has this state, to pixel `last`, and a few more.
    void StoreFreeStates(std::uint32_t state, int first, int last) {
        for (int start = 0; start <= last - first; start += chunkSlack) {
            for (int i = 0; i < chunkSlack; ++i) {
                states[first + start + i] = freeSteps.From(state, start + i);
            }
        }
    }

    void FindStatesOneByOne(int count) {
        constexpr DrawSteps drawsOfDisturbed(2);
        std::uint32_t state = decision;
        for (int i = 0; i < count; ++i) {
            states[i] = state;
            std::uint32_t next = drawsOfDisturbed.From(state);
            if (IsNarrow(i)) {
                const std::uint32_t isSmall = SmallMask(i, next);
                next = Chosen(isSmall, drawsOfDisturbed.From(next), oneDraw.From(next));
            }
            state = Chosen(DisturbedMask(state), next, oneDraw.From(state));
        }
        decision = state;
    }

    static void DisturbLoop(unsigned char* pixels, int count, const GreyNoise& run) {
        for (int i = 0; i < count; ++i) {
            std::uint32_t state = run.states[i];
            const std::uint32_t mask = run.DisturbedMask(state);
            const int free = By16383((greySpread + 1) * NextDraw(state)) - greySpread - 1;
            NextDraw(state);
            const int first = run.DrawWithin(i, state);
            NextDraw(state);
            const int second = run.DrawWithin(i, state);
            const std::uint32_t isSmall = BelowZeroMask(std::abs(first) - run.range[i] / 2);
            const int within = Chosen(isSmall, second, first);
            const int disturbance = Chosen(mask, run.IsNarrow(i) ? within : free, 0);
            // The low bytes of all channels are 0, and no channel leaves its byte.
            StorePixel(pixels, i,
                       LoadPixel(pixels, i) + static_cast<Pixel>((disturbance >> 8) * 0x010101));
        }
    }

    // Near black and white the disturbance is drawn anew, and a small one once more.

    bool IsNarrow(int i) const { return range[i] != 2 * greyMargin; }
    /// From the draw that a state holds.
    int DrawWithin(int i, std::uint32_t state) const {
        return By32767(range[i] * static_cast<std::int32_t>(state >> 16 & 0x7FFF)) + lowest[i];
    }
    /// All bits if the draw that a state holds makes a small one.
    std::uint32_t SmallMask(int i, std::uint32_t state) const {
        const SmallDraws& small = smallDraws.entries[nearness[i]];
        return ((state & 0x7FFF0000) - small.first) < small.count ? ~0u : 0;
    }

    std::int32_t lowest[chunk];
    std::int32_t range[chunk];
    std::int32_t nearness[chunk];
};

/// Draws, but disturbs nothing.
class NoNoise : public NoiseRun {
  public:
    using NoiseRun::NoiseRun;

    void DisturbRow(unsigned char* /*pixels*/, int count) {
        decision = DrawSteps(static_cast<std::uint32_t>(count)).From(decision);
    }
};

template <typename Noise>
void TwoPasses(PaintClass& pic, ShowClass& progress, Noise&& noise) {
    constexpr short reportStep = 6;
    for (int pass = 0; pass < 2; ++pass) {
        for (short y = 0; y < pic.grY; ++y) {
            if (y % reportStep == 0) {
                progress.Report(static_cast<short>(pic.grY * pass + y));
            }
            noise.DisturbRow(pic.PixelAddress(0, y), pic.grX);
        }
    }
}

}  // namespace

void PaintClass::Noise(short amount, int mode) {
    ShowClass progress(static_cast<short>(2 * grY));
    SeedRandom();
    switch (mode) {
        case noiseGrey:
            TwoPasses(*this, progress, GreyNoise(amount));
            break;
        case noiseColored:
            TwoPasses(*this, progress, ColorNoise<true, coloredSpread, coloredMargin>(amount));
            break;
        case noiseColorful:
            TwoPasses(*this, progress, ColorNoise<false, colorfulSpread, colorfulMargin>(amount));
            break;
        default:
            // A kind that no dialog gives.
            TwoPasses(*this, progress, NoNoise(amount));
            break;
    }
    progress.Report(static_cast<short>(2 * grY));
    Unlock();
    SetDirty();
}
