// Runs filters for a window: shows their progress, and lets Escape abort them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "host/plugin/FilterSession.Win.h"
#include "host/record/HostSettings.h"
#include "host/window/StatusBar.Win.h"

namespace host {

class FilterRunner {
  public:
    /// The status bar lives longer.
    FilterRunner(const HostSettings& settings, StatusBar& status);

    /// The parent of the filters' dialogs.
    void SetWindow(HWND newWindow) { window = newWindow; }
    /// As FilterSession::Run(). The filter finds its parameters again until another filter runs.
    RunReport Run(const ListedFilter& filter, Picture& picture, const Selection& selection,
                  Execution execution);
    RunReport ShowAbout(const ListedFilter& filter);
    /// True during both: then no command may come in between.
    bool IsRunning() const { return isRunning; }

  private:
    class Guard;

    FilterSession& SessionOf(const ListedFilter& filter);
    HostSettings Settings();
    bool IsAborted();
    bool AskForColor(std::uint8_t (&color)[3]);

    HostSettings settings;
    StatusBar& status;
    HWND window = nullptr;
    std::unique_ptr<FilterSession> session;
    bool isRunning = false;
    bool isAborted = false;
    /// When the running filter was last looked after, by GetTickCount().
    std::optional<DWORD> lastLook;
};

}  // namespace host
