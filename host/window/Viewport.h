// Where the picture lies in its view: zoom, scrolling, and from one's coordinates to the other's.
#pragma once

#include "base/Rectangles.h"

namespace host {

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

struct Place {
    int x = 0;
    int y = 0;
    bool operator==(const Place&) const = default;
};

/// The zoom is a power of two, so a picture's pixel is a whole number of view pixels or the other
/// way round, and nothing is rounded on the way. A picture smaller than its view stands in the
/// middle.
class Viewport {
  public:
    static constexpr int smallestZoom = -4;
    static constexpr int largestZoom = 5;

    /// Starts at 100 % in the picture's top left corner.
    void SetPicture(Size newPicture);
    void SetView(Size newView);
    Size View() const { return view; }

    /// The exponent: 0 is 100 %, 1 is 200 %, -1 is 50 %.
    int Zoom() const { return zoom; }
    double Scale() const { return zoom >= 0 ? 1 << zoom : 1.0 / (1 << -zoom); }
    /// Clamped to the range. The picture's point under `anchor`, in view pixels, stays there as far
    /// as scrolling allows.
    void SetZoom(int newZoom, Place anchor);
    /// The largest zoom up to 100 % at which the whole picture fits into `room`.
    int FittingZoom(Size room) const;

    /// The picture in view pixels.
    Size Zoomed() const;
    /// The first view pixel of the zoomed picture that is to be seen.
    Place Scroll() const { return scroll; }
    /// Clamped to what there is to scroll. Returns whether anything moved.
    bool ScrollTo(Place newScroll);

    /// Where the picture's top left corner lies in the view.
    Place Origin() const;
    /// The picture's pixel at a place of the view; extrapolates outside the picture.
    Place ToPicture(Place place) const;
    /// The place of a picture pixel's top left corner in the view.
    Place ToView(Place pixel) const;
    /// All view pixels that show a part of the rectangle.
    hostapi::VRect ToView(const hostapi::VRect& rect) const;

  private:
    Place LastScroll() const;

    Size picture;
    Size view;
    int zoom = 0;
    Place scroll;
};

}  // namespace host
