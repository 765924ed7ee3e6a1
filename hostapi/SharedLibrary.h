// The library that the plug-ins of one family share: a directory of services in the host's process.
#pragma once

#include <cstdint>

#include "hostapi/HostTypes.h"

namespace hostapi {

/// Four characters.
using ServiceTag = std::uint32_t;

/// The family's About box.
constexpr ServiceTag aboutServiceTag = FourCharacters('A', 'b', 't', 'B');

/// The record of the service aboutServiceTag. Each function may be null.
struct AboutService {
    /// 1 while the service can be used.
    std::int16_t flag;
    void(HOST_CALL* open)();
    void(HOST_CALL* close)();
    /// Shows the box and returns when the user has closed it.
    void(HOST_CALL* showAbout)();
};

/// "ICCLookup": non-zero with the service's record in `*service`, 0 for an unknown tag.
using LookupService = int(HOST_CALL*)(ServiceTag tag, void** service);
/// "ICCRegister": offers a record under a tag; non-zero on success, 0 for a tag that is taken and
/// for a null record. The record stays the caller's, who removes it before it goes.
using RegisterService = int(HOST_CALL*)(ServiceTag tag, void* service);
/// "ICCRemove": non-zero if there was such a service.
using RemoveService = int(HOST_CALL*)(ServiceTag tag);

static_assert(offsetof(AboutService, flag) == 0);
static_assert(offsetof(AboutService, showAbout) == 3 * sizeof(void*));

}  // namespace hostapi
