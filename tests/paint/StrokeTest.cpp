#include "paint/Stroke.h"

#include <algorithm>

#include "base/Rectangles.h"
#include "plain/PlainTools.h"
#include "tests/support/ToolTest.h"

namespace {

class StrokeTest : public ToolTest {
  protected:
    /// Without memory for the clone the tool paints nothing.
    template <typename ToolStroke>
    void ExpectNothingWithoutMemory() {
        Canvas canvas(*this, 20, 20);
        const std::vector<Pixel> before = PixelsOf(canvas.pic);
        for (int nth = 1; nth <= 2; ++nth) {  // the clone's pixels and its probe
            memory.FailAllocation(nth);
            ToolStroke stroke(canvas.pic);
            memory.FailAllocation(0);
            EXPECT_FALSE(stroke.HasBegun());
            stroke.Paint(At(3, 3), At(9, 9));
            EXPECT_EQ(PixelsOf(canvas.pic), before);
            EXPECT_EQ(canvas.pic.clone, nullptr);
            EXPECT_FALSE(canvas.pic.changed);
        }
    }
};

TEST_F(StrokeTest, TheCloneStaysForTheNextStroke) {
    Canvas canvas(*this, 20, 20);
    PaintStroke<BrushStroke>(canvas.pic, {At(3, 3)});
    PicClass* const clone = canvas.pic.clone.get();
    EXPECT_NE(clone, nullptr);
    const int allocations = memory.Allocations();
    PaintStroke<EraserStroke>(canvas.pic, {At(9, 9)});
    PaintStroke<BrushStroke>(canvas.pic, {At(9, 9)});
    PaintStroke<StampStroke>(canvas.pic, {At(9, 9)});
    EXPECT_EQ(canvas.pic.clone.get(), clone);
    EXPECT_EQ(memory.Allocations(), allocations);
}

TEST_F(StrokeTest, WithoutMemoryNothingChanges) {
    ExpectNothingWithoutMemory<BrushStroke>();
    ExpectNothingWithoutMemory<EraserStroke>();
    ExpectNothingWithoutMemory<StampStroke>();
}

TEST_F(StrokeTest, ThePencilNeedsNoMemory) {
    Canvas canvas(*this, 20, 20);
    memory.FailAllocation(1);
    PaintStroke<PencilStroke>(canvas.pic, {At(3, 3)});
    memory.FailAllocation(0);
    EXPECT_EQ(canvas.pic.clone, nullptr);
    EXPECT_EQ(canvas.pic.GetPixel(3, 3), RasterPixel(foreground, 0));
}

TEST_F(StrokeTest, AStrokeStartsFromCoverageNothing) {
    Canvas canvas(*this, 20, 20);
    canvas.pic.SetAllAlpha(255);
    const std::vector<Pixel> before = ColorsOf(canvas.pic);
    const BrushStroke stroke(canvas.pic);
    for (short y = 0; y < 20; ++y) {
        for (short x = 0; x < 20; ++x) {
            ASSERT_EQ(canvas.pic.GetAlpha(x, y), 0);
        }
    }
    EXPECT_EQ(ColorsOf(canvas.pic), before);
    EXPECT_EQ(PixelsOf(*canvas.pic.clone), PixelsOf(canvas.pic));
}

TEST_F(StrokeTest, AStrokeWithoutSegmentsPaintsNothing) {
    Canvas canvas(*this, 20, 20);
    const std::vector<Pixel> before = ColorsOf(canvas.pic);
    { const BrushStroke stroke(canvas.pic); }
    { const EraserStroke stroke(canvas.pic); }
    { const PencilStroke stroke(canvas.pic); }
    { const StampStroke stroke(canvas.pic); }
    EXPECT_EQ(ColorsOf(canvas.pic), before);
    EXPECT_FALSE(canvas.pic.changed);
}

TEST_F(StrokeTest, PaintingMarksTheTextureChanged) {
    Canvas canvas(*this, 20, 20);
    PaintStroke<PencilStroke>(canvas.pic, {At(3, 3)});
    EXPECT_TRUE(canvas.pic.changed);
}

TEST_F(StrokeTest, ABrushAboveTwentyPixelsFailsItsAssertion) {
    Canvas canvas(*this, 20, 20);
    const std::vector<Pixel> before = ColorsOf(canvas.pic);
    canvas.pic.brushSize = 21;
    EXPECT_EQ(AssertionOf([&] { BrushStroke{canvas.pic}; }),
              "PaintClass6 / Zeile 42 !(radius <= 20)");
    EXPECT_EQ(ColorsOf(canvas.pic), before);
}

TEST_F(StrokeTest, TheEraserIsTheSameAsThePlainOne) {
    for (int i = 0; i < 150; ++i) {
        const short width = input.Number(1, 40);
        const short height = input.Number(1, 40);
        background = AnyColor();
        const Path path = AnyPath(i % 2 == 0 ? 40 : 200);
        Canvas fast(*this, width, height);
        Canvas plain(*this, width, height);
        fast.pic.brushSize = input.Number(-5, 30);
        PaintStroke<EraserStroke>(fast.pic, path);
        PlainEraserStroke(plain.pic, path);
        ASSERT_EQ(PixelsOf(fast.pic), PixelsOf(plain.pic)) << width << " by " << height;
    }
}

TEST_F(StrokeTest, TheEraserPaintsTheBackgroundInASquareWithAHalfCoveredRim) {
    Canvas canvas(*this, 40, 40);
    canvas.pic.FillColor(black16);
    background = white16;
    PaintStroke<EraserStroke>(canvas.pic, {At(20, 20)});
    for (short y = 0; y < 40; ++y) {
        for (short x = 0; x < 40; ++x) {
            const bool isCovered = x >= 13 && x <= 26 && y >= 13 && y <= 26;
            const bool isRim = isCovered && (x == 13 || x == 26 || y == 13 || y == 26);
            const unsigned value = isRim ? 127 : isCovered ? 255 : 0;
            ASSERT_EQ(canvas.pic.GetPixel(x, y) & 0xFFFFFF, Color(value, value, value));
        }
    }
}

TEST_F(StrokeTest, TheEraserPutsColorAndSizeBack) {
    Canvas canvas(*this, 20, 20);
    canvas.pic.brushSize = 5;
    {
        const EraserStroke stroke(canvas.pic);
        EXPECT_EQ(canvas.pic.foreColor, &background);
        EXPECT_EQ(canvas.pic.brushSize, 14);
    }
    EXPECT_EQ(canvas.pic.foreColor, &foreground);
    EXPECT_EQ(canvas.pic.brushSize, 5);
}

TEST_F(StrokeTest, AnEraserThatCannotBeginLeavesItsColorAndSize) {
    Canvas canvas(*this, 20, 20);
    canvas.pic.brushSize = 5;
    memory.FailAllocation(1);
    { const EraserStroke stroke(canvas.pic); }
    memory.FailAllocation(0);
    EXPECT_EQ(canvas.pic.foreColor, &background);
    EXPECT_EQ(canvas.pic.brushSize, 14);
    // A later stroke saves the leftover and puts it back.
    { const EraserStroke stroke(canvas.pic); }
    EXPECT_EQ(canvas.pic.foreColor, &background);
    EXPECT_EQ(canvas.pic.brushSize, 14);
    PaintStroke<PencilStroke>(canvas.pic, {At(3, 3)});
    EXPECT_EQ(canvas.pic.GetPixel(3, 3), RasterPixel(background, 0));
}

TEST_F(StrokeTest, WithoutAnEditorTheEraserPaintsWhite) {
    PaintClass pic(20, 20);
    pic.FillColor(black16);
    PaintStroke<EraserStroke>(pic, {At(10, 10)});
    EXPECT_EQ(pic.GetPixel(10, 10), 0xFFFFFFFFu);
    EXPECT_EQ(pic.foreColor, nullptr);
}

TEST_F(StrokeTest, ThePencilIsTheSameAsThePlainOne) {
    for (int i = 0; i < 150; ++i) {
        const short width = input.Number(1, 40);
        const short height = input.Number(1, 40);
        const Path path = AnyPath(i % 50 == 0 ? 32767 : 60);
        Canvas fast(*this, width, height);
        Canvas plain(*this, width, height);
        PaintStroke<PencilStroke>(fast.pic, path);
        PlainPencilStroke(plain.pic, path);
        ASSERT_EQ(PixelsOf(fast.pic), PixelsOf(plain.pic)) << width << " by " << height;
    }
}

TEST_F(StrokeTest, ThePencilTouchesNoOtherPixel) {
    Canvas canvas(*this, 20, 20);
    std::vector<Pixel> expected = PixelsOf(canvas.pic);
    for (std::size_t i = 0; i <= 3; ++i) {
        expected[i * 20 + i] = RasterPixel(foreground, 0);
    }
    PaintStroke<PencilStroke>(canvas.pic, {At(0, 0), At(3, 3)});
    EXPECT_EQ(PixelsOf(canvas.pic), expected);
    EXPECT_EQ(canvas.pic.clone, nullptr);
}

TEST_F(StrokeTest, ThePencilIsTheSameWhereverTheTileBegins) {
    for (int i = 0; i < 30; ++i) {
        const short width = input.Number(1, 50);
        const short height = input.Number(1, 50);
        const int dx = input.Number(-200, 200);
        const int dy = input.Number(-200, 200);
        const hostapi::Point from = AnyPoint(100);
        const hostapi::Point to = AnyPoint(100);
        Canvas canvas(*this, width, height);
        Canvas shifted(*this, width, height);
        Canvas back(*this, width, height);
        CopyShifted(canvas.pic, shifted.pic, dx, dy);
        PaintStroke<PencilStroke>(canvas.pic, {from, to});
        PaintStroke<PencilStroke>(shifted.pic,
                                  {At(from.h + dx, from.v + dy), At(to.h + dx, to.v + dy)});
        CopyShifted(shifted.pic, back.pic, -dx, -dy);
        ASSERT_EQ(PixelsOf(back.pic), PixelsOf(canvas.pic));
    }
}

TEST_F(StrokeTest, ARasterWithoutPixelsFailsItsAssertion) {
    memory.FailAllocation(1);
    PaintClass pic(5, 4);
    memory.FailAllocation(0);
    ASSERT_EQ(pic.pixelMap, nullptr);
    EXPECT_FALSE(BrushStroke(pic).HasBegun());
    EXPECT_EQ(AssertionOf([&] { PencilStroke(pic).Paint(At(1, 1), At(1, 1)); }),
              "PicClass / Zeile 342 !(locked)");
    EXPECT_EQ(AssertionOf([&] { pic.Gradient(At(0, 0), At(0, 3)); }),
              "PicClass / Zeile 342 !(locked)");
    EXPECT_EQ(AssertionOf([&] { pic.FloodFill(At(0, 0)); }), "PicClass / Zeile 377 !(locked)");
}

// --- What a segment touches ---

/// The part as it lies in the tile.
bool IsTouched(const hostapi::VRect& touched, int x, int y, const PaintClass& pic) {
    const auto isIn = [](int place, int from, int to, int size) {
        return (place >= from && place < to) || place + size < to;
    };
    return isIn(x, touched.left, touched.right, pic.grX) &&
           isIn(y, touched.top, touched.bottom, pic.grY);
}

class TouchedTest : public StrokeTest {
  protected:
    /// Paints a segment and compares what has changed.
    template <typename ToolStroke>
    void ExpectTouched(PaintClass& pic, hostapi::Point from, hostapi::Point to) {
        ToolStroke stroke(pic);
        ASSERT_TRUE(stroke.HasBegun());
        const std::vector<Pixel> before = PixelsOf(pic);
        stroke.Paint(from, to);
        const hostapi::VRect touched = stroke.Touched(from, to);
        EXPECT_GE(touched.left, 0);
        EXPECT_GE(touched.top, 0);
        EXPECT_LT(touched.left, pic.grX);
        EXPECT_LT(touched.top, pic.grY);
        EXPECT_LE(Width(touched), pic.grX);
        EXPECT_LE(Height(touched), pic.grY);
        const std::vector<Pixel> after = PixelsOf(pic);
        for (std::size_t i = 0; i < after.size(); ++i) {
            if (after[i] == before[i]) {
                continue;
            }
            const int x = static_cast<int>(i) % pic.grX;
            const int y = static_cast<int>(i) / pic.grX;
            ASSERT_TRUE(IsTouched(touched, x, y, pic))
                << x << ", " << y << ": from " << from.h << ", " << from.v << " to " << to.h << ", "
                << to.v << " on " << pic.grX << " by " << pic.grY;
            changed = true;
        }
    }
    /// One of each tool, of any size it has.
    void ExpectTouchedByAll(PaintClass& pic, hostapi::Point from, hostapi::Point to) {
        pic.brushSize = input.Number(2, 20);
        pic.stampSize = input.Number(2, 20);
        pic.stampOffsetH = input.Number(-40, 40);
        pic.stampOffsetV = input.Number(-40, 40);
        ExpectTouched<BrushStroke>(pic, from, to);
        ExpectTouched<EraserStroke>(pic, from, to);
        ExpectTouched<PencilStroke>(pic, from, to);
        ExpectTouched<StampStroke>(pic, from, to);
    }

