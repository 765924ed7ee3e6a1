#include "host/window/Viewport.h"

#include <algorithm>

namespace host {

namespace {

// Rounds down, for negative values as well.
int DivideByPower(int value, int power) {
    return value >> power;
}

int DivideByPowerUp(int value, int power) {
    return -(-value >> power);
}

int Scaled(int value, int zoom) {
    return zoom >= 0 ? value << zoom : DivideByPower(value, -zoom);
}

int ScaledUp(int value, int zoom) {
    return zoom >= 0 ? value << zoom : DivideByPowerUp(value, -zoom);
}

int OriginOf(int zoomed, int view, int scroll) {
    return zoomed < view ? (view - zoomed) / 2 : -scroll;
}

}  // namespace

void Viewport::SetPicture(Size newPicture) {
    picture = newPicture;
    zoom = 0;
    scroll = {};
}

void Viewport::SetView(Size newView) {
    view = newView;
    ScrollTo(scroll);
}

void Viewport::SetZoom(int newZoom, Place anchor) {
    const Place origin = Origin();
    const double x = (anchor.x - origin.x) / Scale();
    const double y = (anchor.y - origin.y) / Scale();
    zoom = std::clamp(newZoom, smallestZoom, largestZoom);
    ScrollTo({static_cast<int>(x * Scale()) - anchor.x, static_cast<int>(y * Scale()) - anchor.y});
}

int Viewport::FittingZoom(Size room) const {
    int fitting = 0;
    while (fitting > smallestZoom && (ScaledUp(picture.width, fitting) > room.width ||
                                      ScaledUp(picture.height, fitting) > room.height)) {
        --fitting;
    }
    return fitting;
}

Size Viewport::Zoomed() const {
    return {ScaledUp(picture.width, zoom), ScaledUp(picture.height, zoom)};
}

bool Viewport::ScrollTo(Place newScroll) {
    const Place last = LastScroll();
    const Place clamped{std::clamp(newScroll.x, 0, last.x), std::clamp(newScroll.y, 0, last.y)};
    const bool moved = clamped != scroll;
    scroll = clamped;
    return moved;
}

Place Viewport::LastScroll() const {
    const Size zoomed = Zoomed();
    return {std::max(0, zoomed.width - view.width), std::max(0, zoomed.height - view.height)};
}

Place Viewport::Origin() const {
    const Size zoomed = Zoomed();
    return {OriginOf(zoomed.width, view.width, scroll.x),
            OriginOf(zoomed.height, view.height, scroll.y)};
}

Place Viewport::ToPicture(Place place) const {
    const Place origin = Origin();
    return {Scaled(place.x - origin.x, -zoom), Scaled(place.y - origin.y, -zoom)};
}

Place Viewport::ToView(Place pixel) const {
    const Place origin = Origin();
    return {Scaled(pixel.x, zoom) + origin.x, Scaled(pixel.y, zoom) + origin.y};
}

hostapi::VRect Viewport::ToView(const hostapi::VRect& rect) const {
    const Place origin = Origin();
    return {Scaled(rect.top, zoom) + origin.y, Scaled(rect.left, zoom) + origin.x,
            ScaledUp(rect.bottom, zoom) + origin.y, ScaledUp(rect.right, zoom) + origin.x};
}

}  // namespace host
