// Drives the system's file dialogs from a helper thread, as a user would.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

/// One open file dialog.
class OpenFileDialog {
  public:
    explicit OpenFileDialog(HWND newWindow) : window(newWindow) {}

    std::string Title() const;
    /// What stands in the field for the name.
    std::string Name() const;
    void TypeName(const std::string& name) const;
    /// The texts of the type list.
    std::vector<std::string> Types() const;
    /// `index` from 0.
    void PickType(int index) const;
    void Accept() const;
    void Cancel() const;
    /// Presses a button of the question that the dialog asks; IDYES or IDNO. False if it asks none.
    bool Answer(int button) const;
    /// The dialog came back from an attempt to accept: it is enabled, and there is no question.
    bool IsWaiting() const;
    RECT Frame() const;
    HWND Owner() const;

  private:
    HWND window;
};

/// Runs `action` on this thread, which must open one file dialog, and `steps` on another with it.
/// True if the dialog appeared; whatever the steps leave open is cancelled.
bool DriveFileDialog(const std::function<void()>& action,
                     const std::function<void(const OpenFileDialog&)>& steps);