    bool changed = false;
};

TEST_F(TouchedTest, NothingElseChanges) {
    for (int i = 0; i < 300; ++i) {
        Canvas canvas(*this, input.Number(1, 90), input.Number(1, 90),
                      static_cast<unsigned>(i) + 1);
        const hostapi::Point from = AnyPoint(300);
        const hostapi::Point by = AnyPoint(30);
        ExpectTouchedByAll(canvas.pic, from, At(from.h + by.h, from.v + by.v));
    }
    EXPECT_TRUE(changed);
}

TEST_F(TouchedTest, NothingElseChangesAtTheEndsOfThePositions) {
    for (int i = 0; i < 60; ++i) {
        Canvas canvas(*this, input.Number(70, 90), input.Number(70, 90),
                      static_cast<unsigned>(i) + 1);
        const auto farAway = [&] {
            return input.Number(0, 1) == 0 ? input.Number(-32768, -32600)
                                           : input.Number(32600, 32767);
        };
        const hostapi::Point from = At(farAway(), farAway());
        const auto near = [&](int place) { return std::clamp(place + 3, -32768, 32767); };
        ExpectTouchedByAll(canvas.pic, from, At(near(from.h), near(from.v)));
    }
    EXPECT_TRUE(changed);
}

TEST_F(TouchedTest, ThePencilTouchesItsLineAlone) {
    Canvas canvas(*this, 100, 80);
    const PencilStroke stroke(canvas.pic);
    EXPECT_TRUE(AreEqual(stroke.Touched(At(3, 5), At(9, 4)), {4, 3, 6, 10}));
    EXPECT_TRUE(AreEqual(stroke.Touched(At(98, 85), At(103, 85)), {5, 98, 6, 104}));
    EXPECT_TRUE(AreEqual(stroke.Touched(At(-2, -80), At(-3, -81)), {79, 97, 81, 99}));
}

TEST_F(TouchedTest, ALongSegmentTouchesTheTile) {
    Canvas canvas(*this, 100, 80);
    const BrushStroke stroke(canvas.pic);
    EXPECT_TRUE(AreEqual(stroke.Touched(At(0, 0), At(100, 0)), {69, 0, 92, 100}));
    EXPECT_TRUE(AreEqual(stroke.Touched(At(0, 0), At(0, 80)), {0, 89, 80, 112}));
}

}  // namespace
