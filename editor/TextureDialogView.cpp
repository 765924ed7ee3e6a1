// The drawing area, the zoom and the tile preview.
#include <algorithm>

#include "base/Platform.h"
#include "base/Progress.h"
#include "editor/PortState.h"
#include "editor/Readouts.h"
#include "editor/TextureDialog.h"
#include "framework/dialog/DialogGeometry.h"
#include "resources/Ids.h"

namespace {

using Items = TextureItems;

constexpr Color24 viewGround = MakeColor24(0x9C, 0x9C, 0x9C);
constexpr Color24 shadeGrey = MakeColor24(0x7F, 0x7F, 0x7F);
constexpr Color24 white24 = MakeColor24(0xFF, 0xFF, 0xFF);
constexpr Color24 black24 = MakeColor24(0, 0, 0);

/// How far away items go that a view does not show.
constexpr int outOfSight = 0x1000;
/// On both sides of the zoom readout: its buttons. In pixels at 96 dots an inch.
constexpr int zoomButtonWidth = 16;

constexpr short previewTab = 2;

}  // namespace

hostapi::Rect TextureDialog::View() const {
    return ViewRect(GetBounds(Items::drawingArea), Scale());
}

ViewGeometry TextureDialog::Geometry() const {
    const hostapi::Rect view = View();
    return {{pic->grX, zoom, viewMode, Width(view),
             static_cast<int>(GetValue(Items::horizontalScroll))},
            {pic->grY, zoom, viewMode, Height(view),
             static_cast<int>(GetValue(Items::verticalScroll))}};
}

void TextureDialog::ZoomIn() {
    zoom = ZoomedIn(zoom);
    ZoomChanged();
}

void TextureDialog::ZoomOut() {
    zoom = ZoomedOut(zoom);
    ZoomChanged();
}

void TextureDialog::ActualPixels() {
    zoom = 1.0;
    ZoomChanged();
}

void TextureDialog::ZoomChanged() {
    UpdateScrollBars();
    UpdateScrollPositions();
    InvalidateItem(Items::zoomReadout);
    InvalidateDrawing();
}

void TextureDialog::UpdateScrollBars() {
    const ViewGeometry geometry = Geometry();
    const auto setBar = [this](short item, const ScrollRange& range) {
        SetSteps(item, 1, static_cast<short>(range.pageStep));
        SetRange(item, 0, range.maximum);
    };
    setBar(Items::horizontalScroll, geometry.x.Range());
    setBar(Items::verticalScroll, geometry.y.Range());
}

void TextureDialog::UpdateScrollPositions() {
    if (viewMode != viewDrawing) {
        return;
    }
    const ViewGeometry geometry = Geometry();
    SetValue(Items::horizontalScroll, CentredScroll(0, geometry.x.Range().maximum));
    SetValue(Items::verticalScroll, CentredScroll(0, geometry.y.Range().maximum));
}

// The scroll bars and what stands between them take up the pixels that the view leaves to them,
// which the dialog's units come only near to.
void TextureDialog::PlaceBesideView() {
    const hostapi::Rect view = View();
    const int bar = Scale().Pixels(scrollBarWidth);
    const auto place = [this](short item, int left, int top, int right, int bottom) {
        SetBounds(item, {static_cast<short>(top), static_cast<short>(left),
                         static_cast<short>(bottom), static_cast<short>(right)});
    };
    const int right = view.right + bar;
    const int bottom = view.bottom + bar;
    place(Items::verticalScroll, view.right, view.top, right, view.bottom);
    place(Items::growBox, view.right, view.bottom, right, bottom);
    const auto inRow = [&](short item, int left, int itemRight) {
        place(item, left, view.bottom, itemRight, bottom);
    };
    const hostapi::Rect progress = GetBounds(Items::progress);
    inRow(Items::progress, view.left - 1, view.left - 1 + Width(progress));
    const hostapi::Rect readout = GetBounds(Items::zoomReadout);
    inRow(Items::zoomReadout, readout.left, readout.right);
    inRow(Items::zoomOut, readout.left, readout.left + bar);
    inRow(Items::zoomIn, readout.right - bar, readout.right);
    inRow(Items::horizontalScroll, GetBounds(Items::horizontalScroll).left, view.right);
}

void TextureDialog::InvalidateDrawing() {
    InvalidateItem(Items::drawingArea);
}

void TextureDialog::RedrawAll() {
    const SavedColors colors(Port());
    const hostapi::Rect item = GetBounds(Items::drawingArea);
    DrawFrame(item);
    const hostapi::Rect view = View();
    const ClippedTo clip(Port(), view);
    const MovedOrigin origin(drawOriginH, drawOriginV, view);
    const ViewGeometry geometry = Geometry();
    DrawView(geometry);
    if (GetShort(Items::sizeMarks) != 0) {
        DrawSizeMarks(geometry);
    }
}

