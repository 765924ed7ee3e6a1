// The host's windows beside the one that dialogs open over.
#pragma once

#include <windows.h>

/// The top-level windows of this thread that it has kept from taking input: the system does so
/// only with a dialog's owner, and a palette of the host would go on beside the dialog.
class DisabledWindows {
  public:
    DisabledWindows() = default;
    DisabledWindows(const DisabledWindows&) = delete;
    DisabledWindows& operator=(const DisabledWindows&) = delete;
    ~DisabledWindows() { Restore(); }

    /// Disables all that are visible and enabled, but the one that `owner` is or lies in; null for
    /// none. Beyond 64 they stay as they are.
    void Disable(HWND owner);
    /// Enables those again that are still there.
    void Restore();

  private:
    static BOOL CALLBACK DisableOne(HWND window, LPARAM object);

    static constexpr int most = 64;

    HWND spared = nullptr;
    HWND windows[most];
    int count = 0;
};
