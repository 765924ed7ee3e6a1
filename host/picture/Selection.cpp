#include "host/picture/Selection.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

void RequireArea(const hostapi::VRect& bounds) {
    if (IsEmpty(bounds)) {
        throw SelectionError("the selection is empty");
    }
}

std::size_t MaskSize(const hostapi::VRect& bounds) {
    return static_cast<std::size_t>(Width(bounds)) * static_cast<std::size_t>(Height(bounds));
}

// How far a pixel's centre lies inside the ellipse with these half axes, in pixels, along the line
// to the ellipse's centre; negative outside.
double DepthInside(double dx, double dy, double halfWidth, double halfHeight) {
    const double relative = std::hypot(dx / halfWidth, dy / halfHeight);
    if (relative == 0.0) {
        return std::min(halfWidth, halfHeight);
    }
    return std::hypot(dx, dy) * (1.0 / relative - 1.0);
}

}  // namespace

std::uint8_t Selection::Coverage(int x, int y) const {
    if (!Contains(bounds, x, y)) {
        return 0;
    }
    if (mask.empty()) {
        return 255;
    }
    const auto row = static_cast<std::size_t>(y - bounds.top);
    const auto column = static_cast<std::size_t>(x - bounds.left);
    return mask[row * static_cast<std::size_t>(Width(bounds)) + column];
}

bool Selection::operator==(const Selection& other) const {
    return AreEqual(bounds, other.bounds) && mask == other.mask && isExplicit == other.isExplicit;
}

Selection SelectNothing(const Picture& picture) {
    return {picture.Bounds(), {}, false};
}

Selection SelectRectangle(const hostapi::VRect& bounds) {
    RequireArea(bounds);
    return {bounds, {}, true};
}

Selection SelectEllipse(const hostapi::VRect& bounds, double feather) {
    RequireArea(bounds);
    if (!(feather >= 0.0)) {
        throw SelectionError("the feather is negative");
    }
    Selection selection{bounds, {}, true};
    selection.mask.reserve(MaskSize(bounds));
    const double halfWidth = Width(bounds) / 2.0;
    const double halfHeight = Height(bounds) / 2.0;
    // An edge one pixel wide is what a sharp ellipse looks like without steps.
    const double edge = std::max(feather, 1.0);
    for (int y = 0; y < Height(bounds); ++y) {
        for (int x = 0; x < Width(bounds); ++x) {
            const double depth =
                DepthInside(x + 0.5 - halfWidth, y + 0.5 - halfHeight, halfWidth, halfHeight);
            const double coverage = std::clamp(depth / edge + 0.5, 0.0, 1.0);
            selection.mask.push_back(static_cast<std::uint8_t>(std::lround(coverage * 255.0)));
        }
    }
    return selection;
}

Selection SelectByMask(const hostapi::VRect& bounds, const Picture& mask, const Picture& picture) {
    RequireArea(bounds);
    const bool fitsPicture = mask.width == picture.width && mask.height == picture.height;
    const bool fitsBounds = mask.width == Width(bounds) && mask.height == Height(bounds);
    if (!fitsPicture && !fitsBounds) {
        throw SelectionError("the mask has neither the size of the selection nor the picture's");
    }
    if (!fitsBounds && !Contains(picture.Bounds(), bounds)) {
        throw SelectionError("the selection reaches beyond the picture");
    }
    const int firstColumn = fitsBounds ? 0 : bounds.left;
    const int firstRow = fitsBounds ? 0 : bounds.top;
    Selection selection{bounds, {}, true};
    selection.mask.reserve(MaskSize(bounds));
    for (int y = 0; y < Height(bounds); ++y) {
        for (int x = 0; x < Width(bounds); ++x) {
            const std::uint8_t* pixel = mask.Pixel(firstColumn + x, firstRow + y);
            selection.mask.push_back(
                static_cast<std::uint8_t>((pixel[0] + pixel[1] + pixel[2]) / 3));
        }
    }
    return selection;
}

}  // namespace host
