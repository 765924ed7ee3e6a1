#include "framework/dialog/DialogGeometry.h"

#include <algorithm>

#include "framework/dialog/ItemRecord.h"

namespace {

constexpr std::uint16_t maximizedBit = 0x8000;

ScreenRect Moved(const ScreenRect& rect, int horizontal, int vertical) {
    return {rect.left + horizontal, rect.top + vertical, rect.right + horizontal,
            rect.bottom + vertical};
}

std::int16_t Short(int value) {
    return static_cast<std::int16_t>(std::clamp(value, INT16_MIN, INT16_MAX));
}

}  // namespace

ScreenRect CenteredOn(const ScreenRect& rect, const ScreenRect& around) {
    return Moved(rect, (around.left + around.right - rect.left - rect.right) / 2,
                 (around.top + around.bottom - rect.top - rect.bottom) / 2);
}

ScreenRect PushedInto(const ScreenRect& rect, const ScreenRect& area) {
    // The far sides first: where both cannot be kept, the near ones win.
    const ScreenRect inside =
        Moved(rect, std::min(0, area.right - rect.right), std::min(0, area.bottom - rect.bottom));
    return Moved(inside, std::max(0, area.left - inside.left), std::max(0, area.top - inside.top));
}

ScreenRect FittedInto(const ScreenRect& rect, const ScreenRect& area) {
    ScreenRect cut = rect;
    cut.right = cut.left + std::min(rect.Width(), area.Width());
    cut.bottom = cut.top + std::min(rect.Height(), area.Height());
    return PushedInto(cut, area);
}

ScreenRect Shrunk(const ScreenRect& rect, int margin) {
    return {rect.left + margin, rect.top + margin, rect.right - margin, rect.bottom - margin};
}

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

Placing UnpackPlacement(const hostapi::Rect& placement) {
    Placing placing{placement, placement.top < 0};
    placing.client.top =
        static_cast<std::int16_t>(static_cast<std::uint16_t>(placement.top) & ~maximizedBit);
    return placing;
}

hostapi::Rect PackPlacement(const Placing& placing) {
    hostapi::Rect placement = placing.client;
    // The bit leaves no room for a window above the screen's top: it is stored at the top.
    placement.top = std::max<std::int16_t>(placement.top, 0);
    if (placing.isMaximized) {
        placement.top = static_cast<std::int16_t>(placement.top | maximizedBit);
    }
    return placement;
}
