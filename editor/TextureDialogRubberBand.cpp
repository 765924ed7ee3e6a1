// The tools that draw over the view while they are dragged: the Gradient's band and the cross of
// the Rubber Stamp. What they leave on the screen goes with the redraw after the tool.
#include <cstdlib>

#include "base/Platform.h"
#include "base/Rectangles.h"
#include "editor/PortState.h"
#include "editor/TextureDialog.h"
#include "paint/Stroke.h"
#include "raster/Truncation.h"
#include "resources/Ids.h"

namespace {

using Items = TextureItems;

constexpr Color24 black24 = MakeColor24(0, 0, 0);
constexpr Color24 white24 = MakeColor24(0xFF, 0xFF, 0xFF);

/// The length of the cross's arms in pixels at 96 dots an inch.
constexpr int crossArm = 5;

/// The pen inverts what it crosses, so that a second line at the same place takes the first away.
class InvertingPen {
  public:
    explicit InvertingPen(DrawingPort& newPort) : port(newPort), colors(newPort) {
        port.SetForeground(black24);
        port.SetPenMode(PenMode::exclusiveOr);
    }
    InvertingPen(const InvertingPen&) = delete;
    InvertingPen& operator=(const InvertingPen&) = delete;
    ~InvertingPen() { port.ResetPen(); }

  private:
    DrawingPort& port;
    SavedColors colors;
};

short Sum(short a, short b) {
    return static_cast<short>(a + b);
}

bool IsAltDown() {
    return (GetModifiers() & modifierAlt) != 0;
}

}  // namespace

// --- Gradient ---

void TextureDialog::PaintGradient(hostapi::Point press) {
    short dx = 0;
    short dy = 0;
    TrackGradient(&dx, &dy);
    pic->Gradient(press, {Sum(press.v, dy), Sum(press.h, dx)});
}

// A drag at exactly 45 degrees draws an upright band but gives a gradient across. That is intended.
void TextureDialog::TrackGradient(short* dx, short* dy) {
    const SavedColors colors(Port());
    const ClippedTo clip(Port(), View());
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

// --- Rubber Stamp ---

void TextureDialog::UseStamp() {
    if (!TrackStamp()) {
        platformServices.showArrowCursor();
        Alert(this, alertNoStampSource);
    }
}

// A press without a movement paints nothing: the wait for the first one does not look at the
// button, which is up by then. Alt ends the wait, too.
bool TextureDialog::TrackStamp() {
    StampStroke stroke(*pic);
    if (!stroke.HasBegun()) {
        return true;
    }
    const ClippedTo clip(Port(), View());
    const InvertingPen inverting(Port());
    hostapi::Point place;
    GetMouse(&place);
    hostapi::Point now = TexturePoint(place);
    bool isViewStale = true;
    while (true) {
        const hostapi::Point before = now;
        bool isDown = false;
        bool isAlt = false;
        do {
            isDown = TrackMouse(&place);
            now = TexturePoint(place);
            isAlt = IsAltDown();
        } while (AreEqual(now, before) && !isAlt);
        if (!isDown) {
            break;
        }
        if (isAlt) {
            TakeStampSource(now);
            continue;
        }
        if (pic->stampSourcePending) {
            AimStamp(now);
            ShowStampCross(place);
            // The cross of the source before it goes with the redraw of all of the view.
            isViewStale = true;
        } else if (pic->stampOffsetH == 0 && pic->stampOffsetV == 0) {
            return false;
        }
        if (pic->stampCrossShown) {
            // Once more, which wipes it.
            DrawStampCross();
        }
        stroke.Paint(before, now);
        if (isViewStale) {
            RedrawContents();
            isViewStale = false;
        } else {
            RedrawTouched(stroke.Touched(before, now));
        }
        ShowStampCross(place);
    }
    pic->stampCrossShown = false;
    return true;
}

void TextureDialog::TakeStampSource(hostapi::Point source) {
    pic->stampOffsetH = source.h;
    pic->stampOffsetV = source.v;
    pic->stampSourcePending = true;
    ShowCursor(ToolCursor(toolRubberStamp, viewMode, modifierAlt));
}

/// Turns the source point into the distance from the brush.
void TextureDialog::AimStamp(hostapi::Point brush) {
    pic->stampOffsetH = static_cast<short>(pic->stampOffsetH - brush.h);
    pic->stampOffsetV = static_cast<short>(pic->stampOffsetV - brush.v);
    pic->stampSourcePending = false;
}

/// The cross goes to where the stamp reads while the mouse is at `brush`, which may lie outside
/// the view: it does not wrap.
void TextureDialog::ShowStampCross(hostapi::Point brush) {
    pic->stampCrossH = TruncateToShort(brush.h + pic->stampOffsetH * zoom);
    pic->stampCrossV = TruncateToShort(brush.v + pic->stampOffsetV * zoom);
    DrawStampCross();
    pic->stampCrossShown = true;
}

void TextureDialog::DrawStampCross() {
    const short h = pic->stampCrossH;
    const short v = pic->stampCrossV;
    const short arm = static_cast<short>(Scale().Pixels(crossArm));
    const short back = static_cast<short>(-arm);
    // An inverting line ends before its last point.
    const short end = static_cast<short>(arm + 1);
    MoveTo(Sum(h, back), v);
    LineTo(Sum(h, end), v);
    MoveTo(h, Sum(v, back));
    LineTo(h, Sum(v, end));
}
