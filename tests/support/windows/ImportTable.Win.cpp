#include "tests/support/windows/ImportTable.Win.h"

namespace {

template <typename Part>
Part* At(HMODULE module, std::size_t offset) {
    return reinterpret_cast<Part*>(reinterpret_cast<char*>(module) + offset);
}

void Write(void** address, void* value) {
    DWORD before = 0;
    VirtualProtect(address, sizeof *address, PAGE_READWRITE, &before);
    *address = value;
    VirtualProtect(address, sizeof *address, before, &before);
}

}  // namespace

ImportExchange::~ImportExchange() {
    for (const Place& place : places) {
        Write(place.address, place.original);
    }
}

bool ImportExchange::Exchange(const std::string& function, void* replacement) {
    const std::size_t before = places.size();
    const auto* const start = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* const headers =
        At<IMAGE_NT_HEADERS>(module, static_cast<std::size_t>(start->e_lfanew));
    const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(
        module, headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    for (; library->Name != 0; ++library) {
        const auto* name = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        auto* bound = At<void*>(module, library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++bound) {
            const bool hasName = !IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal);
            if (hasName && function == At<char>(module, name->u1.AddressOfData + sizeof(WORD))) {
                places.push_back({bound, *bound});
                Write(bound, replacement);
            }
        }
    }
    return places.size() > before;
}
