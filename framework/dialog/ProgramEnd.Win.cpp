#include "framework/dialog/ProgramEnd.Win.h"

#include <optional>

namespace {

HHOOK hook = nullptr;
/// The message's code, since it was taken.
std::optional<int> taken;

}  // namespace

void ProgramEnd::Watch() {
    hook = SetWindowsHookExA(WH_GETMESSAGE, &ProgramEnd::Take, nullptr, GetCurrentThreadId());
}

void ProgramEnd::Unwatch() {
    UnhookWindowsHookEx(hook);
    hook = nullptr;
    taken.reset();
}

// Posted again here, it would keep a loop that empties the queue from coming to an end.
LRESULT CALLBACK ProgramEnd::Take(int code, WPARAM wParam, LPARAM lParam) {
    const MSG& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && (wParam & PM_REMOVE) != 0 && message.message == WM_QUIT) {
        taken = static_cast<int>(message.wParam);
    }
    return CallNextHookEx(hook, code, wParam, lParam);
}

void ProgramEnd::PostAgain() {
    if (taken) {
        // It stays one message if the loop of a dialog has posted it already.
        PostQuitMessage(*taken);
        taken.reset();
    }
}
