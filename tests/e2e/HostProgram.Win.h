// The host's program as a test drives it: through its windows, with mouse and keys.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fixtures/WindowAccess.Win.h"
#include "host/window/StatusBar.Win.h"
#include "host/window/Viewport.h"

/// One process of the program, from its start to its end. All that waits throws GuiError when
/// it waits too long.
class HostProgram {
  public:
    using Part = host::StatusBar::Part;

    /// Starts the program on the test's own desktop; `arguments` without the program's name.
    explicit HostProgram(const std::vector<std::wstring>& arguments);
    /// Ends it if it hasn't ended.
    ~HostProgram();
    HostProgram(const HostProgram&) = delete;
    HostProgram& operator=(const HostProgram&) = delete;

    /// Waits for the main window to be in front and idle.
    HWND Window();
    std::wstring Title();
    std::wstring StatusText(Part part);
    void WaitForTitle(const std::wstring& title);
    void WaitForStatus(Part part, const std::wstring& text);
    void WaitForExit();

    /// The visible dialog with the title, once it is there.
    HWND WaitForDialog(const std::wstring& title);
    /// Waits until no dialog is open.
    void WaitForDialogsEnd();
    /// A message box's text, or that of a control.
    static std::wstring BoxText(HWND box);
    static std::wstring ControlText(HWND dialog, int control);
    /// Presses the button of a dialog.
    static void Push(HWND dialog, int button);
    /// Types the path into the system's dialog for files and presses its button.
    static void EnterFile(HWND dialog, const std::filesystem::path& file);

    /// Opens a menu by its key and goes down to an item; the first one is 0. Separators don't
    /// count. `submenu` as well counts from 0; none if negative.
    void ChooseInMenu(WORD menuKey, int item, int submenuItem = -1);
    bool IsInMenu() const;

    /// Where a pixel of the picture is on the screen, at 100 % and not scrolled.
    POINT OnScreen(host::Place pixel, host::Size picture);
    /// The view's rectangle on the screen.
    RECT ViewRect();

  private:
    HWND FindMainWindow() const;
    HWND Child(const wchar_t* className);

    PROCESS_INFORMATION process{};
};
