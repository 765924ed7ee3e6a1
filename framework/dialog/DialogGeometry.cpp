#include "framework/dialog/DialogGeometry.h"

#include <algorithm>

#include "base/Rectangles.h"
#include "framework/dialog/ItemRecord.h"

namespace {

constexpr int maximizedBit = 0x8000;
/// The ends of 15 bits.
constexpr int leastTop = -0x4000;
constexpr int greatestTop = 0x3FFF;

std::int16_t Short(int value) {
    return static_cast<std::int16_t>(std::clamp(value, INT16_MIN, INT16_MAX));
}

}  // namespace

hostapi::Rect ToRect(const ScreenRect& rect) {
    return {Short(rect.top), Short(rect.left), Short(rect.bottom), Short(rect.right)};
}

ScreenRect ToScreenRect(const hostapi::Rect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

hostapi::Rect FollowResize(const hostapi::Rect& bounds, std::uint8_t rules, int widthChange,
                           int heightChange) {
    ScreenRect result = ToScreenRect(bounds);
    if ((rules & resizeMoveRight) != 0) {
        result.left += widthChange;
        result.right += widthChange;
    }
    if ((rules & resizeGrowRight) != 0) {
        result.right += widthChange;
    }
    if ((rules & resizeMoveDown) != 0) {
        result.top += heightChange;
        result.bottom += heightChange;
    }
    if ((rules & resizeGrowDown) != 0) {
        result.bottom += heightChange;
    }
    return ToRect(result);
}

hostapi::Rect Rescaled(const hostapi::Rect& placement, int from, int to) {
    const hostapi::Rect client = UnpackPlacement(placement).client;
    const auto scaled = [&](int size) {
        return static_cast<int>((static_cast<std::int64_t>(size) * to + from / 2) / from);
    };
    hostapi::Rect result = placement;
    result.right = Short(client.left + scaled(Width(client)));
    result.bottom = Short(client.top + scaled(Height(client)));
    return result;
}

Placing UnpackPlacement(const hostapi::Rect& placement) {
    const int stored = static_cast<std::uint16_t>(placement.top) & ~maximizedBit;
    Placing placing{placement, placement.top < 0};
    placing.client.top =
        static_cast<std::int16_t>(stored > greatestTop ? stored - maximizedBit : stored);
    return placing;
}

hostapi::Rect PackPlacement(const Placing& placing) {
    const int top = std::clamp<int>(placing.client.top, leastTop, greatestTop) & ~maximizedBit;
    hostapi::Rect placement = placing.client;
    placement.top = static_cast<std::int16_t>(placing.isMaximized ? top | maximizedBit : top);
    return placement;
}
