#include "editor/ColorPicker.h"

#include <utility>

#include "base/FatalError.h"
#include "dialogs/ColorChoice.h"
#include "editor/Tools.h"
#include "framework/dialog/DialogGeometry.h"
#include "resources/Strings.h"

namespace {

constexpr Color24 black24 = MakeColor24(0, 0, 0);
/// How far outside the foreground well its frame lies, in pixels at 96 dots an inch.
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
    const int distance = dialog->Scale().Pixels(frameDistance);
    port.SetPenWidth(static_cast<short>(dialog->Scale().Pixels(1)));
    port.FrameRect(Inset(wells.foreRect, -distance, -distance));
    port.SetPenWidth(1);
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
    const int line = dialog->Scale().Pixels(1);
    const auto paint = [this](int top, int left, int end, int right) {
        dialog->Port().PaintRect(ToRect({left, top, right, end}));
    };
    const int outerTop = upright.top - line;
    const int outerRight = upright.right + line;
    const int outerBottom = bottom.bottom + line;
    const int outerLeft = bottom.left - line;
    const int innerTop = bottom.top - line;
    const int innerLeft = upright.left - line;
    paint(outerTop, innerLeft, upright.top, outerRight);
    paint(outerTop, upright.right, outerBottom, outerRight);
    paint(bottom.bottom, outerLeft, outerBottom, outerRight);
    paint(innerTop, outerLeft, outerBottom, bottom.left);
    paint(innerTop, outerLeft, bottom.top, upright.left);
    paint(outerTop, innerLeft, bottom.top, upright.left);
}

void ColorPicker::Use(WellPart used) {
    switch (used) {
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

hostapi::Rect ColorPicker::FocusFrame(WellPart part) const {
    const int margin = dialog->Scale().Pixels(focusFrameMargin);
    switch (part) {
        case wellForeground:
            return Inset(wells.foreRect, margin, margin);
        case wellBackground:
            return Inset(wells.backRectRight, margin, margin);
        case wellSwap:
            return Inset(wells.swapRect, -margin, -margin);
        case wellDefault:
            return Inset(wells.defaultRect, -margin, -margin);
        case wellNone:
            break;
    }
    return {};
}

std::vector<ItemPart> ColorPicker::Parts() const {
    const auto part = [](WellPart which, const std::string& value, const hostapi::Rect& bounds) {
        const std::string hint = StringText(static_cast<StringId>(WellHint(which)));
        return ItemPart{FirstSentence(hint), value, false, bounds, KeyInHint(hint)};
    };
    return {part(wellForeground, ColorText(ShownColor(*fore)), wells.foreRect),
            part(wellBackground, ColorText(ShownColor(*back)), wells.backRectBottom),
            part(wellSwap, "", wells.swapRect), part(wellDefault, "", wells.defaultRect)};
}

void ColorPicker::Swap() {
    std::swap(*fore, *back);
}

void ColorPicker::SetDefaults() {
    *fore = black16;
    *back = white16;
}
