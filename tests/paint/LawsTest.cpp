// The laws that every operation of the catalogue keeps. A new operation gets all of them by its
// row; where one cannot hold, its row here says why, and the test sees that it does not hold.
#include <string>
#include <string_view>
#include <vector>

#include "paint/Catalog.h"
#include "paint/math/Random.h"
#include "paint/records/EffectParams.h"
#include "plain/PlainSteps.h"
#include "tests/support/Compilations.h"
#include "tests/support/CoreTest.h"
#include "tests/support/FailingHandles.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

namespace {

/// Why an operation does not keep a law; null for those that do.
struct Exceptions {
    std::string_view name;
    /// The plain form leaves the same alpha bytes.
    const char* plainAlpha = nullptr;
    /// Moving the tile around the torus before the run, and back after it, changes nothing.
    const char* shift = nullptr;
    /// The alpha bytes stay.
    const char* alpha = nullptr;
    /// A shortage of memory leaves the texture unchanged or fully processed.
    const char* memory = nullptr;
    /// A clone that a tool has left is used up.
    const char* clone = nullptr;
    /// An operation that uses a tool's clone up fails without memory for one.
    const char* needsClone = nullptr;
    /// The default settings change a texture of noise.
    const char* defaults = nullptr;
};

constexpr const char* drawnPlaces = "places within the tile are drawn at random";
constexpr const char* wholePixels = "pixels are written whole";
constexpr const char* workBytes = "the fast loops leave other bytes in the work channel";
constexpr const char* needsNone = "it needs none";

constexpr Exceptions exceptions[] = {
    {.name = "lines",
     .plainAlpha = workBytes,
     .shift = drawnPlaces,
     .alpha = "the wax pass writes whole pixels",
     .needsClone = "ink is slower without one"},
    {.name = "shapes",
     .shift = "the grid begins at the tile's corner",
     .alpha = "they hold the heights",
     .clone = needsNone},
    {.name = "drops",
     .shift = drawnPlaces,
     .alpha = "they hold the heights",
     .clone = "without a blur it needs none"},
    {.name = "dividers",
     .shift = drawnPlaces,
     .alpha = "they hold where lines are",
     .clone = needsNone},
    {.name = "waves",
     .shift = "the phase is 0 at the tile's corner",
     .alpha = "the nearest pixels are taken whole"},
    {.name = "twirls", .plainAlpha = workBytes, .shift = drawnPlaces, .alpha = wholePixels},
    {.name = "skew",
     .plainAlpha = workBytes,
     .shift = "the first row or column stays where it is",
     .alpha = wholePixels},
    {.name = "blur", .alpha = "the motion blur takes that of the last sample"},
    {.name = "sharpen",
     .plainAlpha = workBytes,
     .alpha = wholePixels,
     .memory = "a pass without memory is left out, and the next is tried"},
    {.name = "noise", .shift = "pixels draw their numbers row by row", .clone = needsNone},
    {.name = "brightnessContrast", .defaults = "they stand in the middle"},
    {.name = "mosaic",
     .shift = "blocks begin at the tile's corner",
     .alpha = wholePixels,
     .clone = needsNone,
     .defaults = "blocks of one pixel"},
    {.name = "flip",
     .shift = "turns the movement around, too",
     .alpha = "whole pixels change places",
     .clone = needsNone},
};

Exceptions ExceptionsOf(const CatalogRow& row) {
    for (const Exceptions& each : exceptions) {
        if (each.name == row.name) {
            return each;
        }
    }
    return {row.name};
}

class LawsTest : public CoreTest, public testing::WithParamInterface<std::string> {
  protected:
    const CatalogRow& row = CatalogRowNamed(GetParam());
    const Exceptions exceptionsHere = ExceptionsOf(row);
    RandomInput input{static_cast<unsigned>(row.name[0] + 256 * row.name[1])};

    AnyRecord InRange() {
        AnyRecord settings(row);
        for (const Field& field : row.fields) {
            SetAtRandom(field, settings);
        }
        if (row.presets == presetDividers) {
            // Its two colours are not fields, and their defaults are black.
            auto& params = *static_cast<DividersParams*>(settings.Data());
            params.foreground = AnyColor();
            params.background = AnyColor();
        }
        return settings;
    }

    /// Runs it with what this clock draws. Returns whether it ran to its end; a failed assertion,
    /// which some places that are drawn meet, is no end.
    bool Run(PaintClass& pic, const AnyRecord& settings, std::uint32_t clock = 1) const {
        return RunStep(row.run, pic, settings, clock);
    }

