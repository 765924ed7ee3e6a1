// The tools: keys, cursors, and the mouse loops in the drawing area.
//
// A tool runs from the press of the button to its release: it polls the mouse itself and does not
// return to the event loop before.
#include <algorithm>

#include "dialogs/tools/BrushDialog.h"
#include "dialogs/tools/CloneDialog.h"
#include "dialogs/tools/FillDialog.h"
#include "editor/TextureDialog.h"
#include "paint/Stroke.h"
#include "resources/Ids.h"

namespace {

using Items = TextureItems;

/// The system's cursor for the grow box, which the system shows there itself.
constexpr short cursorSizing = 32642;

RGBColor16 ColorOf(Pixel pixel) {
    return {static_cast<std::uint16_t>((pixel & 0xFF) << 8),
            static_cast<std::uint16_t>((pixel >> 8 & 0xFF) << 8),
            static_cast<std::uint16_t>((pixel >> 16 & 0xFF) << 8)};
}

}  // namespace

// --- Choosing a tool ---

void TextureDialog::ChooseTool() {
    tool = GetShort(Items::toolPalette);
    SetValue(Items::viewPalette, 0);
    if (IsDoubleClick()) {
        OpenToolSettings();
    }
}

void TextureDialog::ChooseViewTool() {
    tool = static_cast<short>(GetShort(Items::viewPalette) + toolEyedropper);
    SetValue(Items::toolPalette, 0);
}

void TextureDialog::ShowTool() {
    const PaletteValues values = PalettesFor(tool);
    SetValue(Items::toolPalette, values.tools);
    SetValue(Items::viewPalette, values.views);
}

void TextureDialog::OpenToolSettings() {
    switch (tool) {
        case toolPaintbrush:
            OpenBrushSettings();
            break;
        case toolRubberStamp:
            OpenStampSettings();
            break;
        case toolFill:
            OpenFillSettings();
            break;
        default:
            break;
    }
}

void TextureDialog::OpenBrushSettings() {
    BrushDialog dialog(this, dialogPlaces[placedBrush], {pic->brushSize});
    if (dialog.Run() == okItem) {
        pic->brushSize = dialog.Settings().size;
    }
}

void TextureDialog::OpenStampSettings() {
    CloneDialog dialog(this, dialogPlaces[placedClone],
                       {pic->stampSize, pic->stampOffsetH, pic->stampOffsetV});
    if (dialog.Run() == okItem) {
        const StampSettings settings = dialog.Settings();
        if (settings.offsetH != pic->stampOffsetH || settings.offsetV != pic->stampOffsetV) {
            // A typed offset takes the place of a source that is pending.
            pic->stampSourcePending = false;
        }
        pic->stampSize = settings.size;
        pic->stampOffsetH = settings.offsetH;
        pic->stampOffsetV = settings.offsetV;
    }
}

void TextureDialog::OpenFillSettings() {
    FillDialog dialog(this, dialogPlaces[placedFill], {pic->fillTolerance, pic->fillAntiAlias});
    if (dialog.Run() == okItem) {
        const FillSettings settings = dialog.Settings();
        pic->fillTolerance = settings.tolerance;
        pic->fillAntiAlias = settings.antiAlias;
    }
}

short TextureDialog::KeyDown(int key, int modifiers) {
    if (modifiers == modifierControl) {
        return SmallPSDialog::KeyDown(key, modifiers);
    }
    if (const short chosen = ToolOfKey(key); chosen != 0) {
        tool = chosen;
    } else if (key == 'd' || key == 'D') {
        SetDefaultColors();
    } else if (key == 'x' || key == 'X') {
        SwapColors();
    } else if (key == 'm' || key == 'M') {
        ToggleSizeMarks();
    } else if (key == 'p' || key == 'P') {
        SetValue(Items::tab, 3 - GetShort(Items::tab));
        SwitchView();
    } else {
        return SmallPSDialog::KeyDown(key, modifiers);
    }
    ShowTool();
    return 0;
}

short TextureDialog::CursorAt(short item) {
    if (item == Items::growBox) {
        return cursorSizing;
    }
    if (item != Items::drawingArea) {
        return SmallPSDialog::CursorAt(item);
    }
    return ToolCursor(tool, viewMode, GetModifiers());
}

// --- Colours ---

void TextureDialog::SetDefaultColors() {
    colorPicker->SetDefaults();
    InvalidateItem(Items::colorWells);
}

void TextureDialog::SwapColors() {
    colorPicker->Swap();
    InvalidateItem(Items::colorWells);
}

void TextureDialog::ClickWells() {
    colorPicker->Click(Mouse().h, Mouse().v);
    InvalidateItem(Items::colorWells);
}

bool TextureDialog::UserItemKey(short item, ItemKey key, int modifiers) {
    if (item != Items::colorWells) {
        return SmallPSDialog::UserItemKey(item, key, modifiers);
    }
    switch (key) {
        case ItemKey::back:
            focusedWell = static_cast<WellPart>(std::max<int>(focusedWell - 1, wellForeground));
            break;
        case ItemKey::on:
            focusedWell = static_cast<WellPart>(std::min<int>(focusedWell + 1, wellDefault));
            break;
        case ItemKey::press:
            colorPicker->Use(focusedWell);
            break;
        case ItemKey::pageBack:
        case ItemKey::pageOn:
            return false;
    }
    InvalidateItem(item);
    return true;
}

