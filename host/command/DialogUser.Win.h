// Presses buttons in the dialogs of a filter, in place of a user.
#pragma once

#include <windows.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "host/command/DialogPress.h"

namespace host {

/// Works on a thread of its own: each press waits until a dialog with its title takes input on the
/// thread that made this object.
class DialogUser {
  public:
    explicit DialogUser(std::vector<DialogPress> newPresses);
    DialogUser(const DialogUser&) = delete;
    DialogUser& operator=(const DialogUser&) = delete;
    ~DialogUser();

    /// The filter has returned: presses that still wait are given up. Returns the first of them.
    std::optional<DialogPress> Finish();

  private:
    void Work();

    const std::vector<DialogPress> presses;
    const DWORD thread;
    const HDESK desktop;
    std::atomic<bool> isFinished = false;
    std::atomic<std::size_t> pressed = 0;
    std::thread worker;
};

}  // namespace host
