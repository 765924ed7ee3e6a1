#include "host/record/Services.h"

namespace host {

namespace {

// In the order of the enumeration.
constexpr std::array<const char*, serviceCount> serviceNames = {
    "abortProc",
    "progressProc",
    "advanceState",
    "displayPixels",
    "colorServices",
    "platformData",
    "bufferProcs",
    "bufferProcs.allocateProc",
    "bufferProcs.lockProc",
    "bufferProcs.unlockProc",
    "bufferProcs.freeProc",
    "bufferProcs.spaceProc",
    "handleProcs",
    "handleProcs.newProc",
    "handleProcs.disposeProc",
    "handleProcs.getSizeProc",
    "handleProcs.setSizeProc",
    "handleProcs.lockProc",
    "handleProcs.unlockProc",
    "handleProcs.recoverSpaceProc",
    "handleProcs.disposeRegularHandleProc",
};
static_assert(serviceNames.back() != nullptr, "a service has no name");

}  // namespace

const char* ServiceName(Service service) {
    return serviceNames[static_cast<std::size_t>(service)];
}

std::optional<Service> ServiceFromName(const std::string& name) {
    for (std::size_t index = 0; index < serviceCount; ++index) {
        if (name == serviceNames[index]) {
            return static_cast<Service>(index);
        }
    }
    return std::nullopt;
}

}  // namespace host
