// The Gradient, which draws a rubber band over the view while it is dragged. What that leaves on
// the screen goes with the redraw after the tool.
#include <cstdlib>

#include "base/Rectangles.h"
#include "editor/PortState.h"
#include "editor/TextureDialog.h"
#include "raster/Truncation.h"
#include "resources/Ids.h"

namespace {

using Items = TextureItems;

constexpr Color24 black24 = MakeColor24(0, 0, 0);
constexpr Color24 white24 = MakeColor24(0xFF, 0xFF, 0xFF);

short Sum(short a, short b) {
    return static_cast<short>(a + b);
}

}  // namespace

void TextureDialog::PaintGradient(hostapi::Point press) {
    short dx = 0;
    short dy = 0;
    TrackGradient(&dx, &dy);
    pic->Gradient(press, {Sum(press.v, dy), Sum(press.h, dx)});
}

// The band stands upright where the mouse is as far aside as down, and the result of the same drag
// runs across: meant.
void TextureDialog::TrackGradient(short* dx, short* dy) {
    const SavedColors colors(Port());
    const ClippedTo clip(Port(), ViewRect(GetBounds(Items::drawingArea)));
    const hostapi::Point start = Mouse();
    const auto draw = [this, start](hostapi::Point end, Color24 color) {
        Port().SetForeground(color);
        MoveTo(start.h, start.v);
        LineTo(end.h, end.v);
    };
    hostapi::Point shown = start;
    draw(shown, black24);
    hostapi::Point place = start;
    while (TrackMouse(&place)) {
        const bool isLevel = std::abs(start.v - place.v) < std::abs(start.h - place.h);
        const hostapi::Point end =
            isLevel ? hostapi::Point{start.v, place.h} : hostapi::Point{place.v, start.h};
        if (!AreEqual(end, shown)) {
            // Overdrawn, not undone: white traces stay until the redraw after the tool.
            draw(shown, white24);
            draw(end, black24);
            shown = end;
        }
    }
    *dx = TruncateToShort((place.h - start.h) / zoom);
    *dy = TruncateToShort((place.v - start.v) / zoom);
    if (std::abs(*dx) < std::abs(*dy)) {
        *dx = 0;
    } else {
        *dy = 0;
    }
}
