// The plug-in's unwind tables in 32 bits, where what is thrown is unwound by tables that each
// module registers.
//
// The start-up code registers them with the compiler's shared run-time library if that is in the
// process, as in hosts that were built with the same compiler. The unwinder linked into the plug-in
// does not look there: the first throw would end the host. So they are registered with it, too.
#include <windows.h>

#include <cstring>

#ifdef __i386__

extern "C" {
extern IMAGE_DOS_HEADER __ImageBase;
void __register_frame_info(const void* tables, void* object);
void* __deregister_frame_info(const void* tables);
}

namespace {

/// The section of the tables in the module's headers, whose names have no more than 8 characters.
const void* FindTables() {
    const auto* const base = reinterpret_cast<const char*>(&__ImageBase);
    const auto* const headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(base + __ImageBase.e_lfanew);
    const auto* section = reinterpret_cast<const IMAGE_SECTION_HEADER*>(
        reinterpret_cast<const char*>(&headers->OptionalHeader) +
        headers->FileHeader.SizeOfOptionalHeader);
    for (int i = 0; i < headers->FileHeader.NumberOfSections; ++i, ++section) {
        if (std::memcmp(section->Name, ".eh_fram", sizeof section->Name) == 0) {
            return base + section->VirtualAddress;
        }
    }
    return nullptr;
}

class OwnRegistration {
  public:
    OwnRegistration() {
        if (GetModuleHandleA("libgcc_s_dw2-1.dll") != nullptr) {
            tables = FindTables();
        }
        if (tables != nullptr) {
            __register_frame_info(tables, object);
        }
    }
    OwnRegistration(const OwnRegistration&) = delete;
    OwnRegistration& operator=(const OwnRegistration&) = delete;
    ~OwnRegistration() {
        if (tables != nullptr) {
            __deregister_frame_info(tables);
        }
    }

  private:
    const void* tables = nullptr;
    /// The unwinder's own record of the tables, of six words.
    void* object[8] = {};
};

const OwnRegistration registration;

}  // namespace

#endif
