#include "framework/dialog/SmallPSDialog.h"

#include "base/FatalError.h"
#include "base/HostServices.h"

namespace {

/// Along the inside of a colour box.
constexpr Color24 shade = MakeColor24(140, 140, 140);
constexpr Color24 frameColor = MakeColor24(0, 0, 0);

}  // namespace

SmallPSDialog::SmallPSDialog(short newResourceId, NorvantaDialog* newOwner)
    : NorvantaDialog(newResourceId, newOwner), record(filterRecord) {
    Assert(record != nullptr, "SmallPSDialog / Zeile 23 !(f != NULL)");
}

void SmallPSDialog::Reserved(int) {}

void SmallPSDialog::MoveTo(short x, short y) {
    pen = {y, x};
}

void SmallPSDialog::LineTo(short x, short y) {
    const hostapi::Point end{y, x};
    Port().DrawLine(pen, end);
    pen = end;
}

void SmallPSDialog::DrawColorBox(const hostapi::Rect& rect, Color24 color) {
    DrawingPort& drawing = Port();
    const Color24 before = drawing.Foreground();
    const int line = Scale().Pixels(1);
    const hostapi::Rect inside = Inset(rect, line, line);
    drawing.SetPenWidth(static_cast<short>(line));
    drawing.SetForeground(frameColor);
    drawing.FrameRect(rect);
    drawing.SetForeground(color);
    drawing.PaintRect(inside);
    drawing.SetForeground(shade);
    drawing.FrameRect(inside);
    drawing.SetForeground(before);
    drawing.SetPenWidth(1);
}

void SmallPSDialog::SetPlacement(short top, short left) {
    const hostapi::Rect client = ClientRectangle();
    PlaceClient(Offset(client, left - client.left, top - client.top));
}
