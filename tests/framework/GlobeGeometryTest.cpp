#include "framework/controls/GlobeGeometry.h"

#include <gtest/gtest.h>

#include "tests/support/CoreTest.h"

namespace {

constexpr hostapi::Rect bounds{10, 20, 74, 90};  // 64 high, 70 wide
constexpr int angleOnly = -1;

class GlobeGeometryTest : public CoreTest {
  protected:
    const GlobeGeometry geometry = MeasureGlobe(bounds, 7);

    GlobeValue Under(GlobeValue value, int v, int h) const {
        return ValueUnder(geometry, value,
                          {static_cast<std::int16_t>(v), static_cast<std::int16_t>(h)});
    }
};

std::string Text(hostapi::Point point) {
    return std::to_string(point.v) + ", " + std::to_string(point.h);
}

TEST_F(GlobeGeometryTest, TheSmallerSideCounts) {
    EXPECT_EQ(geometry.radius, 25);
    EXPECT_EQ(Text(geometry.center), "42, 55");
    EXPECT_EQ(geometry.square.top, 10);
    EXPECT_EQ(geometry.square.bottom, 74);
    EXPECT_EQ(geometry.square.left, 23);
    EXPECT_EQ(geometry.square.right, 87);
}

TEST_F(GlobeGeometryTest, ATooSmallItemIsAFault) {
    EXPECT_EQ(FaultOf([] { MeasureGlobe({0, 0, 15, 40}, 7); }), 20005);
    EXPECT_EQ(MeasureGlobe({0, 0, 16, 40}, 7).radius, 1);
}

TEST_F(GlobeGeometryTest, AnAnglesKnobIsOnTheRim) {
    EXPECT_EQ(Text(KnobPlace(geometry, {angleOnly, 0})), "17, 55");
    EXPECT_EQ(Text(KnobPlace(geometry, {angleOnly, 90})), "42, 80");
    EXPECT_EQ(Text(KnobPlace(geometry, {angleOnly, -90})), "42, 30");
    EXPECT_EQ(Text(KnobPlace(geometry, {angleOnly, 180})), "67, 55");
    EXPECT_EQ(Text(KnobPlace(geometry, {angleOnly, 45})), "24, 73");
}

TEST_F(GlobeGeometryTest, ElevationLeadsToTheCentre) {
    EXPECT_EQ(Text(KnobPlace(geometry, {90, 30})), "42, 55");
    EXPECT_EQ(Text(KnobPlace(geometry, {0, 90})), "42, 80");
    EXPECT_EQ(Text(KnobPlace(geometry, {45, 90})), "42, 68");
}

TEST_F(GlobeGeometryTest, TheMouseGivesTheAngle) {
    EXPECT_EQ(Under({angleOnly, 33}, 10, 55).angle, 0);
    EXPECT_EQ(Under({angleOnly, 33}, 42, 200).angle, 90);
    EXPECT_EQ(Under({angleOnly, 33}, 42, -200).angle, -90);
    EXPECT_EQ(Under({angleOnly, 33}, 32, 65).angle, 45);
    EXPECT_EQ(Under({angleOnly, 33}, 42, 55).angle, 0) << "the centre points up";
}

TEST_F(GlobeGeometryTest, AroundTheBottomTheAngleStaysWithinHalfATurn) {
    EXPECT_EQ(Under({angleOnly, 0}, 500, 55).angle, 180);
    EXPECT_EQ(Under({angleOnly, 0}, 500, 54).angle, -180);
    EXPECT_EQ(Under({angleOnly, 0}, 500, 56).angle, 180);
    for (int h = -100; h <= 200; ++h) {
        const int angle = Under({angleOnly, 0}, 90, h).angle;
        EXPECT_LE(angle, 180);
        EXPECT_GE(angle, -180);
    }
}

TEST_F(GlobeGeometryTest, ATurnGoesOnBeyondTheBottom) {
    EXPECT_EQ(TurnedAngle(30, -45), -15);
    EXPECT_EQ(TurnedAngle(170, 10), 180);
    EXPECT_EQ(TurnedAngle(180, 1), -179);
    EXPECT_EQ(TurnedAngle(-180, -1), 179);
    EXPECT_EQ(TurnedAngle(-170, -10), -180);
    EXPECT_EQ(TurnedAngle(150, 45), -165);
}

TEST_F(GlobeGeometryTest, WithAnAngleOnlyTheDistanceHasNoEffect) {
    const GlobeValue close = Under({angleOnly, 0}, 40, 57);
    const GlobeValue distant = Under({angleOnly, 0}, 42 - 400, 55 + 400);
    EXPECT_EQ(close, distant);
    EXPECT_EQ(close, (GlobeValue{angleOnly, 45}));
}

TEST_F(GlobeGeometryTest, WithAnElevationTheDistanceIsIt) {
    EXPECT_EQ(Under({0, 0}, 42, 80), (GlobeValue{0, 90}));
    EXPECT_EQ(Under({0, 0}, 42, 500), (GlobeValue{0, 90}));
    EXPECT_EQ(Under({0, 0}, 42, 60), (GlobeValue{72, 90}));
    EXPECT_EQ(Under({0, 77}, 42, 55), (GlobeValue{90, 77})) << "the angle stays at the centre";
}

}  // namespace
