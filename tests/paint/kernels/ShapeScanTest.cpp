#include "paint/kernels/ShapeScan.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "paint/PaintClass.h"
#include "paint/math/EffectMath.h"
#include "plain/PlainShapes.h"
#include "tests/support/CoreTest.h"
#include "tests/support/RandomInput.h"

namespace {

struct Case {
    std::int32_t kind = shapeCircle;
    double turn = 0;
    double bevel = 0;
    short cx = 0;
    short cy = 0;
    double hs = 0;
    double vs = 0;
};

/// The heights of the box of the given half size around the shape's centre, which must all be as
/// in the plain form. Returns how many are on the shape. The heights are read in blocks of
/// `blockWidth` columns, as on a tile of that width.
int ExpectSameAsPlain(const Case& shape, int half, int blockWidth = 1000) {
    ShapeScan scan(shape.kind, shape.bevel, shape.turn);
    scan.Place(shape.cx, shape.cy, shape.hs, shape.vs);
    std::vector<unsigned char> heights(static_cast<std::size_t>(2 * half + 1));
    int covered = 0;
    for (int py = shape.cy - half; py <= shape.cy + half; ++py) {
        std::ranges::fill(heights, ShapeScan::ground);
        const int left = shape.cx - half;
        for (int block = left; block <= shape.cx + half; block += blockWidth) {
            const ShapeScan::Range columns =
                scan.ReachAcross({block, std::min(block + blockWidth, shape.cx + half + 1)});
            const ShapeScan::Range rows = scan.ReachDown(columns, {py, py + 1});
            if (columns.first >= columns.end || rows.first >= rows.end) {
                continue;
            }
            const auto [first, end] = scan.Reach(py, columns);
            for (int px = first; px < end; px += ShapeScan::longestRun) {
                scan.Read(px, py, std::min(end - px, ShapeScan::longestRun),
                          heights.data() + (px - left));
            }
        }
        for (int px = left; px <= shape.cx + half; ++px) {
            const unsigned char expected = PlainShapeHeight(
                shape.kind, shape.cx, shape.cy, static_cast<short>(px), static_cast<short>(py),
                shape.turn, shape.hs, shape.vs, shape.bevel);
            EXPECT_EQ(heights[static_cast<std::size_t>(px - left)], expected)
                << "kind " << shape.kind << ", turn " << shape.turn << ", bevel " << shape.bevel
                << ", " << shape.hs << " by " << shape.vs << " at " << px - shape.cx << ", "
                << py - shape.cy;
            covered += expected != ShapeScan::ground;
            if (testing::Test::HasFailure()) {
                return covered;
            }
        }
    }
    return covered;
}

class ShapeScanTest : public testing::Test {
  protected:
    double Real(double lo, double hi) {
        return lo + (hi - lo) * static_cast<double>(input.Seed()) / 4294967295.0;
    }

