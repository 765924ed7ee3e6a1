// A device context of a window or of the screen, for as long as its owner lives.
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
