// The slider's parts and values, without a window.
#pragma once

#include "framework/dialog/DialogGeometry.h"
#include "framework/drawing/ScreenScale.h"

struct SliderRange {
    int value = 0;
    int minimum = 0;
    int maximum = 100;
};

/// Clamps the value to the range. Returns whether it changed.
bool SetSliderValue(SliderRange& range, int value);
/// A minimum above the maximum is lowered to it, and the value is pulled into the range.
void SetSliderRange(SliderRange& range, int minimum, int maximum);

/// Keys of the slider.
enum class SliderKey { pageUp, pageDown, end, home, back, on };
/// The value after a key, within the range. Page Up is up, but Home is the maximum.
int SliderValueAfter(const SliderRange& range, SliderKey key, bool isShiftDown);

struct SliderGeometry {
    ScreenRect groove;
    /// Half of the thumb's width, and the height of its slopes.
    int thumbSize;
    int trackWidth;
    /// Lines at the bottom that the base of the thumb takes.
    int baseHeight = 0;
    /// Width of the gap in the groove at 0.
    int gapWidth = 0;
};

/// `client` is the whole control; the focus frame is its outer edge.
SliderGeometry MeasureSlider(const ScreenRect& client, ScreenScale scale = {});

/// The middle of the thumb at `value`.
int ThumbCenter(const SliderGeometry& geometry, const SliderRange& range, int value);
/// The value under the mouse, within the range.
int ValueAt(const SliderGeometry& geometry, const SliderRange& range, int x);
/// Whether 0 lies inside the range, where the groove has a gap.
bool HasGapAtZero(const SliderRange& range);
