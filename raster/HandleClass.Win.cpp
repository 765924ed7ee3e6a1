#include "raster/HandleClass.h"

#include <windows.h>

#include "base/FatalError.h"

namespace {

void* AllocateFixed(std::size_t size) {
    return GlobalAlloc(GMEM_FIXED, size);
}

}  // namespace

void* (*HandleClass::allocate)(std::size_t size) = AllocateFixed;

HandleClass::HandleClass(std::size_t size) : failed(false), handle(allocate(size)) {
    failed = handle == nullptr;
}

HandleClass::~HandleClass() {
    if (handle != nullptr) {
        GlobalFree(handle);
    }
}

void* HandleClass::Lock() {
    return handle != nullptr ? GlobalLock(handle) : nullptr;
}

void HandleClass::Unlock() {
    Assert(handle != nullptr, "HandleClass / Zeile 58 !(handle != nil)");
    GlobalUnlock(handle);
}
