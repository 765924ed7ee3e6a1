#include "framework/controls/ControlSupport.Win.h"

#include "base/Module.Win.h"
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

/// The part as a bitmap of its own.
GdiObject CutOut(HDC context, HBITMAP picture, const RECT& part) {
    const int width = part.right - part.left;
    const int height = part.bottom - part.top;
    GdiObject cut(CreateCompatibleBitmap(context, width, height));
    const MemoryContext from(context, picture);
    const MemoryContext to(context, As<HBITMAP>(cut));
    BitBlt(to.Get(), 0, 0, width, height, from.Get(), part.left, part.top, SRCCOPY);
    return cut;
}

}  // namespace

BufferedPaint::BufferedPaint(HWND newControl)
    : control(newControl),
      paint{},
      screen(BeginPaint(newControl, &paint)),
      client(DrawableClient(newControl)),
      bitmap(CreateCompatibleBitmap(screen, client.right, client.bottom)),
      memory(screen, As<HBITMAP>(bitmap)) {
    FillRect(memory.Get(), &client, GetSysColorBrush(COLOR_BTNFACE));
}

BufferedPaint::~BufferedPaint() {
    BitBlt(screen, 0, 0, client.right, client.bottom, memory.Get(), 0, 0, SRCCOPY);
    EndPaint(control, &paint);
}

void Redraw(HWND control) {
    RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

LRESULT TakeAsPainted(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return TRUE;
        case WM_ENABLE:
        case WM_SIZE:
            InvalidateRect(control, nullptr, FALSE);
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
            InvalidateRect(control, nullptr, FALSE);
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

GdiObject LoadPicture(int id) {
    return GdiObject(LoadImageA(instanceHandle, ResourceName(id), IMAGE_BITMAP, 0, 0, 0));
}

void DrawTransparent(HDC context, HBITMAP picture, const RECT& source, int x, int y,
                     bool isEnabled) {
    const int width = source.right - source.left;
    const int height = source.bottom - source.top;
    if (isEnabled) {
        const MemoryContext memory(context, picture);
        BitBlt(context, x, y, width, height, memory.Get(), source.left, source.top, SRCAND);
        return;
    }
    const GdiObject part = CutOut(context, picture, source);
    DrawStateA(context, nullptr, nullptr, reinterpret_cast<LPARAM>(part.get()), 0, x, y, width,
               height, DST_BITMAP | DSS_DISABLED);
}
