#include "editor/ColorPicker.h"

#include <utility>

#include "base/FatalError.h"
#include "dialogs/ColorChoice.h"

namespace {

constexpr Color24 black24 = MakeColor24(0, 0, 0);
/// How far outside the foreground well its frame lies.
constexpr int frameDistance = 2;

}  // namespace

ColorPicker::ColorPicker(RGBColor16* f, RGBColor16* b, const ColorWells& newWells, SmallPSDialog* d)
    : fore(f), back(b), wells(newWells), dialog(d) {
    Assert(f != nullptr, "ColorPicker / Zeile 29 !(f != NULL)");
    Assert(b != nullptr, "ColorPicker / Zeile 30 !(b != NULL)");
    Assert(d != nullptr, "ColorPicker / Zeile 31 !(d != NULL)");
}

void ColorPicker::Draw() const {
    DrawBackground();
    DrawForeground();
}

void ColorPicker::DrawForeground() const {
    DrawingPort& port = dialog->Port();
    const Color24 before = port.Foreground();
    port.SetForeground(ShownColor(*fore));
    port.PaintRect(wells.foreRect);
    port.SetForeground(black24);
    port.FrameRect(Inset(wells.foreRect, -frameDistance, -frameDistance));
    port.SetForeground(before);
}

void ColorPicker::DrawBackground() const {
    DrawingPort& port = dialog->Port();
    const Color24 before = port.Foreground();
    port.SetForeground(ShownColor(*back));
    port.PaintRect(wells.backRectRight);
    port.PaintRect(wells.backRectBottom);
    port.SetForeground(black24);
    DrawBackgroundOutline();
    port.SetForeground(before);
}

// Around both bars as one: down the outer side, along the bottom, and back inside the angle.
void ColorPicker::DrawBackgroundOutline() const {
    const hostapi::Rect& upright = wells.backRectRight;
    const hostapi::Rect& bottom = wells.backRectBottom;
    const auto line = [this](int fromX, int fromY, int toX, int toY) {
        dialog->MoveTo(static_cast<short>(fromX), static_cast<short>(fromY));
        dialog->LineTo(static_cast<short>(toX), static_cast<short>(toY));
    };
    const int outerRight = upright.right;
    const int outerBottom = bottom.bottom;
    line(upright.left - 1, upright.top - 1, outerRight, upright.top - 1);
    line(outerRight, upright.top - 1, outerRight, outerBottom);
    line(outerRight, outerBottom, bottom.left - 1, outerBottom);
    line(bottom.left - 1, outerBottom, bottom.left - 1, bottom.top - 1);
    line(bottom.left - 1, bottom.top - 1, upright.left - 1, bottom.top - 1);
    line(upright.left - 1, bottom.top - 1, upright.left - 1, upright.top - 1);
}

void ColorPicker::Click(short x, short y) {
    switch (PartAt(x, y)) {
        case wellForeground:
            ChooseColorFor(*dialog, fore);
            DrawForeground();
            break;
        case wellBackground:
            ChooseColorFor(*dialog, back);
            DrawBackground();
            break;
        case wellSwap:
            Swap();
            Draw();
            break;
        case wellDefault:
            SetDefaults();
            Draw();
            break;
        case wellNone:
            break;
    }
}

void ColorPicker::Swap() {
    std::swap(*fore, *back);
}

void ColorPicker::SetDefaults() {
    *fore = black16;
    *back = white16;
}
