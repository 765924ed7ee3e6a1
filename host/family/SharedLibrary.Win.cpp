// The library that a family of filters finds in the host's process: its directory of services, with
// the About box as the first of them. Its file is called otherwise than the library itself, as in
// the family's own installations.
#include <windows.h>

#include "host/family/SharedLibraryResources.h"
#include "host/record/ServiceDirectory.h"

namespace {

HINSTANCE instance = nullptr;

void HOST_CALL Nothing() {}

INT_PTR CALLBACK AboutProcedure(HWND box, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
                EndDialog(box, LOWORD(wParam));
            }
            return TRUE;
        default:
            return FALSE;
    }
}

void HOST_CALL ShowAbout() {
    DialogBoxParamW(instance, MAKEINTRESOURCEW(DIALOG_ABOUT), GetActiveWindow(), AboutProcedure, 0);
}

hostapi::AboutService about{1, Nothing, Nothing, ShowAbout};

host::ServiceDirectory& Services() {
    static host::ServiceDirectory services = [] {
        host::ServiceDirectory first;
        first.Register(hostapi::aboutServiceTag, &about);
        return first;
    }();
    return services;
}

/// Nothing thrown may leave the library.
template <typename Operation>
int Answer(Operation operation) {
    try {
        return operation() ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

}  // namespace

extern "C" {

int HOST_CALL ICCLookup(hostapi::ServiceTag tag, void** service) {
    return Answer([&] {
        *service = Services().Lookup(tag);
        return *service != nullptr;
    });
}

int HOST_CALL ICCRegister(hostapi::ServiceTag tag, void* service) {
    return Answer([&] { return Services().Register(tag, service); });
}

int HOST_CALL ICCRemove(hostapi::ServiceTag tag) {
    return Answer([&] { return Services().Remove(tag); });
}

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) {
        instance = library;
        DisableThreadLibraryCalls(library);
    }
    return TRUE;
}
}
