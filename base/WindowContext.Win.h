// Device contexts of windows and of the screen, for as long as their owners live.
#pragma once

#include <windows.h>

class WindowContext {
  public:
    /// Get() is null without a window (for which the system would give the whole screen's context),
    /// and if the system has none to give.
    explicit WindowContext(HWND newWindow)
        : WindowContext(newWindow, newWindow != nullptr ? GetDC(newWindow) : nullptr) {}
    static WindowContext OfScreen() { return {nullptr, GetDC(nullptr)}; }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    ~WindowContext() {
        if (context != nullptr) {
            ReleaseDC(window, context);
        }
    }

    HDC Get() const { return context; }

  private:
    WindowContext(HWND newWindow, HDC newContext) : window(newWindow), context(newContext) {}

    HWND window;
    HDC context;
};

/// The answer to WM_PAINT: the context of what a window has to paint. The system considers that
/// painted when the owner's life ends, whichever way the drawing ends.
class PaintContext {
  public:
    explicit PaintContext(HWND newWindow)
        : window(newWindow), paint{}, context(BeginPaint(newWindow, &paint)) {}
    PaintContext(const PaintContext&) = delete;
    PaintContext& operator=(const PaintContext&) = delete;
    ~PaintContext() { EndPaint(window, &paint); }

    /// Null if the system has none to give.
    HDC Get() const { return context; }
    /// The area to be painted, in client coordinates.
    const RECT& Area() const { return paint.rcPaint; }

  private:
    HWND window;
    PAINTSTRUCT paint;
    HDC context;
};
