// tPadLock: a button that is open or closed.
#include "framework/controls/ControlSupport.Win.h"

namespace {

struct PadLock {
    int state = 0;
    Picture pictures[2];
};

void Load(HWND control, PadLock& lock) {
    const int id = PictureId(control);
    lock.pictures[0] = LoadControlPicture(control, id);
    lock.pictures[1] = LoadControlPicture(control, id + 1);
}

void Paint(HWND control, const PadLock& lock) {
    const BufferedPaint paint(control);
    const Picture& picture = lock.pictures[lock.state];
    if (picture.bitmap != nullptr) {
        DrawTransparent(
            paint.Context(), picture,
            {(paint.Width() - picture.size.cx) / 2, (paint.Height() - picture.size.cy) / 2},
            IsControlEnabled(control));
    }
    RECT edge = paint.Client();
    DrawEdge(paint.Context(), &edge, lock.state != 0 ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
}

void SetState(HWND control, PadLock& lock, int state) {
    if (state != lock.state) {
        lock.state = state;
        ShowValue(control);
    }
}

LRESULT Take(HWND control, PadLock& lock, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Load(control, lock);
            return 0;
        case WM_PAINT:
            Paint(control, lock);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            SetState(control, lock, 1 - lock.state);
            TellDialog(control, WM_NOTIFY, control);
            return 0;
        case controlGetValue:
            return lock.state;
        case controlGetMinimum:
            return 0;
        case controlGetCount:
            return 1;
        case controlSetValue:
            SetState(control, lock, lParam != 0 ? 1 : 0);
            return 0;
        default:
            return TakeAsPainted(control, message, wParam, lParam);
    }
}

}  // namespace

LRESULT CALLBACK PadLockProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlProcedure<PadLock, Take>(control, message, wParam, lParam);
}