void TextureDialog::UsePart(short item, int part) {
    if (item == Items::colorWells) {
        focusedWell = static_cast<WellPart>(part - 1);
        UserItemKey(item, ItemKey::press, 0);
    }
}

hostapi::Rect TextureDialog::FocusFrame(short item) const {
    return item == Items::colorWells ? colorPicker->FocusFrame(focusedWell)
                                     : SmallPSDialog::FocusFrame(item);
}

// --- The mouse in the drawing area ---

void TextureDialog::ViewToTexture(short* x, short* y) const {
    const hostapi::Rect view = View();
    const ViewGeometry geometry = Geometry();
    *x = geometry.x.ToTexture(*x - view.left);
    *y = geometry.y.ToTexture(*y - view.top);
}

hostapi::Point TextureDialog::TexturePoint(hostapi::Point inWindow) const {
    hostapi::Point place = inWindow;
    ViewToTexture(&place.h, &place.v);
    return place;
}

void TextureDialog::ClickDrawingArea() {
    if (!ToolWorksIn(tool, viewMode)) {
        return;
    }
    const hostapi::Point press = TexturePoint(Mouse());
    if (ToolPaints(tool)) {
        TakeUndoSnapshot();
    }
    if (const short cursor = DragCursor(tool); cursor != 0) {
        ShowCursor(cursor);
    }
    RunTool(press);
    pic->SetDirty();
    InvalidateDrawing();
}

void TextureDialog::RunTool(hostapi::Point press) {
    switch (tool) {
        case toolMove:
            TrackMove();
            break;
        case toolPaintbrush:
            TrackBrush();
            break;
        case toolEraser:
            TrackEraser();
            break;
        case toolPencil:
            TrackPencil();
            break;
        case toolGradient:
            PaintGradient(press);
            break;
        case toolRubberStamp:
            UseStamp();
            break;
        case toolFill:
            pic->FloodFill(press);
            break;
        case toolEyedropper:
            TrackEyedropper();
            break;
        case toolHand:
            TrackHand();
            break;
        case toolZoom:
            ClickZoom();
            break;
        default:
            break;
    }
}

/// Follows the mouse while its button is down and shows the stroke as it grows. A click that is
/// over before the first look paints nothing; a still mouse paints its first place alone.
void TextureDialog::TrackStroke(Stroke& stroke) {
    if (!stroke.HasBegun()) {
        return;
    }
    hostapi::Point place;
    GetMouse(&place);
    hostapi::Point before = TexturePoint(place);
    for (bool first = true; TrackMouse(&place); first = false) {
        const hostapi::Point now = TexturePoint(place);
        if (!first && AreEqual(now, before)) {
            continue;
        }
        stroke.Paint(before, now);
        if (first) {
            // From here on without the size marks, whether or not the view showed them before.
            RedrawContents();
        } else {
            RedrawTouched(stroke.Touched(before, now));
        }
        before = now;
    }
}

void TextureDialog::TrackBrush() {
    BrushStroke stroke(*pic);
    TrackStroke(stroke);
}

void TextureDialog::TrackEraser() {
    EraserStroke stroke(*pic);
    TrackStroke(stroke);
}

void TextureDialog::TrackPencil() {
    PencilStroke stroke(*pic);
    TrackStroke(stroke);
}

// In pixels of the window: the tile moves by a texture pixel for each, at any zoom.
void TextureDialog::TrackMove() {
    if (pic->GetClone() == nullptr) {
        return;
    }
    hostapi::Point before;
    GetMouse(&before);
    for (hostapi::Point now; TrackMouse(&now); before = now) {
        if (!AreEqual(now, before)) {
            pic->ShiftBy(static_cast<short>(before.h - now.h),
                         static_cast<short>(before.v - now.v));
            RedrawContents();
        }
    }
    pic->DeleteClone();
}

void TextureDialog::TrackEyedropper() {
    for (hostapi::Point place; TrackMouse(&place);) {
        const hostapi::Point point = TexturePoint(place);
        const RGBColor16 color = ColorOf(pic->GetPixelWrapped(point.h, point.v));
        if (!(color == preferences.foreground)) {
            preferences.foreground = color;
            InvalidateItem(Items::colorWells);
            UpdateNow();
        }
    }
}

void TextureDialog::TrackHand() {
    hostapi::Point before;
    GetMouse(&before);
    for (hostapi::Point now; TrackMouse(&now); before = now) {
        if (AreEqual(now, before)) {
            continue;
        }
        SetValue(Items::horizontalScroll, GetValue(Items::horizontalScroll) - (now.h - before.h));
        SetValue(Items::verticalScroll, GetValue(Items::verticalScroll) - (now.v - before.v));
        RedrawAll();
    }
}

void TextureDialog::ClickZoom() {
    if ((GetModifiers() & modifierAlt) != 0) {
        ZoomOut();
    } else {
        ZoomIn();
    }
}
