#include "tests/resources/StandIns.Win.h"

// The common controls need the system's header first.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <stdexcept>
#include <string>

namespace {

constexpr const char* classNames[] = {"tToolPalette",  "tPopupMenu", "tRealtimeMenu",
                                      "tLinearSlider", "tPadLock",   "tUserItem",
                                      "tBitmapButton"};

void Register(const char* name) {
    WNDCLASSA windowClass{};
    windowClass.style = CS_GLOBALCLASS;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = name;
    if (RegisterClassA(&windowClass) == 0) {
        throw std::runtime_error(std::string("no window class ") + name);
    }
}

}  // namespace

void RegisterStandIns() {
    InitCommonControls();
    for (const char* name : classNames) {
        Register(name);
    }
}