    RandomInput input{43};
};

TEST_F(ShapeScanTest, TheSameAsThePlainFormForAnyShape) {
    int covered = 0;
    for (int i = 0; i < 600; ++i) {
        const Case shape{.kind = input.Number(1, 3),
                         .turn = static_cast<double>(input.Number(-32768, 32767)),
                         .bevel = Real(-2, 25),
                         .cx = input.Number(-600, 600),
                         .cy = input.Number(-600, 600),
                         .hs = Real(-5, 20),
                         .vs = Real(-2, 20)};
        covered += ExpectSameAsPlain(shape, 24, input.Number(1, 50));
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(covered, 100000);
}

/// Whole numbers and quarter turns: rows of pixels lie just on the steps, and all decisions hang
/// on the last bits.
TEST_F(ShapeScanTest, TheSameAsThePlainFormWherePixelsLieOnTheSteps) {
    for (int kind = 1; kind <= 3; ++kind) {
        for (int turn = -360; turn <= 450; turn += 45) {
            for (const double bevel : {0.0, 1.0, 4.0, 5.0, 12.75, 15.0, 25.5}) {
                ExpectSameAsPlain({.kind = kind,
                                   .turn = static_cast<double>(turn),
                                   .bevel = bevel,
                                   .cx = 100,
                                   .cy = -7,
                                   .hs = 15.0,
                                   .vs = 10.0},
                                  17);
                ASSERT_FALSE(HasFailure());
            }
        }
    }
}

TEST_F(ShapeScanTest, TheSameAsThePlainFormForThinShapesAndSteepEdges) {
    for (int i = 0; i < 150; ++i) {
        Case shape{.kind = input.Number(1, 3),
                   .turn = static_cast<double>(input.Number(-180, 180)),
                   .bevel = std::pow(10.0, Real(-320, 1)),
                   .cx = input.Number(0, 512),
                   .cy = input.Number(0, 512),
                   .hs = std::pow(10.0, Real(-320, 1.2)),
                   .vs = Real(0, 12)};
        if (i % 2 == 0) {
            std::swap(shape.hs, shape.vs);
        }
        ExpectSameAsPlain(shape, 14, input.Number(1, 30));
        ASSERT_FALSE(HasFailure());
    }
}

TEST_F(ShapeScanTest, TheSameAsThePlainFormForTheLargestShapes) {
    for (const std::int32_t kind : {shapeSquare, shapeCircle, shapeRing}) {
        const int covered = ExpectSameAsPlain(
            {.kind = kind, .turn = 37, .bevel = 170, .cx = 250, .cy = 700, .hs = 190, .vs = 170},
            200);
        EXPECT_GT(covered, 80000);
    }
}

TEST_F(ShapeScanTest, ShapesWithoutSizeHaveNoPixels) {
    for (int kind = -1; kind <= 5; ++kind) {
        for (const auto& [hs, vs] :
             {std::pair{0.0, 0.0}, {0.0, 5.0}, {5.0, 0.0}, {5.0, -5.0}, {-3.0, -3.0}}) {
            const Case shape{.kind = kind, .bevel = 2, .hs = hs, .vs = vs};
            const bool isKind = kind >= shapeSquare && kind <= shapeRing;
            EXPECT_EQ(ExpectSameAsPlain(shape, 9), 0) << kind << ", " << hs << " by " << vs;
            // A circle is as wide to either side.
            const Case turned{.kind = kind, .bevel = 2, .hs = -3, .vs = 5};
            EXPECT_EQ(ExpectSameAsPlain(turned, 9) > 0, isKind && kind != shapeSquare) << kind;
        }
    }
}

unsigned char Coverage(std::int32_t kind, double x, double y, double bevel) {
    unsigned char value = 1;
    const bool covers = PaintClass::ShapeCoverage(kind, x, y, 100, 50, 20, 10, bevel, &value);
    EXPECT_EQ(covers, value != 255);
    return value;
}

TEST(ShapeCoverage, OfASquareHasMitredCorners) {
    EXPECT_EQ(Coverage(shapeSquare, 100, 50, 4), 0);
    EXPECT_EQ(Coverage(shapeSquare, 84, 46, 4), 0) << "the flat top begins there";
    EXPECT_EQ(Coverage(shapeSquare, 82, 50, 4), CosineProfile(127)) << "left";
    EXPECT_EQ(Coverage(shapeSquare, 119, 50, 4), CosineProfile(191)) << "right";
    EXPECT_EQ(Coverage(shapeSquare, 100, 41, 4), CosineProfile(191)) << "top";
    EXPECT_EQ(Coverage(shapeSquare, 100, 58, 4), CosineProfile(127)) << "bottom";
    EXPECT_EQ(Coverage(shapeSquare, 82, 41, 4), CosineProfile(191)) << "the larger of both";
    EXPECT_EQ(Coverage(shapeSquare, 81, 42, 4), CosineProfile(191));
    EXPECT_EQ(Coverage(shapeSquare, 118, 59, 4), CosineProfile(191));
    for (const auto& [x, y] : {std::pair{80, 50}, {120, 50}, {100, 40}, {100, 60}}) {
        EXPECT_EQ(Coverage(shapeSquare, x, y, 4), 255);
    }
}

TEST(ShapeCoverage, OfACircleIsAnEllipse) {
    EXPECT_EQ(Coverage(shapeCircle, 100, 50, 5), 0);
    EXPECT_EQ(Coverage(shapeCircle, 100, 43, 5), CosineProfile(102));
    EXPECT_EQ(Coverage(shapeCircle, 114, 50, 5), CosineProfile(102)) << "twice as wide as high";
    EXPECT_EQ(Coverage(shapeCircle, 120, 50, 5), 255);
    EXPECT_EQ(Coverage(shapeCircle, 100, 60, 5), 255);
    EXPECT_EQ(Coverage(shapeCircle, 100, 59, 0), 0) << "flat to the rim";
}

TEST(ShapeCoverage, OfARingHasAHoleAndIsHighestInTheMiddleOfItsBand) {
    EXPECT_EQ(Coverage(shapeRing, 100, 50, 5), 255);
    EXPECT_EQ(Coverage(shapeRing, 100, 44, 5), CosineProfile(152)) << "51: 204 * 2 - 256";
    EXPECT_EQ(Coverage(shapeRing, 100, 42.5, 5), CosineProfile(0)) << "127: 128 * 2 - 256";
    EXPECT_EQ(Coverage(shapeRing, 100, 41, 5), CosineProfile(152)) << "204";
    EXPECT_EQ(Coverage(shapeRing, 100, 59, 0), 255) << "no band at all";
}

TEST(ShapeCoverage, IsFalseWhereThereIsNoNumber) {
    const double none = std::nan("");
    for (const std::int32_t kind : {shapeSquare, shapeCircle, shapeRing}) {
        EXPECT_EQ(Coverage(kind, none, 50, 4), 255);
        EXPECT_EQ(Coverage(kind, 100, none, 4), 255);
        unsigned char value = 1;
        EXPECT_FALSE(PaintClass::ShapeCoverage(kind, 100, 50, 100, 50, 0, 0, 4, &value));
        EXPECT_EQ(value, 255);
    }
}

TEST(RotateAboutCentre, TurnsClockwiseByTheWholeDegrees) {
    double x;
    double y;
    PaintClass::RotateAboutCentre(10, 20, 13, 24, 0, &x, &y);
    EXPECT_NEAR(x, 13, 1e-9);
    EXPECT_NEAR(y, 24, 1e-9);
    PaintClass::RotateAboutCentre(10, 20, 13, 24, 90.9, &x, &y);
    EXPECT_NEAR(x, 6, 1e-9);
    EXPECT_NEAR(y, 23, 1e-9);
    PaintClass::RotateAboutCentre(10, 20, 10, 20, 90, &x, &y);
    EXPECT_TRUE(std::isnan(x));
    EXPECT_TRUE(std::isnan(y));
}

}  // namespace
