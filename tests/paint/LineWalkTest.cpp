// The two ways of stepping along a segment.
#include "plain/PlainTools.h"
#include "tests/support/ToolTest.h"

namespace {

std::vector<PlainPosition> called;

std::vector<PlainPosition> Walked(hostapi::Point from, hostapi::Point to) {
    called.clear();
    PaintClass::WalkLine(
        from, to,
        [](double x, double y, PaintClass*) {
            called.push_back({x, y});
        },
        nullptr);
    return called;
}

std::vector<PlainPosition> Traced(hostapi::Point from, hostapi::Point to) {
    called.clear();
    PaintClass::TraceLine(
        from, to,
        [](short x, short y, PaintClass*) {
            called.push_back({static_cast<double>(x), static_cast<double>(y)});
        },
        nullptr);
    return called;
}

using Walk = std::vector<PlainPosition>;

class LineWalkTest : public ToolTest {};

TEST_F(LineWalkTest, AWalkAndATraceAreTheSameAsThePlainOnes) {
    for (int i = 0; i < 1000; ++i) {
        const int reach = i % 100 == 0 ? 32767 : 30;
        const hostapi::Point from = AnyPoint(reach);
        const hostapi::Point to = AnyPoint(reach);
        ASSERT_EQ(Walked(from, to), PlainWalk(from, to));
        ASSERT_EQ(Traced(from, to), PlainTrace(from, to));
    }
}

TEST_F(LineWalkTest, AWalkOfNoLengthCallsBackOnce) {
    EXPECT_EQ(Walked(At(5, -7), At(5, -7)), (Walk{{5, -7}}));
}

TEST_F(LineWalkTest, AWalkCallsBackAtBothEndsAndAboutOnceAPixel) {
    EXPECT_EQ(Walked(At(2, 3), At(5, 3)), (Walk{{2, 3}, {3, 3}, {4, 3}, {5, 3}}));
    // The length is 1.41, and so it takes one step.
    EXPECT_EQ(Walked(At(0, 0), At(1, -1)), (Walk{{0, 0}, {1, -1}}));
    EXPECT_EQ(Walked(At(0, 0), At(6, 8)).size(), 11u);
    EXPECT_EQ(Walked(At(0, 0), At(6, 8)).back(), (PlainPosition{6, 8}));
}

TEST_F(LineWalkTest, AWalkBeyondSixteenBitsHasNoSteps) {
    EXPECT_EQ(Walked(At(0, 0), At(32767, 0)).size(), 32768u);
    EXPECT_EQ(Walked(At(-1, 0), At(32767, 0)), Walk{});
    EXPECT_EQ(Walked(At(-32768, 0), At(32767, 0)), Walk{});
    EXPECT_EQ(Walked(At(-32768, -32768), At(32767, 32767)).size(), 27145u) << "92680 - 65536 + 1";
}

TEST_F(LineWalkTest, ATraceOfADiagonalTouchesEachPixelOnce) {
    EXPECT_EQ(Traced(At(0, 0), At(3, 3)), (Walk{{0, 0}, {1, 1}, {2, 2}, {3, 3}}));
    EXPECT_EQ(Traced(At(0, 0), At(-3, 3)), (Walk{{0, 0}, {-1, 1}, {-2, 2}, {-3, 3}}));
    EXPECT_EQ(Traced(At(0, 0), At(3, -3)), (Walk{{0, 0}, {1, -1}, {2, -2}, {3, -3}}));
    EXPECT_EQ(Traced(At(0, 0), At(-3, -3)), (Walk{{0, 0}, {-1, -1}, {-2, -2}, {-3, -3}}));
}

TEST_F(LineWalkTest, ATraceKnowsAllEightDirections) {
    EXPECT_EQ(Traced(At(1, 1), At(1, 1)), (Walk{{1, 1}}));
    EXPECT_EQ(Traced(At(0, 0), At(3, 0)), (Walk{{0, 0}, {1, 0}, {2, 0}, {3, 0}}));
    EXPECT_EQ(Traced(At(0, 0), At(-2, 0)), (Walk{{0, 0}, {-1, 0}, {-2, 0}}));
    EXPECT_EQ(Traced(At(0, 0), At(0, 2)), (Walk{{0, 0}, {0, 1}, {0, 2}}));
    EXPECT_EQ(Traced(At(0, 0), At(0, -2)), (Walk{{0, 0}, {0, -1}, {0, -2}}));
    EXPECT_EQ(Traced(At(0, 0), At(4, 2)), (Walk{{0, 0}, {1, 0}, {2, 1}, {3, 1}, {4, 2}}));
    EXPECT_EQ(Traced(At(0, 0), At(-2, -4)), (Walk{{0, 0}, {0, -1}, {-1, -2}, {-1, -3}, {-2, -4}}));
}

TEST_F(LineWalkTest, ATraceAcrossAllSixteenBitsEnds) {
    const Walk corner = Traced(At(-32768, -32768), At(32767, 32767));
    EXPECT_EQ(corner.size(), 65536u);
    EXPECT_EQ(corner.back(), (PlainPosition{32767, 32767}));
}

}  // namespace
