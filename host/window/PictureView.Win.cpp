#include "host/window/PictureView.Win.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "base/Rectangles.h"
#include "base/WindowContext.Win.h"
#include "host/window/ScrollBars.Win.h"
#include "host/window/ViewImage.h"

namespace host {

namespace {

constexpr const wchar_t* className = L"ZandermolitePictureView";
constexpr const wchar_t* emptyText = L"Open a picture with Ctrl+O, or drop one here.";

constexpr UINT_PTR antsTimer = 1;
constexpr UINT antsMilliseconds = 200;
constexpr UINT_PTR dragTimer = 2;
constexpr UINT dragMilliseconds = 30;
// A mouse that moves less, in view pixels, was clicked, not dragged.
constexpr int dragThreshold = 4;
constexpr UINT wheelHorizontally = 0x020E;  // WM_MOUSEHWHEEL, of later systems.

Place PlaceOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

Place PointerIn(HWND window) {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window, &point);
    return {point.x, point.y};
}

// How far, and in which direction, a coordinate lies beyond 0 to `length`.
int Beyond(int coordinate, int length) {
    if (coordinate < 0) {
        return coordinate;
    }
    return coordinate >= length ? coordinate - length + 1 : 0;
}

}  // namespace

PictureView::PictureView(PictureViewListener& newListener) : listener(newListener) {}

void PictureView::Create(HWND parent) {
    WindowParameters parameters{};
    parameters.className = className;
    parameters.cursor = IDC_CROSS;
    parameters.style = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    parameters.place = {0, 0, 0, 0};
    parameters.parent = parent;
    NativeWindow::Create(parameters);
}

void PictureView::Show(const Document* shown) {
    CancelDrag();
    document = shown;
    viewport.SetPicture(shown == nullptr ? Size{}
                                         : Size{shown->Image().width, shown->Image().height});
    SetAntsMoving(shown != nullptr);
    UpdateScrollBars();
    Redraw();
    listener.OnZoomed(viewport.Scale());
}

void PictureView::RedrawPart(const hostapi::VRect& part) {
    const hostapi::VRect shown = viewport.ToView(part);
    const RECT area{shown.left, shown.top, shown.right, shown.bottom};
    InvalidateRect(Handle(), &area, FALSE);
}

void PictureView::Redraw() {
    InvalidateRect(Handle(), nullptr, FALSE);
}

void PictureView::SetAntsMoving(bool moving) {
    if (moving) {
        SetTimer(Handle(), antsTimer, antsMilliseconds, nullptr);
    } else {
        KillTimer(Handle(), antsTimer);
    }
}

void PictureView::ZoomTo(int zoom) {
    const Size size = viewport.View();
    ZoomAround(zoom, {size.width / 2, size.height / 2});
}

void PictureView::ZoomToFit() {
    ZoomTo(viewport.FittingZoom(RoomOf(Handle())));
}

