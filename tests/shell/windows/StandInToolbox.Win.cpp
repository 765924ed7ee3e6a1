#include "tests/shell/windows/StandInToolbox.Win.h"

#include "hostapi/SharedLibrary.h"

namespace {

ToolboxMode mode = ToolboxMode::offersAbout;
int abouts = 0;
std::uint32_t lastTag = 0;

void __cdecl Nothing() {}
void __cdecl ShowAbout() {
    ++abouts;
}

hostapi::AboutService complete{1, Nothing, Nothing, ShowAbout};
hostapi::AboutService incomplete{1, Nothing, Nothing, nullptr};

}  // namespace

extern "C" {

__declspec(dllexport) int __cdecl ICCLookup(std::uint32_t tag, void** service) {
    lastTag = tag;
    switch (mode) {
        case ToolboxMode::offersAbout:
            *service = &complete;
            return 1;
        case ToolboxMode::grantsNull:
            *service = nullptr;
            return 1;
        case ToolboxMode::lacksProcedure:
            *service = &incomplete;
            return 1;
        case ToolboxMode::refuses:
            break;
    }
    return 0;
}

__declspec(dllexport) void __cdecl SetToolboxMode(ToolboxMode newMode) {
    mode = newMode;
}

__declspec(dllexport) int __cdecl AboutCount() {
    return abouts;
}

__declspec(dllexport) std::uint32_t __cdecl LastTag() {
    return lastTag;
}
}
