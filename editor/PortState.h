// Keeps the state of a port that drawing changes for a while, and restores it.
#pragma once

#include "framework/drawing/InterfaceLib.h"

/// Restores the port's colours at its end.
class SavedColors {
  public:
    explicit SavedColors(DrawingPort& newPort)
        : port(newPort), foreground(newPort.Foreground()), background(newPort.Background()) {}
    SavedColors(const SavedColors&) = delete;
    SavedColors& operator=(const SavedColors&) = delete;
    ~SavedColors() {
        port.SetForeground(foreground);
        port.SetBackground(background);
    }

  private:
    DrawingPort& port;
    Color24 foreground;
    Color24 background;
};

/// Moves the origin of drawing to a view's corner for its lifetime. It is 0, 0 otherwise.
class MovedOrigin {
  public:
    MovedOrigin(short& newH, short& newV, const hostapi::Rect& view) : h(newH), v(newV) {
        h = view.left;
        v = view.top;
    }
    MovedOrigin(const MovedOrigin&) = delete;
    MovedOrigin& operator=(const MovedOrigin&) = delete;
    ~MovedOrigin() { h = v = 0; }

  private:
    short& h;
    short& v;
};

/// Clips all drawing to one rectangle for its lifetime. The clip before is one, too.
class ClippedTo {
  public:
    ClippedTo(DrawingPort& newPort, const hostapi::Rect& rect)
        : port(newPort), before(newPort.ClipBox()) {
        port.SetClipRect(rect);
    }
    ClippedTo(const ClippedTo&) = delete;
    ClippedTo& operator=(const ClippedTo&) = delete;
    ~ClippedTo() { port.SetClipRect(before); }

  private:
    DrawingPort& port;
    hostapi::Rect before;
};
