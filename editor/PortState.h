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
