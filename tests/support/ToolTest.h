// The base of the tests of the paint tools.
#pragma once

#include <vector>

#include "paint/PaintClass.h"
#include "tests/support/CoreTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/RandomInput.h"
#include "tests/support/Shifting.h"

using Path = std::vector<hostapi::Point>;

/// A position with the horizontal coordinate first.
constexpr hostapi::Point At(int x, int y) {
    return {.v = static_cast<std::int16_t>(y), .h = static_cast<std::int16_t>(x)};
}

class ToolTest : public CoreTest {
  protected:
    /// A texture to paint on with the colours below. Equal seeds give equal textures.
    struct Canvas {
        Canvas(const ToolTest& test, short width, short height, unsigned seed = 1)
            : pic(width, height) {
            FillWithNoise(pic, seed);
            pic.SetColors(&test.foreground, &test.background);
        }
        PaintClass pic;
    };

    RGBColor16 AnyColor() {
        return {static_cast<std::uint16_t>(input.Number(-32768, 32767)),
                static_cast<std::uint16_t>(input.Number(-32768, 32767)),
                static_cast<std::uint16_t>(input.Number(-32768, 32767))};
    }
    hostapi::Point AnyPoint(int reach) {
        return {.v = input.Number(-reach, reach), .h = input.Number(-reach, reach)};
    }
    Path AnyPath(int reach) {
        Path path;
        for (int i = input.Number(1, 4); i > 0; --i) {
            path.push_back(AnyPoint(reach));
        }
        return path;
    }

    RandomInput input{51};
    RGBColor16 foreground{0xFF00, 0x8000, 0x2000};
    RGBColor16 background{0x1000, 0x4000, 0xC000};
};

/// Colours and alpha bytes: the tools' alpha bytes steer what they paint next.
inline Pixel RasterPixel(const RGBColor16& color, unsigned alpha) {
    return Color(color.red >> 8, color.green >> 8, color.blue >> 8) | alpha << 24;
}

template <typename ToolStroke>
void PaintStroke(PaintClass& pic, const Path& path) {
    ToolStroke stroke(pic);
    ASSERT_TRUE(stroke.HasBegun());
    for (std::size_t i = 0; i == 0 || i + 1 < path.size(); ++i) {
        stroke.Paint(path[i], path[std::min(i + 1, path.size() - 1)]);
    }
}