LRESULT PictureView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            Paint();
            return 0;
        case WM_SIZE:
            UpdateScrollBars();
            Redraw();
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(lParam) == HTCLIENT && document == nullptr) {
                SetCursor(LoadCursorW(nullptr, IDC_ARROW));
                return TRUE;
            }
            return Default(message, wParam, lParam);
        case WM_LBUTTONDOWN:
            SetFocus(Handle());
            BeginDrag(PlaceOf(lParam), (wParam & MK_CONTROL) != 0);
            return 0;
        case WM_MOUSEMOVE:
            ReportPointer(PlaceOf(lParam));
            MoveDrag(PlaceOf(lParam));
            return 0;
        case WM_LBUTTONUP:
            MoveDrag(PlaceOf(lParam));
            EndDrag();
            return 0;
        case WM_CAPTURECHANGED:
            CancelDrag();
            return 0;
        case WM_MOUSELEAVE:
            listener.OnPointer(std::nullopt);
            return 0;
        case WM_MOUSEWHEEL:
            OnWheel(wParam, lParam, (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0);
            return 0;
        case wheelHorizontally:
            OnWheel(wParam, lParam, true);
            return 0;
        case WM_HSCROLL:
            OnScrollBar(SB_HORZ, LOWORD(wParam));
            return 0;
        case WM_VSCROLL:
            OnScrollBar(SB_VERT, LOWORD(wParam));
            return 0;
        case WM_KEYDOWN:
            return OnKey(wParam) ? 0 : Default(message, wParam, lParam);
        case WM_TIMER:
            OnTimer(wParam);
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void PictureView::Paint() {
    const PaintContext context(Handle());
    const RECT& dirty = context.Area();
    const hostapi::VRect area{dirty.top, dirty.left, dirty.bottom, dirty.right};
    if (!IsEmpty(area)) {
        DrawRows(Compose(area), area.top, area.left, context.Get());
    }
    if (document == nullptr) {
        PaintEmpty(context.Get());
    }
}

DisplayRows PictureView::Compose(const hostapi::VRect& area) const {
    if (document == nullptr) {
        return DrawView(Picture{}, viewport, area);
    }
    DisplayRows rows = DrawView(document->Image(), viewport, area);
    const Place leftTop{area.left, area.top};
    if (drag && drag->isMoved) {
        DrawOutline(rows, leftTop, viewport, Dragged(), antsPhase);
    } else if (document->Selected().isExplicit) {
        DrawOutline(rows, leftTop, viewport, document->Selected(), antsPhase);
    }
    return rows;
}

void PictureView::PaintEmpty(HDC context) {
    RECT client{};
    GetClientRect(Handle(), &client);
    HGDIOBJ previous = SelectObject(context, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, RGB(255, 255, 255));
    DrawTextW(context, emptyText, -1, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    SelectObject(context, previous);
}

void PictureView::BeginDrag(Place place, bool isEllipse) {
    if (document == nullptr) {
        return;
    }
    const Place pixel = viewport.ToPicture(place);
    drag = Drag{place, pixel, pixel, isEllipse ? SelectionShape::ellipse : shape, false};
    SetCapture(Handle());
    SetTimer(Handle(), dragTimer, dragMilliseconds, nullptr);
}

void PictureView::MoveDrag(Place place) {
    if (!drag) {
        return;
    }
    const int distance =
        std::max(std::abs(place.x - drag->startInView.x), std::abs(place.y - drag->startInView.y));
    if (!drag->isMoved && distance < dragThreshold) {
        return;
    }
    drag->isMoved = true;
    drag->end = viewport.ToPicture(place);
    const DraggedSelection dragged = Dragged();
    listener.OnDragging(&dragged);
    Redraw();
}

void PictureView::EndDrag() {
    if (!drag) {
        return;
    }
    const bool isClick = !drag->isMoved;
    const DraggedSelection dragged = Dragged();
    CancelDrag();
    if (isClick) {
        listener.OnClicked();
    } else if (!IsEmpty(dragged.bounds)) {
        listener.OnDragged(dragged);
    }
}

void PictureView::CancelDrag() {
    if (!drag) {
        return;
    }
    drag.reset();
    KillTimer(Handle(), dragTimer);
    if (GetCapture() == Handle()) {
        ReleaseCapture();
    }
    listener.OnDragging(nullptr);
    Redraw();
}

DraggedSelection PictureView::Dragged() const {
    const Picture& picture = document->Image();
    return {DraggedRect(drag->start, drag->end, {picture.width, picture.height}), drag->shape};
}

void PictureView::OnTimer(WPARAM timer) {
    if (timer == dragTimer) {
        ScrollTowardsPointer();
    } else if (document != nullptr && (drag || document->Selected().isExplicit)) {
        ++antsPhase;
        RedrawPart(drag ? document->Image().Bounds() : document->Selected().bounds);
    }
}

// Dragging beyond the view scrolls it, the faster the farther.
void PictureView::ScrollTowardsPointer() {
    const Place pointer = PointerIn(Handle());
    const Size size = viewport.View();
    const int dx = Beyond(pointer.x, size.width);
    const int dy = Beyond(pointer.y, size.height);
    if (dx == 0 && dy == 0) {
        return;
    }
    const Place scroll = viewport.Scroll();
    ScrollTo({scroll.x + 2 * dx, scroll.y + 2 * dy});
    MoveDrag(pointer);
}

void PictureView::ReportPointer(Place place) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof track;
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = Handle();
    TrackMouseEvent(&track);
    const Place pixel = viewport.ToPicture(place);
    const bool isInside =
        document != nullptr && Contains(document->Image().Bounds(), pixel.x, pixel.y);
    listener.OnPointer(isInside ? std::optional(pixel) : std::nullopt);
}

// The picture has moved under the mouse.
void PictureView::ReportPointerAgain() {
    POINT point{};
    GetCursorPos(&point);
    if (WindowFromPoint(point) == Handle()) {
        ReportPointer(PointerIn(Handle()));
    }
}

void PictureView::OnScrollBar(int bar, int request) {
    const int position = RequestedPosition(Handle(), bar, request);
    const Place scroll = viewport.Scroll();
    ScrollTo(bar == SB_HORZ ? Place{position, scroll.y} : Place{scroll.x, position});
}

void PictureView::OnWheel(WPARAM wParam, LPARAM lParam, bool isHorizontal) {
    wheelRemainder += GET_WHEEL_DELTA_WPARAM(wParam);
    const int notches = wheelRemainder / WHEEL_DELTA;
    wheelRemainder %= WHEEL_DELTA;
    if (document == nullptr || notches == 0) {
        return;
    }
    if ((GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0) {
        POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        ScreenToClient(Handle(), &point);
        ZoomAround(viewport.Zoom() + notches, {point.x, point.y});
        return;
    }
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int distance = notches * static_cast<int>(std::min(lines, 20u)) * scrolledLine;
    const Place scroll = viewport.Scroll();
    ScrollTo(isHorizontal ? Place{scroll.x - distance, scroll.y}
                          : Place{scroll.x, scroll.y - distance});
}

bool PictureView::OnKey(WPARAM key) {
    switch (key) {
        case VK_ESCAPE:
            CancelDrag();
            return true;
        case VK_LEFT:
            OnScrollBar(SB_HORZ, SB_LINEUP);
            return true;
        case VK_RIGHT:
            OnScrollBar(SB_HORZ, SB_LINEDOWN);
            return true;
        case VK_UP:
            OnScrollBar(SB_VERT, SB_LINEUP);
            return true;
        case VK_DOWN:
            OnScrollBar(SB_VERT, SB_LINEDOWN);
            return true;
        case VK_PRIOR:
            OnScrollBar(SB_VERT, SB_PAGEUP);
            return true;
        case VK_NEXT:
            OnScrollBar(SB_VERT, SB_PAGEDOWN);
            return true;
        case VK_HOME:
            ScrollTo({0, 0});
            return true;
        case VK_END:
            ScrollTo({viewport.Zoomed().width, viewport.Zoomed().height});
            return true;
        default:
            return false;
    }
}

void PictureView::ScrollTo(Place scroll) {
    if (!viewport.ScrollTo(scroll)) {
        return;
    }
    UpdateScrollBars();
    Redraw();
    ReportPointerAgain();
    UpdateWindow(Handle());
}

void PictureView::ZoomAround(int zoom, Place anchor) {
    if (document == nullptr) {
        return;
    }
    viewport.SetZoom(zoom, anchor);
    UpdateScrollBars();
    Redraw();
    ReportPointerAgain();
    listener.OnZoomed(viewport.Scale());
}

void PictureView::UpdateScrollBars() {
    // Setting a bar changes the window's size.
    if (isUpdatingScrollBars) {
        return;
    }
    isUpdatingScrollBars = true;
    const Size zoomed = viewport.Zoomed();
    const Size page = PageFor(zoomed, RoomOf(Handle()));
    viewport.SetView(page);
    UpdateScrollBar(Handle(), SB_HORZ, zoomed.width, page.width, viewport.Scroll().x);
    UpdateScrollBar(Handle(), SB_VERT, zoomed.height, page.height, viewport.Scroll().y);
    isUpdatingScrollBars = false;
}

}  // namespace host
