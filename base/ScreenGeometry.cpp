#include "base/ScreenGeometry.h"

#include <algorithm>

ScreenRect Moved(const ScreenRect& rect, int horizontal, int vertical) {
    return {rect.left + horizontal, rect.top + vertical, rect.right + horizontal,
            rect.bottom + vertical};
}

ScreenRect CenteredOn(const ScreenRect& rect, const ScreenRect& around) {
    return Moved(rect, (around.left + around.right - rect.left - rect.right) / 2,
                 (around.top + around.bottom - rect.top - rect.bottom) / 2);
}

namespace {

ScreenRect KeptFromFarSides(const ScreenRect& rect, const ScreenRect& area) {
    return Moved(rect, std::min(0, area.right - rect.right),
                 std::min(0, area.bottom - rect.bottom));
}

ScreenRect KeptFromNearSides(const ScreenRect& rect, const ScreenRect& area) {
    return Moved(rect, std::max(0, area.left - rect.left), std::max(0, area.top - rect.top));
}

}  // namespace

// Where both sides cannot be kept, the one that is corrected last wins.

ScreenRect PushedInto(const ScreenRect& rect, const ScreenRect& area) {
    return KeptFromNearSides(KeptFromFarSides(rect, area), area);
}

ScreenRect AlertPlace(const ScreenRect& alert, const ScreenRect& around, const Screen& screen) {
    const ScreenRect area = Shrunk(screen.work, alertMargin);
    return KeptFromFarSides(KeptFromNearSides(CenteredOn(alert, around), area), area);
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

ScreenRect FromWorkspace(const ScreenRect& place, const Screen& screen) {
    return Moved(place, screen.work.left - screen.whole.left, screen.work.top - screen.whole.top);
}
