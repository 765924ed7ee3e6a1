// Which pixels of a picture a filter changes, and how much.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "base/Rectangles.h"
#include "host/picture/Picture.h"

namespace host {

/// A selection that doesn't fit its picture. The text is one line.
class SelectionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct Selection {
    /// In picture coordinates: (0, 0) is the picture's top left pixel.
    hostapi::VRect bounds{};
    /// Width(bounds) bytes a row, from the top: 0 not selected, 255 fully. Empty: all of `bounds`
    /// is fully selected.
    std::vector<std::uint8_t> mask;
    /// True if the user selected anything; false stands for the whole picture, unselected.
    bool isExplicit = true;

    bool HasMask() const { return !mask.empty(); }
    /// 0 outside the bounds.
    std::uint8_t Coverage(int x, int y) const;
    bool operator==(const Selection& other) const;
};

/// The whole picture, nothing selected by the user.
Selection SelectNothing(const Picture& picture);

/// Throws SelectionError if `bounds` is empty.
Selection SelectRectangle(const hostapi::VRect& bounds);

/// The ellipse inscribed in `bounds`. `feather` is the width in pixels, 0 or more, of the soft
/// edge, half of it on either side of the ellipse; it never reaches outside the bounds. Throws
/// SelectionError if `bounds` is empty or the feather is negative.
Selection SelectEllipse(const hostapi::VRect& bounds, double feather);

/// The grey value of `mask` (the mean of red, green and blue) selects. The mask has either the size
/// of `bounds` or that of the whole picture; then its part inside the bounds counts. Throws
/// SelectionError for any other size.
Selection SelectByMask(const hostapi::VRect& bounds, const Picture& mask, const Picture& picture);

}  // namespace host