void TextureDialog::RedrawContents() {
    const SavedColors colors(Port());
    const hostapi::Rect view = View();
    const ClippedTo clip(Port(), view);
    const MovedOrigin origin(drawOriginH, drawOriginV, view);
    DrawView(Geometry());
}

/// Brings a view that shows the rest of the texture to where RedrawContents would bring it, by
/// drawing the changed part alone: a host that draws little in little time keeps up with the mouse.
/// `touched` is as Stroke::Touched returns it.
void TextureDialog::RedrawTouched(const hostapi::VRect& touched) {
    const hostapi::Rect view = View();
    const ViewGeometry geometry = Geometry();
    const ScreenSpan across = geometry.x.Showing(touched.left, touched.right);
    const ScreenSpan down = geometry.y.Showing(touched.top, touched.bottom);
    const bool isWholeTile =
        across.count == geometry.x.Scaled() && down.count == geometry.y.Scaled();
    // An uncovered part of the view shows nothing until its paint.
    if (isWholeTile || NeedsPaint(view) ||
        !touchedCopy.MakePart(
            *pic, {geometry.x.Scaled(), geometry.y.Scaled()},
            {down.from, across.from, down.from + down.count, across.from + across.count})) {
        RedrawContents();
        return;
    }
    // Outside the outer repeats there is no tile to continue on.
    const ClippedTo clip(Port(), Offset(ToRect(geometry.Tiles()), view.left, view.top));
    for (const int y : geometry.y.PlacesOf(down)) {
        for (const int x : geometry.x.PlacesOf(across)) {
            DisplayPixelsIfDrawable(&touchedCopy.Map(), &touchedCopy.Map().bounds, view.top + y,
                                    view.left + x, &Port().Target());
        }
    }
}

// The corner between the scroll bars stays open: the grow box is there.
void TextureDialog::DrawFrame(const hostapi::Rect& rect) {
    const int openWidth = Width(GetBounds(Items::verticalScroll));
    const int openHeight = Height(GetBounds(Items::horizontalScroll));
    const int inner = Scale().Pixels(1);
    const int outer = Scale().Pixels(viewFrameWidth) - inner;
    const auto draw = [&](const hostapi::Rect& around, int line, Color24 leftAndTop,
                          Color24 rightAndBottom) {
        const ScreenRect edges = ToScreenRect(around);
        const auto paint = [&](int left, int top, int right, int bottom) {
            Port().PaintRect(ToRect({left, top, right, bottom}));
        };
        Port().SetForeground(leftAndTop);
        paint(edges.left, edges.top, edges.left + line, edges.bottom);
        paint(edges.left, edges.top, edges.right, edges.top + line);
        Port().SetForeground(rightAndBottom);
        paint(edges.right - line, edges.top, edges.right, edges.bottom - openHeight);
        paint(edges.left, edges.bottom - line, edges.right - openWidth, edges.bottom);
    };
    draw(Inset(rect, outer, outer), inner, black24, black24);
    draw(rect, outer, shadeGrey, white24);
}

void TextureDialog::DrawView(const ViewGeometry& geometry) {
    bool force = true;
    for (const TilePlace& place : geometry.Blocks()) {
        DrawPicture(geometry, place, force);
        force = false;
    }
    Port().SetBackground(viewGround);
    for (const ScreenRect& strip : geometry.Strips()) {
        FillRect(ToRect(strip));
    }
}

/// `force` says that the texture may have changed since the last draw. Without memory for a scaled
/// copy nothing is drawn.
void TextureDialog::DrawPicture(const ViewGeometry& geometry, const TilePlace& place, bool force) {
    if (force) {
        scaledCopy.Discard();
    }
    const ViewAxis& x = geometry.x;
    const ViewAxis& y = geometry.y;
    const bool asItIs =
        x.Block() * y.Block() == 1 && x.Scaled() == pic->grX && y.Scaled() == pic->grY;
    if (asItIs) {
        scaledCopy.Free();
    } else if (!scaledCopy.Make(*pic, {x.Scaled(), y.Scaled(), x.Block(), y.Block()})) {
        return;
    }
    const hostapi::PSPixelMap& map = asItIs ? *pic->pixelMap : scaledCopy.Map();
    const hostapi::VRect rect{0, 0, y.BlockSize(), x.BlockSize()};
    DisplayPixelsIfDrawable(&map, &rect, drawOriginV + place.y, drawOriginH + place.x,
                            &Port().Target());
}

