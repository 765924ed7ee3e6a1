#include "host/command/DialogUser.Win.h"

#include <utility>

#include "base/WindowContext.Win.h"

namespace host {

namespace {

constexpr DWORD pollMilliseconds = 10;

struct Search {
    const std::string& title;
    HWND found = nullptr;
};

BOOL CALLBACK TakeIfWanted(HWND window, LPARAM parameter) {
    auto* const search = reinterpret_cast<Search*>(parameter);
    char title[256] = "";
    GetWindowTextA(window, title, sizeof title);
    if (!IsWindowVisible(window) || !IsWindowEnabled(window) || search->title != title) {
        return TRUE;
    }
    search->found = window;
    return FALSE;
}

/// The button, once its dialog takes input; null before.
HWND FindButton(DWORD thread, const DialogPress& press) {
    Search search{press.title};
    EnumThreadWindows(thread, TakeIfWanted, reinterpret_cast<LPARAM>(&search));
    return search.found != nullptr ? GetDlgItem(search.found, press.item) : nullptr;
}

/// The thread's desktop, with the display set up while no other thread is about: Wine locks up when
/// one thread loads a library that draws while another asks for windows for the first time.
HDESK ReadyDesktop(DWORD thread) {
    WindowContext::OfScreen();
    GetDesktopWindow();
    return GetThreadDesktop(thread);
}

}  // namespace

DialogUser::DialogUser(std::vector<DialogPress> newPresses)
    : presses(std::move(newPresses)),
      thread(GetCurrentThreadId()),
      desktop(ReadyDesktop(thread)),
      worker([this] { Work(); }) {}

DialogUser::~DialogUser() {
    Finish();
}

std::optional<DialogPress> DialogUser::Finish() {
    isFinished = true;
    if (worker.joinable()) {
        worker.join();
    }
    if (pressed < presses.size()) {
        return presses[pressed];
    }
    return std::nullopt;
}

void DialogUser::Work() {
    SetThreadDesktop(desktop);
    for (const DialogPress& press : presses) {
        HWND button = nullptr;
        while (button == nullptr) {
            if (isFinished) {
                return;
            }
            Sleep(pollMilliseconds);
            button = FindButton(thread, press);
        }
        // Posted: the press may open the next dialog.
        PostMessageA(button, BM_CLICK, 0, 0);
        ++pressed;
    }
}

}  // namespace host
