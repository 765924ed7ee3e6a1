#include "framework/help/About.Win.h"

#include <windows.h>

#include "base/FatalError.h"
#include "base/Module.Win.h"
#include "framework/help/LoadedModule.Win.h"
#include "hostapi/SharedLibrary.h"
#include "resources/Strings.h"

namespace {

constexpr int textCapacity = 256;

struct ToolboxNames {
    char productKey[textCapacity];
    char familyKey[textCapacity];
    char library[textCapacity];
};

void LoadName(StringId id, char (&text)[textCapacity]) {
    if (LoadStringA(instanceHandle, id, text, textCapacity) <= 0) {
        FatalError(faultResourceMissing, "About.Win", __LINE__);
    }
}

hostapi::LookupService FindLookup(HMODULE module) {
    if (module == nullptr) {
        return nullptr;
    }
    // Through a pointer without a type: the system hands out every function as one of its own.
    return reinterpret_cast<hostapi::LookupService>(
        reinterpret_cast<void*>(GetProcAddress(module, "ICCLookup")));
}

}  // namespace

void ShowAbout() {
    ToolboxNames names;
    LoadName(stringProductKey, names.productKey);
    LoadName(stringFamilyKey, names.familyKey);
    LoadName(stringSharedLibrary, names.library);
    const HeldModule library = FindLoadedModule(names.library);
    const hostapi::LookupService lookup = FindLookup(library.get());
    void* service = nullptr;
    if (lookup == nullptr || lookup(hostapi::aboutServiceTag, &service) == 0 ||
        service == nullptr) {
        return;
    }
    const auto* const about = static_cast<const hostapi::AboutService*>(service);
    if (about->showAbout != nullptr) {
        about->showAbout();
    }
}
