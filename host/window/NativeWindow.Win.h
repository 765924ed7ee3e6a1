// A window of the system whose messages go to an object, and the few helpers that all windows use.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "host/window/Viewport.h"

namespace host {

constexpr const wchar_t* programTitle = L"Zandermolite Host";

struct WindowParameters {
    /// Registered with the first window that uses it.
    const wchar_t* className;
    UINT classStyle = 0;
    /// 0: an arrow.
    LPCWSTR cursor = nullptr;
    const wchar_t* menu = nullptr;
    const wchar_t* title = L"";
    DWORD style = 0;
    DWORD extendedStyle = 0;
    RECT place{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT};
    HWND parent = nullptr;
};

/// The window is destroyed with the object, if not before.
class NativeWindow {
  public:
    NativeWindow() = default;
    virtual ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    /// Null before Create() and after the window is gone.
    HWND Handle() const { return handle; }

  protected:
    /// Throws std::runtime_error.
    void Create(const WindowParameters& parameters);
    /// Exceptions from it go to OnError() and end there: in 32-bit processes no exception may pass
    /// through the system.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    /// Shows the text to the user.
    virtual void OnError(const std::string& text);
    /// The system's own handling.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam);

    HWND handle = nullptr;
};

std::wstring Wide(std::string_view utf8);
/// For names in filters' resources.
std::wstring WideFromAnsi(std::string_view text);
std::string Utf8(std::wstring_view text);

/// Pixels of the screen for a length that is given in pixels at 96 a logical inch.
int ScaledToScreen(int pixels);

Size ClientSize(HWND window);

/// Writes to the standard output. False if there is none, as usual for a program with windows.
bool WriteToOutput(const std::string& text);

/// A message box with one clear text.
void ShowError(HWND owner, const std::string& text);

/// The text of the exception that is being handled, for the user.
std::string CurrentErrorText();

}  // namespace host
