// Parts that the custom controls share.
#pragma once

#include <windows.h>

#include <memory>

#include "base/Callback.Win.h"
#include "base/TryMake.h"
#include "base/WindowContext.Win.h"
#include "framework/controls/ControlClasses.Win.h"
#include "framework/drawing/GdiObject.Win.h"
#include "framework/drawing/Pictures.Win.h"
#include "framework/drawing/ScreenScale.Win.h"

/// The record of a control, hung on its window by its class; null before creation, after the
/// end, and for a control that dropped it.
template <typename Record>
Record* RecordOf(HWND control) {
    return reinterpret_cast<Record*>(GetWindowLongPtrA(control, 0));
}

template <typename Record>
void SetRecord(HWND control, std::unique_ptr<Record> record) {
    delete RecordOf<Record>(control);
    SetWindowLongPtrA(control, 0, reinterpret_cast<LONG_PTR>(record.release()));
}

/// Wraps a class' own window procedure and passes it the record: makes the record at creation,
/// frees it at the end, and lets no exception reach the system. Without a record the system's
/// procedure handles all messages.
template <typename Record, LRESULT (*take)(HWND, Record&, UINT, WPARAM, LPARAM)>
LRESULT CALLBACK ControlProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded(LRESULT{0}, [&]() -> LRESULT {
        if (message == WM_NCCREATE) {
            SetRecord(control, TryMake<Record>());
        }
        if (message == WM_NCDESTROY) {
            SetRecord(control, std::unique_ptr<Record>());
        }
        Record* const record = RecordOf<Record>(control);
        return record != nullptr ? take(control, *record, message, wParam, lParam)
                                 : DefWindowProcA(control, message, wParam, lParam);
    });
}

/// A bitmap in memory, and a device context with it.
class PaintBuffer {
  public:
    PaintBuffer(HDC like, SIZE newSize);
    HDC Context() const { return memory.Get(); }
    /// False also if the system made no bitmap.
    bool HasRoomFor(SIZE needed) const;

  private:
    SIZE size;
    GdiObject bitmap;
    MemoryContext memory;
};
/// Paints of controls take turns with one buffer, which is made by the first: to make one for each
/// takes longer than most paints. To be called after the last dialog.
void FreePaintBuffer();

/// The control's client area, drawn in memory and shown at once.
class BufferedPaint {
  public:
    explicit BufferedPaint(HWND newControl);
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;
    ~BufferedPaint();

    /// Null without memory: what is drawn there is lost.
    HDC Context() const { return buffer != nullptr ? buffer->Context() : nullptr; }
    const RECT& Client() const { return client; }
    int Width() const { return client.right; }
    int Height() const { return client.bottom; }

  private:
    WindowContext screen;
    RECT client;
    std::unique_ptr<PaintBuffer> buffer;
    int contextBefore;
};

inline bool IsControlEnabled(HWND control) {
    return IsWindowEnabled(control) != FALSE;
}

/// The control is painted anew. One that is hidden is, anyway, when it is shown: the system's
/// server is not called for it.
void Invalidate(HWND control);

/// The control paints itself before this returns, if it is shown.
void Redraw(HWND control);

/// The same after a change of the value, which is also reported to screen readers.
void ShowValue(HWND control);

/// Take the messages that a control does nothing special with: for one that paints all of itself,
/// and for one that takes the arrow keys and shows the focus beside that.
LRESULT TakeAsPainted(HWND control, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT TakeAsFocusable(HWND control, UINT message, WPARAM wParam, LPARAM lParam);

/// Tells the dialog: `message` is WM_NOTIFY for a change or a click, messageClicked for a click
/// that changed nothing. `source` is the window, or null.
void TellDialog(HWND control, UINT message, HWND source);

/// The id of the control's picture or menu: the dialog's resource id plus the control's.
int PictureId(HWND control);
/// A bitmap resource for the scale of the control's dialog.
Picture LoadControlPicture(HWND control, int id);

/// The picture's part at `source`, scaled to `place`. White is transparent; a disabled one is drawn
/// in the system's way.
void DrawTransparent(HDC context, HBITMAP picture, const RECT& source, const RECT& place,
                     bool isEnabled);
/// The whole picture in its size with its top left corner at `corner`.
void DrawTransparent(HDC context, const Picture& picture, POINT corner, bool isEnabled);

// Each class in its own file.
LRESULT CALLBACK ToolPaletteProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK PopupMenuProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK LinearSliderProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK PadLockProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK UserItemProcedure(HWND, UINT, WPARAM, LPARAM);
/// Takes the system's button over; `system` is its class, whose procedure does the rest.
void TakeOverButton(WNDCLASSA& system);
