// Drives the program's dialogs as a user does, with the system's own mouse and keyboard.
//
// The dialogs run on the test's thread, the user on another. Both are on a desktop of their own,
// kept in memory. A driver speaks in the program's terms: dialogs by their resource id, controls by
// their item number, places in pixels of an item. It waits on conditions, never for a time, and
// throws GuiError when patience ends.
#pragma once

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/picture/Picture.h"

class GuiError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The system's number of the arrow.
constexpr int arrowCursor = 32512;

/// Where an item is pointed at, from its top left corner.
struct ItemPlace {
    int x;
    int y;
};

/// An open dialog.
class DrivenDialog {
  public:
    explicit DrivenDialog(HWND newWindow)
        : window(newWindow), owner(GetWindow(newWindow, GW_OWNER)) {}

    HWND Window() const { return window; }
    HWND Control(int item) const;
    /// In the dialog's client area.
    RECT Bounds(int item) const;
    std::string Title() const;
    std::string Text(int item) const;
    bool IsEnabled(int item) const;
    /// A check box, radio button, slider, popup, palette or tab, as the program numbers values.
    int Value(int item) const;
    int ScrollPosition(int item) const;
    /// The text of a menu entry, and its state.
    std::string MenuText(int command) const;
    bool IsMenuEnabled(int command) const;
    bool IsMenuChecked(int command) const;

    // Done when they return, by messages.

    /// Presses a button that opens no dialog.
    void Press(int item) const;
    /// Presses a button that opens one.
    void PressToOpen(int item) const;
    void Choose(int command) const;
    void ChooseToOpen(int command) const;
    /// Puts a text into a field as a whole.
    void SetText(int item, const std::string& text) const;

    // With the mouse and the keyboard.

    POINT OnScreen(int item, ItemPlace place) const;
    void Point(int item, ItemPlace place) const;
    void Click(int item, ItemPlace place) const;
    void ClickMiddle(int item) const;
    void DoubleClickMiddle(int item) const;

    /// Moves with the button down from place to place and lets go. `seen` returns when the program
    /// has shown what the last place made of it.
    void Drag(int item, const std::vector<ItemPlace>& places,
              const std::function<void()>& seen) const;

    /// Until the program has dealt with all that was sent before.
    void Settle() const;
    /// Until no part of it is still to be painted.
    void WaitUntilPainted() const;
    /// Until it has closed, and the dialog below it has gone on from there.
    void WaitUntilClosed() const;
    bool IsOpen() const { return IsWindow(window) != FALSE; }

    /// The client area as it is on the screen, once all of it is painted.
    host::Picture Grab() const;

  private:
    UINT MenuState(int command) const;

    HWND window;
    HWND owner;
};

/// The user of the dialogs that another thread opens.
class GuiDriver {
  public:
    explicit GuiDriver(DWORD newThread) : thread(newThread) {}

    /// Waits until the dialog is open and takes input.
    DrivenDialog WaitFor(int dialogId) const;
    /// An alert: a dialog with the program's name as its title, over `under` if that is given.
    DrivenDialog WaitForAlert(const DrivenDialog& under) const;
    /// One of the system's dialogs.
    DrivenDialog WaitForTitle(const std::string& title) const;

    /// The resource id of the cursor that the system shows: the program's, or one of the system's
    /// own, of which the arrow is `arrowCursor`; 0 for none.
    static int CursorId();
    /// Until the program has taken all keys and all that the mouse did, and has painted. It does
    /// not come while a tool follows the mouse.
    void WaitUntilIdle() const;
    void PressMouse() const;
    void ReleaseMouse() const;
    /// Presses keys together.
    void Chord(const std::vector<WORD>& keys) const;
    void HoldKey(WORD key) const;
    void ReleaseKey(WORD key) const;
    void Type(const std::string& text) const;

  private:
    DWORD thread;
};

/// Waits until `condition` holds; throws GuiError with `what` when patience ends.
void WaitUntil(const std::string& what, const std::function<bool()>& condition);

/// Runs `action` on this thread and its user on another; returns when both are done. What the user
/// throws fails the test, and closes the dialogs so that `action` returns. Afterwards the mouse's
/// button is up.
void RunWithUser(const std::function<void()>& action,
                 const std::function<void(const GuiDriver& gui)>& user);

/// The caption of a dialog resource.
std::string CaptionOf(int dialogId);
