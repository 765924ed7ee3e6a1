#include "framework/help/LoadedModule.Win.h"

#include <tlhelp32.h>

#include <string>

#include "framework/drawing/InterfaceLib.h"

namespace {

/// Null if it is not loaded.
HeldModule Hold(DWORD flags, const char* nameOrAddress) {
    HMODULE module = nullptr;
    return HeldModule(GetModuleHandleExA(flags, nameOrAddress, &module) ? module : nullptr);
}

/// The modules of this process at one moment.
class ModuleList {
  public:
    ModuleList() : snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, 0)) {}
    ModuleList(const ModuleList&) = delete;
    ModuleList& operator=(const ModuleList&) = delete;
    ~ModuleList() {
        if (snapshot != INVALID_HANDLE_VALUE) {
            CloseHandle(snapshot);
        }
    }

    /// The first one for which `isWanted` holds; null if there is none. Each is kept loaded while
    /// it is looked at: another thread may have freed it since.
    template <typename Condition>
    HeldModule Find(Condition isWanted) const {
        MODULEENTRY32 entry{};
        entry.dwSize = sizeof entry;
        for (BOOL more = Module32First(snapshot, &entry); more;
             more = Module32Next(snapshot, &entry)) {
            HeldModule module = Hold(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                     reinterpret_cast<const char*>(entry.modBaseAddr));
            if (module != nullptr && isWanted(module.get())) {
                return module;
            }
        }
        return nullptr;
    }

  private:
    HANDLE snapshot;
};

/// Returns what lies at an offset of the loaded image.
template <typename Part>
const Part* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<const Part*>(reinterpret_cast<const char*>(module) + offset);
}

/// The name in the table of the module's exports; null for a module without exports.
const char* LinkedName(HMODULE module) {
    const auto* const start = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* const header = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(start->e_lfanew));
    const IMAGE_DATA_DIRECTORY& exports =
        header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    return exports.Size != 0
               ? At<char>(module, At<IMAGE_EXPORT_DIRECTORY>(module, exports.VirtualAddress)->Name)
               : nullptr;
}

}  // namespace

HeldModule FindLoadedModule(const char* name) {
    if (HeldModule module = Hold(0, name)) {
        return module;
    }
    const std::string wanted = std::string(name) + ".dll";
    return ModuleList().Find([&](HMODULE module) {
        const char* const linked = LinkedName(module);
        return linked != nullptr && CompareIgnoringCase(linked, wanted.c_str()) == 0;
    });
}
