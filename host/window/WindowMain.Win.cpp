// zandermolite-host: the host with its window.
#include <windows.h>

#include <commctrl.h>

#include <string>

#include "host/command/Arguments.Win.h"
#include "host/plugin/FamilyServices.Win.h"
#include "host/window/HostWindow.Win.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/WindowOptions.h"

namespace host {

namespace {

// As those of the batch program.
enum ExitStatus : int { statusDone = 0, statusUnusable = 2 };

// To where the output goes, if it goes anywhere, else in a box.
void Print(const std::string& text) {
    if (!WriteToOutput(text)) {
        MessageBoxW(nullptr, Wide(text).c_str(), programTitle, MB_OK);
    }
}

int RunMessageLoop(HostWindow& window) {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (window.TranslateKey(message)) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return statusDone;
}

int Main(int show) {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_PROGRESS_CLASS};
    InitCommonControlsEx(&controls);
    try {
        const ParsedWindowOptions commandLine = ParseWindowOptions(ProgramArguments());
        if (!commandLine.text.empty()) {
            Print(commandLine.text);
            return statusDone;
        }
        const FamilyServices services;
        HostWindow window(commandLine.options);
        window.Open(show);
        window.CarryOutOptions();
        return RunMessageLoop(window);
    } catch (...) {
        ShowError(nullptr, CurrentErrorText());
        return statusUnusable;
    }
}

}  // namespace

}  // namespace host

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int show) {
    return host::Main(show);
}