void TextureDialog::DrawSizeMarks(const ViewGeometry& geometry) {
    const int line = Scale().Pixels(1);
    Color24 current = black24;
    Port().SetForeground(current);
    for (const MarkLine& mark : geometry.SizeMarks(Scale())) {
        const Color24 color = mark.white ? white24 : black24;
        if (color != current) {
            Port().SetForeground(current = color);
        }
        const bool isLevel = mark.fromY == mark.toY;
        const hostapi::Rect drawn = ToRect({mark.fromX, mark.fromY, mark.toX + (isLevel ? 1 : line),
                                            mark.toY + (isLevel ? line : 1)});
        Port().PaintRect(Offset(drawn, drawOriginH, drawOriginV));
    }
}

void TextureDialog::MoveTo(short x, short y) {
    SmallPSDialog::MoveTo(static_cast<short>(x + drawOriginH), static_cast<short>(y + drawOriginV));
}

void TextureDialog::LineTo(short x, short y) {
    SmallPSDialog::LineTo(static_cast<short>(x + drawOriginH), static_cast<short>(y + drawOriginV));
}

void TextureDialog::FillRect(const hostapi::Rect& rect) {
    Port().FillRect(Offset(rect, drawOriginH, drawOriginV));
}

void TextureDialog::DrawZoomReadout() {
    const hostapi::Rect bounds = GetBounds(Items::zoomReadout);
    Port().DrawText(ZoomText(zoom).c_str(), Inset(bounds, Scale().Pixels(zoomButtonWidth), 0),
                    textRight | textMiddle);
    Port().SetPenWidth(static_cast<short>(Scale().Pixels(1)));
    Port().FrameRect(bounds);
    Port().SetPenWidth(1);
}

void TextureDialog::DrawProgress(short percent) {
    if (!IsOpen()) {
        return;
    }
    const hostapi::Rect bounds = GetBounds(Items::progress);
    const int line = Scale().Pixels(1);
    const hostapi::Rect inside = Inset(bounds, line, line);
    const auto end = static_cast<short>(ProgressEnd(inside.left, inside.right, percent));
    // Operations report far more often than the bar grows, and drawing it takes longer than many of
    // their steps.
    if (shownProgress == end) {
        return;
    }
    shownProgress = end;
    DrawingPort& canvas = Port();
    const SavedColors colors(canvas);
    canvas.SetForeground(black24);
    canvas.SetPenWidth(static_cast<short>(line));
    canvas.FrameRect(bounds);
    canvas.SetPenWidth(1);
    hostapi::Rect full = inside;
    hostapi::Rect rest = inside;
    full.right = rest.left = end;
    canvas.SetSystemColor(systemActiveCaption);
    canvas.PaintRect(full);
    canvas.SetSystemColor(::systemWindow);
    canvas.PaintRect(rest);
    canvas.SetForeground(shadeGrey);
    const ScreenRect edges = ToScreenRect(inside);
    canvas.PaintRect(ToRect({edges.left, edges.top, edges.left + line, edges.bottom}));
    canvas.PaintRect(ToRect({edges.left, edges.top, edges.right, edges.top + line}));
}

void TextureDialog::SwitchView() {
    const bool toPreview = GetShort(Items::tab) == previewTab;
    if (toPreview == (viewMode == viewTilePreview)) {
        return;
    }
    viewMode = toPreview ? viewTilePreview : viewDrawing;
    MoveForView(toPreview);
    platformServices.showArrowCursor();
    UpdateScrollBars();
    UpdateScrollPositions();
    InvalidateDrawing();
}

void TextureDialog::MoveForView(bool preview) {
    const short focused = GetFocusItem();
    if (focused >= Items::firstHidden && focused <= Items::lastHidden) {
        SetFocus(Items::tab);
    }
    const int away = preview ? outOfSight : -outOfSight;
    for (short item = Items::firstHidden; item <= Items::lastHidden; ++item) {
        MoveItem(item, away, away);
        // Out of the tab order, too.
        Show(item, !preview);
        BusyTick();
    }
    const int panel = Width(GetBounds(Items::toolPanel));
    const int aside = preview ? -panel : panel;
    for (const short item : {Items::drawingArea, Items::horizontalScroll}) {
        hostapi::Rect bounds = GetBounds(item);
        bounds.left = static_cast<short>(bounds.left + aside);
        SetBounds(item, bounds);
    }
    for (const short item : {Items::progress, Items::zoomIn, Items::zoomOut, Items::zoomReadout}) {
        MoveItem(item, aside, 0);
    }
    Show(Items::sizeMarks, !preview);
    Show(Items::sizeMarksSymbol, !preview);
}
