// Dialog resources, opened as windows at any resolution.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// The resolutions at which dialogs must look right, in dots per inch: four on a screen of 96, on
/// which they are laid out as on the others; else the screen's own.
std::vector<int> Resolutions();

/// One control.
struct Control {
    HWND window = nullptr;
    int id = 0;
    std::wstring className;
    DWORD style = 0;
    std::wstring text;
    /// In the dialog's client area.
    RECT bounds{};

    /// Low bits of the style: what kind of button or static it is.
    DWORD Type() const;
    bool IsVisible() const { return (style & WS_VISIBLE) != 0; }
    bool IsPopup() const { return className == L"tPopupMenu" || className == L"tRealtimeMenu"; }
};

/// A dialog of this program's resources, not shown. It is laid out as on a screen of `resolution`,
/// whichever the screen has: its font is as many pixels high there.
class OpenedDialog {
  public:
    explicit OpenedDialog(int id, int resolution = 96);
    OpenedDialog(const OpenedDialog&) = delete;
    OpenedDialog& operator=(const OpenedDialog&) = delete;
    ~OpenedDialog();

    /// False if there is no such resource or a control's class does not exist.
    bool IsOpen() const { return window != nullptr; }
    HWND Window() const { return window; }
    std::wstring Title() const;
    /// As the resource has it. The window itself is cut to the screen.
    RECT ClientArea() const;
    /// In the order of the resource, which is that of the numbers or, in the editor, of Tab.
    std::vector<Control> Controls() const;
    /// The control with this id; one without a window if there is none.
    Control Item(int id) const;
    /// Pixels for dialog units.
    SIZE Pixels(int horizontalUnits, int verticalUnits) const;
    /// How large a text is in the dialog's font: in one line, or wrapped to `width`.
    SIZE Measure(const std::wstring& text, int width = 0) const;
    /// Pixels that are one at 96 dots an inch.
    int Scaled(int pixels) const { return (pixels * resolution + 48) / 96; }

  private:
    int resolution;
    HWND window;
    SIZE units{};
};

/// Opened once and kept, for tests that only look at it.
const OpenedDialog& Opened(int id, int resolution = 96);

/// The ids of all dialog resources, ascending.
std::vector<int> DialogResources();
