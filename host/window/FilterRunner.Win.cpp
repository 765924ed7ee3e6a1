#include "host/window/FilterRunner.Win.h"

#include <commdlg.h>

namespace host {

namespace {

constexpr DWORD millisecondsBetweenLooks = 30;

void DropMessages(UINT first, UINT last) {
    MSG message;
    while (PeekMessageW(&message, nullptr, first, last, PM_REMOVE) != FALSE) {
    }
}

}  // namespace

/// The state and the looks of the window while a filter runs.
class FilterRunner::Guard {
  public:
    explicit Guard(FilterRunner& newRunner)
        : runner(newRunner), previousCursor(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {
        runner.isRunning = true;
        runner.isAborted = false;
        runner.lastLook.reset();
        runner.status.BeginProgress();
    }
    ~Guard() {
        runner.status.EndProgress();
        runner.isRunning = false;
        // Keys and clicks during the run were not for the window that takes input now.
        DropMessages(WM_KEYFIRST, WM_KEYLAST);
        DropMessages(WM_MOUSEFIRST, WM_MOUSELAST);
        SetCursor(previousCursor);
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

  private:
    FilterRunner& runner;
    HCURSOR previousCursor;
};

FilterRunner::FilterRunner(const HostSettings& newSettings, StatusBar& newStatus)
    : settings(newSettings), status(newStatus) {}

RunReport FilterRunner::Run(const ListedFilter& filter, Picture& picture,
                            const Selection& selection, Execution execution) {
    const Guard guard(*this);
    return SessionOf(filter).Run(picture, selection, execution);
}

// A session of its own, so that the last filter keeps its parameters.
RunReport FilterRunner::ShowAbout(const ListedFilter& filter) {
    const Guard guard(*this);
    return FilterSession(filter, Settings()).RunAbout();
}

FilterSession& FilterRunner::SessionOf(const ListedFilter& filter) {
    const bool isTheSame = session != nullptr && session->Filter().file == filter.file &&
                           session->Filter().description.name == filter.description.name;
    if (!isTheSame) {
        // Only one session may exist: callbacks go to the newest.
        session.reset();
        session = std::make_unique<FilterSession>(filter, Settings());
    }
    return *session;
}

HostSettings FilterRunner::Settings() {
    HostSettings complete = settings;
    complete.hooks.window = window;
    complete.hooks.isAborted = [this] { return IsAborted(); };
    complete.hooks.showProgress = [this](std::int32_t done, std::int32_t total) {
        status.SetProgress(done, total);
    };
    complete.hooks.chooseColor = [this](std::uint8_t(&color)[3]) { return AskForColor(color); };
    return complete;
}

// Takes nothing but keys from the queue: any other message could start a command in the middle of
// the filter's work. What is painted over is painted again, without a message. Filters ask once a
// row, but looking takes longer than many a row does.
bool FilterRunner::IsAborted() {
    const DWORD now = GetTickCount();
    if (lastLook && now - *lastLook < millisecondsBetweenLooks) {
        return isAborted;
    }
    lastLook = now;
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE) != FALSE) {
        if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
            isAborted = true;
        }
    }
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    return isAborted;
}

bool FilterRunner::AskForColor(std::uint8_t (&color)[3]) {
    static COLORREF customColors[16];
    CHOOSECOLORW choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = GetActiveWindow();
    choice.rgbResult = RGB(color[0], color[1], color[2]);
    choice.lpCustColors = customColors;
    choice.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (ChooseColorW(&choice) == FALSE) {
        return false;
    }
    color[0] = GetRValue(choice.rgbResult);
    color[1] = GetGValue(choice.rgbResult);
    color[2] = GetBValue(choice.rgbResult);
    return true;
}

}  // namespace host
