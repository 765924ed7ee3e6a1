#include "framework/access/AccessLibraries.Win.h"

#include <objbase.h>

#include "framework/controls/SystemLibrary.Win.h"

namespace {

template <typename Function>
bool Find(HMODULE library, const char* name, Function& function) {
    if (library != nullptr) {
        function =
            reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    }
    return function != nullptr;
}

}  // namespace

AccessLibraries::AccessLibraries()
    : access(LoadSystemLibrary(L"oleacc.dll")),
      objects(access != nullptr ? LoadSystemLibrary(L"ole32.dll") : nullptr),
      automation(objects != nullptr ? LoadSystemLibrary(L"oleaut32.dll") : nullptr) {
    const bool areThere = Find(access, "LresultFromObject", resultOf) &&
                          Find(access, "AccessibleObjectFromWindow", objectOf) &&
                          Find(objects, "CoDisconnectObject", disconnect) &&
                          Find(objects, "CoInitializeEx", initialize) &&
                          Find(objects, "CoUninitialize", uninitialize) &&
                          Find(automation, "SysAllocStringLen", makeText);
    // Without an apartment, calls would arrive on other threads.
    isApartment = areThere && SUCCEEDED(initialize(nullptr, COINIT_APARTMENTTHREADED));
}

AccessLibraries::~AccessLibraries() {
    if (isApartment) {
        uninitialize();
    }
    for (const HMODULE library : {automation, objects, access}) {
        if (library != nullptr) {
            FreeLibrary(library);
        }
    }
}
