#include "framework/controls/ControlSupport.Win.h"

#include <algorithm>
#include <utility>

#include "framework/dialog/DialogState.h"
#include "framework/drawing/InterfaceLib.Win.h"

namespace {

/// The control's client area; nothing smaller than a pixel, which no bitmap could have.
RECT DrawableClient(HWND control) {
    RECT client{};
    GetClientRect(control, &client);
    client.right = client.right > 0 ? client.right : 1;
    client.bottom = client.bottom > 0 ? client.bottom : 1;
    return client;
}

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

/// Null while a paint has it.
std::unique_ptr<PaintBuffer> keptBuffer;

/// Room for most controls, the drawing tools among them.
constexpr SIZE leastBuffer{256, 128};

std::unique_ptr<PaintBuffer> TakeBuffer(HDC like, SIZE needed) {
    std::unique_ptr<PaintBuffer> buffer = std::move(keptBuffer);
    if (buffer == nullptr || !buffer->HasRoomFor(needed)) {
        buffer.reset();
        buffer = TryMake<PaintBuffer>(like, SIZE{(std::max)(needed.cx, leastBuffer.cx),
                                                 (std::max)(needed.cy, leastBuffer.cy)});
    }
    return buffer;
}

/// Beside this BeginPaint sees to the caret, the frame and the background, which controls do not
/// have: most of its time.
HWND Validated(HWND control) {
    ValidateRect(control, nullptr);
    return control;
}

}  // namespace

PaintBuffer::PaintBuffer(HDC like, SIZE newSize)
    : size(newSize),
      bitmap(CreateCompatibleBitmap(like, newSize.cx, newSize.cy)),
      memory(like, As<HBITMAP>(bitmap)) {}

bool PaintBuffer::HasRoomFor(SIZE needed) const {
    return bitmap != nullptr && memory.Get() != nullptr && needed.cx <= size.cx &&
           needed.cy <= size.cy;
}

void FreePaintBuffer() {
    keptBuffer.reset();
}

BufferedPaint::BufferedPaint(HWND newControl)
    : screen(Validated(newControl)),
      client(DrawableClient(newControl)),
      buffer(TakeBuffer(screen.Get(), {client.right, client.bottom})),
      contextBefore(SaveDC(Context())) {
    FillRect(Context(), &client, GetSysColorBrush(COLOR_BTNFACE));
}

BufferedPaint::~BufferedPaint() {
    BitBlt(screen.Get(), 0, 0, client.right, client.bottom, Context(), 0, 0, SRCCOPY);
    RestoreDC(Context(), contextBefore);
    keptBuffer = std::move(buffer);
}

void Invalidate(HWND control) {
    if (IsWindowVisible(control)) {
        InvalidateRect(control, nullptr, FALSE);
    }
}

void Redraw(HWND control) {
    if (IsWindowVisible(control)) {
        RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
}

void ShowValue(HWND control) {
    Redraw(control);
    NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, control, OBJID_CLIENT, CHILDID_SELF);
}

LRESULT TakeAsPainted(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCPAINT:
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_ENABLE:
        case WM_SIZE:
            Invalidate(control);
            return 0;
        default:
            return DefWindowProcA(control, message, wParam, lParam);
    }
}

LRESULT TakeAsFocusable(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            Invalidate(control);
            return 0;
        default:
            return TakeAsPainted(control, message, wParam, lParam);
    }
}

void TellDialog(HWND control, UINT message, HWND source) {
    SendMessageA(GetParent(control), message, static_cast<WPARAM>(GetDlgCtrlID(control)),
                 reinterpret_cast<LPARAM>(source));
}

int PictureId(HWND control) {
    return dialogState.openingResource + GetDlgCtrlID(control);
}

Picture LoadControlPicture(HWND control, int id) {
    return LoadPicture(id, ScaleOf(control));
}

void DrawTransparent(HDC context, HBITMAP picture, const RECT& source, const RECT& place,
                     bool isEnabled) {
    const SIZE size = SizeOf(place);
    const bool isScaled = size.cx != SizeOf(source).cx || size.cy != SizeOf(source).cy;
    if (isEnabled && !isScaled) {
        const MemoryContext memory(context, picture);
        BitBlt(context, place.left, place.top, size.cx, size.cy, memory.Get(), source.left,
               source.top, SRCAND);
        return;
    }
    const GdiObject part = ScaledPart(context, picture, source, size);
    if (isEnabled) {
        const MemoryContext memory(context, As<HBITMAP>(part));
        BitBlt(context, place.left, place.top, size.cx, size.cy, memory.Get(), 0, 0, SRCAND);
        return;
    }
    DrawStateA(context, nullptr, nullptr, reinterpret_cast<LPARAM>(part.get()), 0, place.left,
               place.top, size.cx, size.cy, DST_BITMAP | DSS_DISABLED);
}

void DrawTransparent(HDC context, const Picture& picture, POINT corner, bool isEnabled) {
    const SIZE drawn = BitmapSize(As<HBITMAP>(picture.bitmap));
    DrawTransparent(context, As<HBITMAP>(picture.bitmap), {0, 0, drawn.cx, drawn.cy},
                    {corner.x, corner.y, corner.x + picture.size.cx, corner.y + picture.size.cy},
                    isEnabled);
}
