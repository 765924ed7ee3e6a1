#include <initializer_list>
#include <limits>

#include "paint/Stroke.h"
#include "plain/PlainTools.h"
#include "tests/support/Compilations.h"
#include "tests/support/ToolTest.h"

namespace {

class RubberStampTest : public ToolTest {
  protected:
    static void Set(PaintClass& pic, short size, int offsetH, int offsetV) {
        pic.stampSize = size;
        pic.stampOffsetH = static_cast<short>(offsetH);
        pic.stampOffsetV = static_cast<short>(offsetV);
    }

    /// Leaves these values alone, so that many mixes are of equal ones.
    static void Flatten(PaintClass& pic, const std::vector<unsigned char>& values) {
        unsigned char* const end = pic.Base() + pic.RowBytes() * pic.grY;
        for (unsigned char* byte = pic.Base(); byte != end; ++byte) {
            *byte = values[*byte % values.size()];
        }
    }

    void ExpectSameAsPlain(short width, short height, short size, hostapi::Point offset,
                           const Path& path, const std::vector<unsigned char>& values = {}) {
        const unsigned seed = input.Seed();
        Canvas fast(*this, width, height, seed);
        Canvas plain(*this, width, height, seed);
        if (!values.empty()) {
            Flatten(fast.pic, values);
            Flatten(plain.pic, values);
        }
        Set(fast.pic, size, offset.h, offset.v);
        Set(plain.pic, size, offset.h, offset.v);
        PaintStroke<StampStroke>(fast.pic, path);
        PlainStampStroke(plain.pic, path);
        ASSERT_EQ(PixelsOf(fast.pic), PixelsOf(plain.pic))
            << width << " by " << height << ", size " << size << ", offset " << offset.h << ", "
            << offset.v;
        ASSERT_TRUE(fast.pic.changed);
    }
};

TEST_F(RubberStampTest, AStrokeIsTheSameAsThePlainOne) {
    WithBothCompilations([this] {
        for (int i = 0; i < 300; ++i) {
            ExpectSameAsPlain(input.Number(1, 40), input.Number(1, 40), input.Number(-3, 20),
                              AnyPoint(i % 5 == 0 ? 1000 : 30), AnyPath(i % 2 == 0 ? 40 : 200));
        }
        // Sources beside the pixels that are written, on both sides.
        for (int offset = -9; offset <= 9; ++offset) {
            ExpectSameAsPlain(60, 50, input.Number(2, 20), At(offset, 0), AnyPath(60));
        }
    });
    ExpectSameAsPlain(512, 511, 20, At(100, 30), {At(-40, 300), At(600, -20), At(500, 500)});
    ExpectSameAsPlain(511, 512, 19, At(-1, -1), {At(505, 505), At(520, 520)});
}

/// Where a source is what was there before, a channel lies on a step, and roundings decide.
TEST_F(RubberStampTest, FlatPicturesAreTheSameAsThePlainOnes) {
    WithBothCompilations([this] {
        for (int value = 0; value <= 255; ++value) {
            const auto byte = static_cast<unsigned char>(value);
            ExpectSameAsPlain(64, 50, 20, At(30, 5), {AnyPoint(40), AnyPoint(40)}, {byte});
        }
        for (int i = 0; i < 50; ++i) {
            ExpectSameAsPlain(64, 50, input.Number(2, 20), AnyPoint(60), AnyPath(60),
                              {0, 255, 64, 129});
        }
    });
}

/// Distances of whole positions can be whole numbers, and shares halves and fifths.
TEST_F(RubberStampTest, WholePositionsAreTheSameAsThePlainOnes) {
    WithBothCompilations([this] {
        for (short size = 2; size <= 20; ++size) {
            const hostapi::Point from = AnyPoint(60);
            for (const hostapi::Point way : {At(30, 0), At(0, -30), At(-40, 0), At(0, 0)}) {
                const hostapi::Point to = At(from.h + way.h, from.v + way.v);
                ExpectSameAsPlain(64, 50, size, At(30, 5), {from, to, from});
            }
        }
    });
}

/// Each seam of targets and sources stands between any two columns and rows of a stamp.
TEST_F(RubberStampTest, StampsOverSeamsAreTheSameAsThePlainOnes) {
    WithBothCompilations([this] {
        for (int shift = -12; shift <= 12; ++shift) {
            const short size = input.Number(2, 20);
            ExpectSameAsPlain(64, 50, size, At(31, 26), {At(shift, 25), At(shift + 5, 28)});
            ExpectSameAsPlain(64, 50, size, At(31, 26), {At(30, shift), At(28, shift - 3)});
            ExpectSameAsPlain(64, 50, size, At(31, 5), {At(33 + shift, 25), At(30 + shift, 28)});
        }
    });
}

TEST_F(RubberStampTest, SmallOffsetsAreTheSameAsThePlainOnes) {
    WithBothCompilations([this] {
        for (int i = 0; i < 300; ++i) {
            ExpectSameAsPlain(64, 50, input.Number(8, 20), AnyPoint(i % 3 == 0 ? 3 : 22),
                              AnyPath(40));
        }
    });
}

TEST_F(RubberStampTest, WildPositionsAndOffsetsAreTheSameAsThePlainOnes) {
    for (int i = 0; i < 6; ++i) {
        ExpectSameAsPlain(input.Number(1, 30), input.Number(1, 30), input.Number(1, 20),
                          AnyPoint(32767), {AnyPoint(32767), AnyPoint(32767)});
    }
    ExpectSameAsPlain(30, 20, 20, At(32767, 32767), {At(32767, 32767), At(32760, 32767)});
    ExpectSameAsPlain(30, 20, 20, At(-32768, -32768), {At(-32768, -32768), At(-32760, -32768)});
}

/// Positions have 16 bits, and the repeats of these tiles do not meet where the highest is followed
/// by the lowest.
TEST_F(RubberStampTest, StampsOverTheLastPositionAreTheSameAsThePlainOnes) {
    constexpr short width = 97;
    constexpr short height = 89;
    constexpr short size = 20;
    for (int i = 0; i < 40; ++i) {
        const int edge = 32767 - input.Number(0, 100);
        const hostapi::Point place = i % 2 == 0 ? At(edge, 300) : At(300, edge);
        ExpectSameAsPlain(width, height, size, AnyPoint(30), {place, At(place.h - 7, place.v - 5)});
        // Sources after the last position are targets, and those before it are not.
        const hostapi::Point middle = At(316, 347);
        const int offset = 32355 + input.Number(-5, 5);
        ExpectSameAsPlain(width, height, size, At(offset, input.Number(-8, 8)),
                          {middle, At(middle.h + 5, middle.v - 3)});
        ExpectSameAsPlain(width, height, size, At(input.Number(-8, 8), offset - 23),
                          {middle, At(middle.h + 5, middle.v - 3)});
    }
}

TEST_F(RubberStampTest, ALineIsTheSameAsItsStampsOneByOne) {
    for (int i = 0; i < 30; ++i) {
        const hostapi::Point from = AnyPoint(60);
        const hostapi::Point to = AnyPoint(60);
        Canvas whole(*this, 64, 50);
        Canvas single(*this, 64, 50);
        for (PaintClass* const pic : {&whole.pic, &single.pic}) {
            Set(*pic, 20, 30, 5);
            const StampStroke stroke(*pic);
        }
        PaintClass::StampLine(from, to, &whole.pic);
        PaintClass::WalkLine(from, to, PaintClass::StampClone, &single.pic);
        ASSERT_EQ(PixelsOf(whole.pic), PixelsOf(single.pic));
    }
}

TEST_F(RubberStampTest, StampsAtNoPlaceAtAllPaintNothing) {
    Canvas canvas(*this, 30, 20);
    Set(canvas.pic, 20, 5, 5);
    const StampStroke stroke(canvas.pic);
    const std::vector<Pixel> before = PixelsOf(canvas.pic);
    for (const double wild : {std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300,
                              std::numeric_limits<double>::infinity(), 2e9}) {
        PaintClass::StampClone(wild, 3, &canvas.pic);
        PaintClass::StampClone(3, wild, &canvas.pic);
    }
    EXPECT_EQ(PixelsOf(canvas.pic), before);
}

TEST_F(RubberStampTest, StampsNeedAStroke) {
    Canvas canvas(*this, 30, 20);
    Set(canvas.pic, 20, 5, 5);
    const std::vector<Pixel> before = PixelsOf(canvas.pic);
    PaintClass::StampClone(3, 3, &canvas.pic);
    EXPECT_EQ(PixelsOf(canvas.pic), before);
}

TEST_F(RubberStampTest, SizesBeyondTheDialogsCountAsItsEnds) {
    const auto run = [this](short size) {
        Canvas canvas(*this, 60, 50);
        Set(canvas.pic, size, 7, -9);
        PaintStroke<StampStroke>(canvas.pic, {At(10, 10), At(30, 25)});
        return ColorsOf(canvas.pic);
    };
    EXPECT_EQ(run(21), run(20));
    EXPECT_EQ(run(32767), run(20));
    const Canvas untouched(*this, 60, 50);
    for (const short size : std::initializer_list<short>{1, 0, -1, -20, -32768}) {
        EXPECT_EQ(run(size), ColorsOf(untouched.pic)) << size;
    }
}

TEST_F(RubberStampTest, CopiesWholeAtTheCentreAndNothingAtTheRim) {
    Canvas canvas(*this, 64, 64);
    canvas.pic.FillColor(black16);
    for (short y = 0; y < 64; ++y) {
        for (short x = 32; x < 64; ++x) {
            canvas.pic.SetRGB(x, y, 200, 100, 50);
        }
    }
    Set(canvas.pic, 16, 32, 0);
    PaintStroke<StampStroke>(canvas.pic, {At(16, 16)});
    EXPECT_EQ(canvas.pic.GetPixel(16, 16) & 0xFFFFFF, Color(200, 100, 50));
    EXPECT_EQ(canvas.pic.GetAlpha(16, 16), 0);
    // Half way out: half of it.
    EXPECT_EQ(canvas.pic.GetPixel(20, 16) & 0xFFFFFF, Color(100, 50, 25));
    EXPECT_EQ(canvas.pic.GetAlpha(20, 16), 128);
    EXPECT_EQ(canvas.pic.GetPixel(16, 12) & 0xFFFFFF, Color(100, 50, 25));
    EXPECT_EQ(canvas.pic.GetPixel(24, 16), 0xFF000000u) << "the rim";
    EXPECT_EQ(canvas.pic.GetPixel(8, 16), 0xFF000000u);
}

TEST_F(RubberStampTest, DoesNotBuildUpWithinAStroke) {
    // From the left half, which is not painted, to the right.
    const auto run = [this](const Path& path) {
        Canvas canvas(*this, 80, 30);
        Set(canvas.pic, 16, -40, 0);
        PaintStroke<StampStroke>(canvas.pic, path);
        return ColorsOf(canvas.pic);
    };
    EXPECT_EQ(run({At(50, 15), At(65, 15), At(50, 15), At(65, 15)}), run({At(50, 15), At(65, 15)}));
}

TEST_F(RubberStampTest, ReadsWhatItPaintedItself) {
    Canvas canvas(*this, 100, 40);
    canvas.pic.FillColor(black16);
    for (short y = 0; y < 40; ++y) {
        canvas.pic.SetRGB(20, y, 255, 255, 255);
    }
    Set(canvas.pic, 10, -10, 0);
    PaintStroke<StampStroke>(canvas.pic, {At(25, 20), At(85, 20)});
    // The white column comes again every ten pixels.
    for (const short x : std::initializer_list<short>{30, 40, 50, 60, 70, 80}) {
        EXPECT_GT(canvas.pic.GetPixel(x, 20) & 0xFF, 200u) << x;
        EXPECT_EQ(canvas.pic.GetPixel(static_cast<short>(x + 5), 20) & 0xFF, 0u) << x;
    }
}

TEST_F(RubberStampTest, PicksUpPixelsFromAcrossTheSeam) {
    Canvas canvas(*this, 40, 40);
    canvas.pic.FillColor(black16);
    canvas.pic.SetRGB(2, 38, 255, 255, 255);
    Set(canvas.pic, 10, 10, -10);
    PaintStroke<StampStroke>(canvas.pic, {At(32, 8)});
    EXPECT_EQ(canvas.pic.GetPixel(32, 8) & 0xFFFFFF, Color(255, 255, 255));
}

TEST_F(RubberStampTest, SizesTwoAndThreeTouchLessThanAPixelAround) {
    for (const short size : std::initializer_list<short>{2, 3}) {
        Canvas canvas(*this, 40, 30);
        const Canvas before(*this, 40, 30);
        Set(canvas.pic, size, 11, 7);
        const StampStroke stroke(canvas.pic);
        PaintClass::StampClone(10.0, 10.0, &canvas.pic);
        PaintClass::StampClone(20.25, 10.0, &canvas.pic);
        for (short y = 0; y < 30; ++y) {
            for (short x = 0; x < 40; ++x) {
                const bool isTouched = y == 10 && (x == 10 || x == 20 || x == 21);
                ASSERT_EQ(canvas.pic.GetAlpha(x, y) != 255, isTouched) << x << ", " << y;
                if (!isTouched) {
                    ASSERT_EQ(canvas.pic.GetPixel(x, y) & 0xFFFFFF,
                              before.pic.GetPixel(x, y) & 0xFFFFFF);
                }
            }
        }
        EXPECT_EQ(canvas.pic.GetAlpha(10, 10), 0);
        EXPECT_EQ(canvas.pic.GetAlpha(20, 10), 64);
        EXPECT_EQ(canvas.pic.GetAlpha(21, 10), 192);
    }
}

TEST_F(RubberStampTest, OffsetsBeyondTheTileWrap) {
    const auto run = [this](int offsetH, int offsetV) {
        Canvas canvas(*this, 40, 30);
        Set(canvas.pic, 16, offsetH, offsetV);
        PaintStroke<StampStroke>(canvas.pic, {At(10, 10), At(20, 18)});
        return ColorsOf(canvas.pic);
    };
    EXPECT_EQ(run(41, 0), run(1, 0));
    EXPECT_EQ(run(-39, 60), run(1, 0));
    EXPECT_EQ(run(0, -31), run(0, -1));
}

/// Each mix of a channel with itself may lose one step to its truncation.
TEST_F(RubberStampTest, AnOffsetOfTheTilesWidthPaintsNothingVisible) {
    Canvas canvas(*this, 40, 30);
    const Canvas before(*this, 40, 30);
    Set(canvas.pic, 16, 40, 0);
    PaintStroke<StampStroke>(canvas.pic, {At(20, 15)});
    for (short y = 0; y < 30; ++y) {
        for (short x = 0; x < 40; ++x) {
            for (int c = 0; c < 3; ++c) {
                const int old = before.pic.PixelAddress(x, y)[c];
                const int now = canvas.pic.PixelAddress(x, y)[c];
                ASSERT_TRUE(now == old || now == old - 1) << x << ", " << y;
            }
        }
    }
}

TEST_F(RubberStampTest, ANewOffsetHoldsFromThatPointOfTheStrokeOn) {
    Canvas canvas(*this, 60, 40);
    canvas.pic.FillColor(black16);
    canvas.pic.SetRGB(30, 10, 255, 0, 0);
    canvas.pic.SetRGB(10, 30, 0, 255, 0);
    Set(canvas.pic, 4, 20, 0);
    StampStroke stroke(canvas.pic);
    stroke.Paint(At(10, 10), At(10, 10));
    Set(canvas.pic, 4, -20, 20);
    stroke.Paint(At(30, 10), At(30, 10));
    EXPECT_EQ(canvas.pic.GetPixel(10, 10) & 0xFFFFFF, Color(255, 0, 0));
    EXPECT_EQ(canvas.pic.GetPixel(30, 10) & 0xFFFFFF, Color(0, 255, 0));
}

TEST_F(RubberStampTest, IsTheSameWhereverTheTileBegins) {
    for (int i = 0; i < 30; ++i) {
        const short width = input.Number(1, 50);
        const short height = input.Number(1, 50);
        const int dx = input.Number(0, 60);
        const int dy = input.Number(0, 60);
        const int x = input.Number(0, 60);
        const int y = input.Number(0, 60);
        const int length = input.Number(0, 60);
        const hostapi::Point offset = AnyPoint(60);
        const short size = input.Number(1, 20);
        Canvas canvas(*this, width, height);
        Canvas shifted(*this, width, height);
        Canvas back(*this, width, height);
        CopyShifted(canvas.pic, shifted.pic, dx, dy);
        Set(canvas.pic, size, offset.h, offset.v);
        Set(shifted.pic, size, offset.h, offset.v);
        PaintStroke<StampStroke>(canvas.pic, {At(x, y), At(x, y + length)});
        PaintStroke<StampStroke>(shifted.pic, {At(x + dx, y + dy), At(x + dx, y + dy + length)});
        CopyShifted(shifted.pic, back.pic, -dx, -dy);
        ASSERT_EQ(PixelsOf(back.pic), PixelsOf(canvas.pic)) << width << " by " << height;
    }
}

TEST_F(RubberStampTest, ATextureStartsWithoutASource) {
    const PaintClass pic(5, 4);
    EXPECT_FALSE(pic.stampSourcePending);
    EXPECT_FALSE(pic.stampCrossShown);
    EXPECT_EQ(pic.stampCrossV, 0);
    EXPECT_EQ(pic.stampCrossH, 0);
}

}  // namespace
