#include "framework/About.Win.h"

#include <windows.h>

#include "hostapi/HostTypes.h"
#include "resources/Strings.h"
#include "shell/FatalError.h"
#include "shell/Module.Win.h"

namespace {

constexpr int textCapacity = 256;
constexpr std::uint32_t aboutService = hostapi::FourCharacters('A', 'b', 't', 'B');

/// The service's record in the shared library.
struct AboutService {
    std::int16_t flag;
    void(__cdecl* open)();
    void(__cdecl* close)();
    void(__cdecl* showAbout)();
};

/// Non-zero, with the service's record, if the library offers it.
using LookupProcedure = int(__cdecl*)(std::uint32_t tag, void** service);

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

LookupProcedure FindLookup(const char* library) {
    const HMODULE module = GetModuleHandleA(library);
    if (module == nullptr) {
        return nullptr;
    }
    // Through a pointer without a type: the system hands out every function as one of its own.
    return reinterpret_cast<LookupProcedure>(
        reinterpret_cast<void*>(GetProcAddress(module, "ICCLookup")));
}

}  // namespace

void ShowAbout() {
    ToolboxNames names;
    LoadName(stringProductKey, names.productKey);
    LoadName(stringFamilyKey, names.familyKey);
    LoadName(stringSharedLibrary, names.library);
    const LookupProcedure lookup = FindLookup(names.library);
    void* service = nullptr;
    if (lookup == nullptr || lookup(aboutService, &service) == 0 || service == nullptr) {
        return;
    }
    const auto* const about = static_cast<const AboutService*>(service);
    if (about->showAbout != nullptr) {
        about->showAbout();
    }
}
