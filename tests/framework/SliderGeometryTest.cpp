#include "framework/controls/SliderGeometry.h"

#include <gtest/gtest.h>

namespace {

/// 120 by 18: the groove runs from 12 to 108, the track is 95 long.
constexpr ScreenRect client{0, 0, 120, 18};

TEST(SliderGeometryTest, MeasuresThePartsByTheHeight) {
    const SliderGeometry geometry = MeasureSlider(client);
    EXPECT_EQ(geometry.thumbSize, 12);
    EXPECT_EQ(geometry.trackWidth, 95);
    EXPECT_EQ(geometry.groove, (ScreenRect{12, 5, 108, 17}));
    EXPECT_EQ(geometry.baseHeight, 2);
    EXPECT_EQ(geometry.gapWidth, 3);
}

TEST(SliderGeometryTest, ThePartsGrowWithTheScale) {
    const SliderGeometry geometry = MeasureSlider({0, 0, 240, 36}, {192});
    EXPECT_EQ(geometry.thumbSize, 24);
    EXPECT_EQ(geometry.trackWidth, 189);
    EXPECT_EQ(geometry.groove, (ScreenRect{25, 10, 215, 34}));
    EXPECT_EQ(geometry.baseHeight, 4);
    EXPECT_EQ(geometry.gapWidth, 6);
}

TEST(SliderGeometryTest, TheThumbStandsAtItsValue) {
    const SliderGeometry geometry = MeasureSlider(client);
    const SliderRange range{0, 0, 100};
    EXPECT_EQ(ThumbCenter(geometry, range, 0), 12);
    EXPECT_EQ(ThumbCenter(geometry, range, 100), 107);
    EXPECT_EQ(ThumbCenter(geometry, range, 50), 60);
    EXPECT_EQ(ThumbCenter(geometry, {0, -100, 100}, 0), 60);
    EXPECT_EQ(ThumbCenter(geometry, {5, 5, 5}, 5), 12) << "an empty range";
}

TEST(SliderGeometryTest, TheMouseGivesTheValueUnderIt) {
    const SliderGeometry geometry = MeasureSlider(client);
    const SliderRange range{0, 0, 100};
    EXPECT_EQ(ValueAt(geometry, range, 12), 0);
    EXPECT_EQ(ValueAt(geometry, range, 107), 100);
    EXPECT_EQ(ValueAt(geometry, range, -500), 0);
    EXPECT_EQ(ValueAt(geometry, range, 500), 100);
    EXPECT_EQ(ValueAt(geometry, range, 60), 51);
    for (int value = 0; value <= 95; ++value) {
        const SliderRange exact{0, 0, 95};
        EXPECT_EQ(ValueAt(geometry, exact, ThumbCenter(geometry, exact, value)), value);
    }
    EXPECT_EQ(ValueAt(MeasureSlider({0, 0, 20, 18}), range, 10), 0) << "no track";
}

TEST(SliderGeometryTest, HalvesRoundAwayFromZero) {
    const SliderGeometry geometry{{0, 0, 11, 10}, 5, 10};
    EXPECT_EQ(ValueAt(geometry, {0, 0, 5}, 1), 1);
    EXPECT_EQ(ValueAt(geometry, {0, -5, 0}, 9), -1);
}

TEST(SliderGeometryTest, HomeIsTheMaximumAndEndTheMinimum) {
    const SliderRange range{40, 0, 100};
    EXPECT_EQ(SliderValueAfter(range, SliderKey::home, false), 100);
    EXPECT_EQ(SliderValueAfter(range, SliderKey::end, false), 0);
}

TEST(SliderGeometryTest, KeysStep) {
    const SliderRange range{40, 0, 100};
    EXPECT_EQ(SliderValueAfter(range, SliderKey::pageUp, false), 60);
    EXPECT_EQ(SliderValueAfter(range, SliderKey::pageDown, false), 20);
    EXPECT_EQ(SliderValueAfter(range, SliderKey::on, false), 41);
    EXPECT_EQ(SliderValueAfter(range, SliderKey::on, true), 50);
    EXPECT_EQ(SliderValueAfter(range, SliderKey::back, false), 39);
    EXPECT_EQ(SliderValueAfter(range, SliderKey::back, true), 30);
    EXPECT_EQ(SliderValueAfter({1, 1, 5}, SliderKey::pageUp, false), 2) << "(4 + 4) / 5";
    EXPECT_EQ(SliderValueAfter({98, 0, 100}, SliderKey::on, true), 100);
    EXPECT_EQ(SliderValueAfter({2, 0, 100}, SliderKey::pageDown, false), 0);
}

TEST(SliderGeometryTest, OnlyARangeAroundZeroHasAGap) {
    EXPECT_TRUE(HasGapAtZero({0, -100, 100}));
    EXPECT_FALSE(HasGapAtZero({0, 0, 100}));
    EXPECT_FALSE(HasGapAtZero({0, -100, 0}));
    EXPECT_FALSE(HasGapAtZero({5, 1, 100}));
}

TEST(SliderGeometryTest, ValuesAreClamped) {
    SliderRange range{50, 0, 100};
    EXPECT_TRUE(SetSliderValue(range, 1000));
    EXPECT_EQ(range.value, 100);
    EXPECT_FALSE(SetSliderValue(range, 200));
    EXPECT_TRUE(SetSliderValue(range, -5));
    EXPECT_EQ(range.value, 0);
}

TEST(SliderGeometryTest, RangesPullTheValueIn) {
    SliderRange range{50, 0, 100};
    SetSliderRange(range, 1, 5);
    EXPECT_EQ(range.value, 5);
    SetSliderRange(range, 10, 7);
    EXPECT_EQ(range.minimum, 7);
    EXPECT_EQ(range.maximum, 7);
    EXPECT_EQ(range.value, 7);
}

}  // namespace
