// State that all dialogs of the process share. Everything runs on the host's thread; nothing is
// locked.
#pragma once

#include <cstdint>

class NorvantaDialog;

struct DialogState {
    /// All live dialogs, newest first.
    NorvantaDialog* newest = nullptr;
    /// The one whose window is active.
    NorvantaDialog* active = nullptr;
    /// The one whose window holds the keyboard's focus.
    NorvantaDialog* focused = nullptr;
    /// Drags and open popups, one inside the other. Above 0, cursor, help and idle work rest.
    int dragDepth = 0;
    bool isDoubleClick = false;
    /// When the last click on a custom control was, in the ticks of the platform.
    std::uint32_t lastClick = 0;
    bool hadClick = false;
    /// The dialog resource that is being opened: controls find their pictures by it.
    short openingResource = 0;
    /// HWND: what dialogs without an owner open over: the host's window, or, where it gives none,
    /// the window that was active when the first of them was made.
    void* rootWindow = nullptr;
    /// The box of a fault is open. The dialogs below it rest, and close after it.
    bool isTellingFault = false;
};

extern DialogState dialogState;

/// A drag or an open popup, as long as it lives.
class DragSection {
  public:
    DragSection() { ++dialogState.dragDepth; }
    DragSection(const DragSection&) = delete;
    DragSection& operator=(const DragSection&) = delete;
    ~DragSection() { --dialogState.dragDepth; }
};

/// Records a click at this moment. Returns whether it came at most the system's double-click time
/// after the one before.
bool TakeClick(std::uint32_t doubleClickTime);
