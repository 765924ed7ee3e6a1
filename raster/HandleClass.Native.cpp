#include <cstdlib>

#include "base/FatalError.h"
#include "raster/HandleClass.h"

void* (*HandleClass::allocate)(std::size_t size) = std::malloc;

HandleClass::HandleClass(std::size_t size) : failed(false), handle(allocate(size)) {
    failed = handle == nullptr;
}

HandleClass::~HandleClass() {
    std::free(handle);
}

void* HandleClass::Lock() {
    return handle;
}

void HandleClass::Unlock() {
    Assert(handle != nullptr, "HandleClass / Zeile 58 !(handle != nil)");
}