    static bool RunStep(bool (*step)(PaintClass&, const void*), PaintClass& pic,
                        const AnyRecord& settings, std::uint32_t clock) {
        Log().clock = clock;
        SetSeed(clock);
        try {
            return step(pic, settings.Data());
        } catch (std::int16_t id) {
            EXPECT_EQ(id, 2) << "only an assertion";
            return false;
        }
    }

    /// A reason is given if and only if the law was broken.
    static void ExpectException(const char* reason, int timesBroken) {
        EXPECT_EQ(timesBroken != 0, reason != nullptr) << (reason != nullptr ? reason : "");
    }

    std::string TextOf(const AnyRecord& settings) const {
        std::string text = row.name;
        for (const Field& field : row.fields) {
            if (field.type != FieldType::color) {
                text += std::string(" ") + field.name + "=" +
                        std::to_string(ReadNumber(field, settings.Data()));
            }
        }
        return text;
    }

    short Side() { return input.Number(1, input.Number(0, 9) == 0 ? 90 : 36); }

  private:
    RGBColor16 AnyColor() {
        const unsigned bits = input.Seed();
        return {static_cast<std::uint16_t>(bits), static_cast<std::uint16_t>(bits >> 16),
                static_cast<std::uint16_t>(input.Seed())};
    }

