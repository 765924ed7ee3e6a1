#include "framework/controls/SliderGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

// In pixels at 96 dots an inch.

/// Between the control's edge and its parts: the focus frame.
constexpr int frameWidth = 1;
/// The part of the height that the slopes of the thumb leave.
constexpr int thumbMargin = 4;
constexpr int plainGapWidth = 3;
constexpr int plainBaseHeight = 2;

std::int64_t Span(const SliderRange& range) {
    return static_cast<std::int64_t>(range.maximum) - range.minimum;
}

int Clamped(const SliderRange& range, std::int64_t value) {
    const std::int64_t below = std::min<std::int64_t>(value, range.maximum);
    return static_cast<int>(std::max<std::int64_t>(below, range.minimum));
}

}  // namespace

bool SetSliderValue(SliderRange& range, int value) {
    const int before = range.value;
    range.value = Clamped(range, value);
    return range.value != before;
}

void SetSliderRange(SliderRange& range, int minimum, int maximum) {
    range.minimum = std::min(minimum, maximum);
    range.maximum = maximum;
    SetSliderValue(range, range.value);
}

int SliderValueAfter(const SliderRange& range, SliderKey key, bool isShiftDown) {
    const std::int64_t page = (Span(range) + 4) / 5;
    const std::int64_t step = isShiftDown ? 10 : 1;
    switch (key) {
        case SliderKey::pageUp:
            return Clamped(range, range.value + page);
        case SliderKey::pageDown:
            return Clamped(range, range.value - page);
        case SliderKey::end:
            return range.minimum;
        case SliderKey::home:
            return range.maximum;
        case SliderKey::back:
            return Clamped(range, range.value - step);
        case SliderKey::on:
            return Clamped(range, range.value + step);
    }
    return range.value;
}

SliderGeometry MeasureSlider(const ScreenRect& client, ScreenScale scale) {
    const ScreenRect inside = Shrunk(client, scale.Pixels(frameWidth));
    const int margin = scale.Pixels(thumbMargin);
    SliderGeometry geometry;
    geometry.gapWidth = scale.Pixels(plainGapWidth);
    geometry.baseHeight = scale.Pixels(plainBaseHeight);
    geometry.thumbSize = inside.Height() - margin;
    geometry.trackWidth = inside.Width() - 2 * geometry.thumbSize + 1;
    geometry.groove = {inside.left + geometry.thumbSize - 1, inside.top + margin,
                       inside.right - geometry.thumbSize + 1, inside.bottom};
    return geometry;
}

int ThumbCenter(const SliderGeometry& geometry, const SliderRange& range, int value) {
    const double span = static_cast<double>(Span(range));
    const double part =
        span > 0 ? (static_cast<double>(value) - range.minimum) * geometry.trackWidth / span : 0;
    return static_cast<int>(part + geometry.groove.left + 0.5);
}

int ValueAt(const SliderGeometry& geometry, const SliderRange& range, int x) {
    if (geometry.trackWidth <= 0) {
        return range.minimum;
    }
    const double way = static_cast<double>(x) - geometry.groove.left;
    const double value =
        static_cast<double>(Span(range)) * way / geometry.trackWidth + range.minimum;
    return Clamped(range, static_cast<std::int64_t>(std::round(value)));
}

bool HasGapAtZero(const SliderRange& range) {
    return static_cast<std::int64_t>(range.minimum) * range.maximum < 0;
}
