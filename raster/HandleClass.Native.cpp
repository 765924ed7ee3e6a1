#include <cstdlib>

#include "raster/HandleClass.h"
#include "shell/FatalError.h"

HandleClass::HandleClass(std::size_t size) : failed(false), handle(std::malloc(size)) {
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