    void SetAtRandom(const Field& field, AnyRecord& settings) {
        if (field.type == FieldType::color) {
            WriteColor(field, settings.Data(), AnyColor());
            return;
        }
        double value = field.low + (field.high - field.low) * input.Number(0, 1000) / 1000;
        if (!field.words.empty()) {
            value = field
                        .words[static_cast<std::size_t>(
                            input.Number(0, static_cast<int>(field.words.size()) - 1))]
                        .value;
        } else if (field.type != FieldType::real) {
            value = input.Number(static_cast<int>(field.low), static_cast<int>(field.high));
        }
        WriteNumber(field, settings.Data(), value);
    }
};

TEST_P(LawsTest, ItIsTheSameAsThePlainForm) {
    const PlainStep plainStep = PlainStepOf(row.name);
    ASSERT_NE(plainStep, nullptr) << "every operation has a plain form";
    int broken = 0;
    WithBothCompilations([&] {
        for (int i = 0; i < 150; ++i) {
            const AnyRecord settings = InRange();
            SCOPED_TRACE(TextOf(settings));
            PaintClass fast(Side(), Side());
            PaintClass plain(fast.grX, fast.grY);
            FillWithNoise(fast, input.Seed());
            CopyShifted(fast, plain, 0, 0);
            const std::uint32_t clock = input.Seed();
            const bool ran = Run(fast, settings, clock);
            const std::uint32_t seedAfter = Seed();
            ASSERT_EQ(RunStep(plainStep, plain, settings, clock), ran);
            ASSERT_EQ(Seed(), seedAfter) << "as many draws";
            ASSERT_EQ(ColorsOf(fast), ColorsOf(plain)) << fast.grX << " by " << fast.grY;
            ASSERT_EQ(fast.clone, nullptr);
            const bool same = PixelsOf(fast) == PixelsOf(plain);
            ASSERT_TRUE(same || exceptionsHere.plainAlpha != nullptr) << "the alpha bytes";
            broken += same ? 0 : 1;
        }
    });
    ExpectException(exceptionsHere.plainAlpha, broken);
}

TEST_P(LawsTest, ItIsTheSameWhereverTheTileBegins) {
    int broken = 0;
    for (int i = 0; i < 40; ++i) {
        const AnyRecord settings = InRange();
        PaintClass pic(Side(), Side());
        PaintClass shifted(pic.grX, pic.grY);
        PaintClass back(pic.grX, pic.grY);
        const int dx = input.Number(0, pic.grX - 1);
        const int dy = input.Number(0, pic.grY - 1);
        FillWithNoise(pic, input.Seed());
        CopyShifted(pic, shifted, dx, dy);
        Run(pic, settings);
        Run(shifted, settings);
        CopyShifted(shifted, back, -dx, -dy);
        const bool same = ColorsOf(back) == ColorsOf(pic);
        broken += same ? 0 : 1;
        ASSERT_TRUE(same || exceptionsHere.shift != nullptr)
            << TextOf(settings) << ", moved by " << dx << ", " << dy;
    }
    ExpectException(exceptionsHere.shift, broken);
}

TEST_P(LawsTest, TheAlphaBytesStay) {
    int broken = 0;
    for (int i = 0; i < 60; ++i) {
        const AnyRecord settings = InRange();
        PaintClass pic(Side(), Side());
        FillWithNoise(pic, input.Seed());
        PaintClass before(pic.grX, pic.grY);
        CopyShifted(pic, before, 0, 0);
        Run(pic, settings);
        bool same = true;
        for (short y = 0; y < pic.grY; ++y) {
            for (short x = 0; x < pic.grX; ++x) {
                same = same && pic.GetAlpha(x, y) == before.GetAlpha(x, y);
            }
        }
        broken += same ? 0 : 1;
        ASSERT_TRUE(same || exceptionsHere.alpha != nullptr) << TextOf(settings);
    }
    ExpectException(exceptionsHere.alpha, broken);
}

/// With the nth block of the host and of the system failing, it is all or nothing.
TEST_P(LawsTest, ShortMemoryLeavesTheTextureWhole) {
    int broken = 0;
    int ranWithoutClone = 0;
    for (int i = 0; i < 8; ++i) {
        const AnyRecord settings = InRange();
        PaintClass whole(37, 26);
        FillWithNoise(whole);
        const std::vector<Pixel> before = ColorsOf(whole);
        int systemBlocks = 0;
        {
            const FailingHandles counting(0);
            if (!Run(whole, settings)) {
                continue;
            }
            systemBlocks = counting.Asked();
        }
        const std::vector<Pixel> result = ColorsOf(whole);
        for (int host = 0; host <= 4; ++host) {
            for (int system = 0; system <= systemBlocks; ++system) {
                PaintClass pic(37, 26);
                FillWithNoise(pic);
                ASSERT_TRUE(pic.SaveUndo());
                memory.FailAllocation(host);
                const FailingHandles handles(system);
                const bool ran = Run(pic, settings);
                memory.FailAllocation(0);
                const bool allOrNothing =
                    ColorsOf(pic) == (ran ? result : before) && pic.clone == nullptr;
                // They fail for the clone: its pixels, and the block that has to be left.
                const bool lacksClone = host == 1 || host == 2;
                if (lacksClone && exceptionsHere.clone == nullptr && result != before) {
                    ASSERT_TRUE(!ran || exceptionsHere.needsClone != nullptr)
                        << TextOf(settings) << ": it needs a clone, host " << host;
                    ranWithoutClone += ran ? 1 : 0;
                }
                broken += allOrNothing ? 0 : 1;
                ASSERT_TRUE(allOrNothing || exceptionsHere.memory != nullptr)
                    << TextOf(settings) << ", host " << host << ", system " << system;
            }
        }
    }
    ExpectException(exceptionsHere.memory, broken);
    ExpectException(exceptionsHere.needsClone, ranWithoutClone);
}

/// A tool can leave its clone: it is room enough for an operation that needs one, its pixels count
/// for nothing, and it is gone after the run.
TEST_P(LawsTest, AToolsCloneIsUsedUp) {
    int broken = 0;
    for (int i = 0; i < 8; ++i) {
        const AnyRecord settings = InRange();
        PaintClass expected(37, 26);
        FillWithNoise(expected);
        if (!Run(expected, settings)) {
            continue;
        }
        PaintClass pic(37, 26);
        FillWithNoise(pic);
        ASSERT_NE(pic.GetClone(), nullptr);
        FillWithNoise(*pic.GetClone(), 2);
        memory.FailAllocation(exceptionsHere.memory == nullptr ? 1 : 0);
        ASSERT_TRUE(Run(pic, settings)) << TextOf(settings);
        memory.FailAllocation(0);
        ASSERT_EQ(ColorsOf(pic), ColorsOf(expected)) << TextOf(settings);
        const bool isGone = pic.clone == nullptr;
        ASSERT_TRUE(isGone || exceptionsHere.clone != nullptr) << TextOf(settings);
        broken += isGone ? 0 : 1;
    }
    ExpectException(exceptionsHere.clone, broken);
}

TEST_P(LawsTest, TheDefaultsRunAndMarkTheTexture) {
    const AnyRecord settings(row);
    for (const Field& field : row.fields) {
        EXPECT_TRUE(field.type == FieldType::color ||
                    IsInRange(field, ReadNumber(field, settings.Data())))
            << field.name;
    }
    PaintClass pic(128, 128);
    FillWithNoise(pic);
    const std::vector<Pixel> before = ColorsOf(pic);
    ASSERT_TRUE(Run(pic, settings));
    EXPECT_TRUE(pic.changed);
    EXPECT_EQ(pic.clone, nullptr);
    EXPECT_EQ(ColorsOf(pic) == before, exceptionsHere.defaults != nullptr);
}

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const CatalogRow& row : Catalog()) {
        names.emplace_back(row.name);
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Catalog, LawsTest, testing::ValuesIn(Names()),
                         [](const auto& tested) { return tested.param; });

}  // namespace
