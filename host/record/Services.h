// The services that a filter can call, by name: for counting them and for taking them away.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace host {

/// Fields of the record, whole suites and members of suites.
enum class Service {
    abortProc,
    progressProc,
    advanceState,
    displayPixels,
    colorServices,
    platformData,
    bufferProcs,
    bufferAllocate,
    bufferLock,
    bufferUnlock,
    bufferFree,
    bufferSpace,
    handleProcs,
    handleNew,
    handleDispose,
    handleGetSize,
    handleSetSize,
    handleLock,
    handleUnlock,
    handleRecoverSpace,
    handleDisposeRegular,
};
constexpr std::size_t serviceCount = static_cast<std::size_t>(Service::handleDisposeRegular) + 1;

/// "advanceState", "bufferProcs", "bufferProcs.allocateProc" and so on.
const char* ServiceName(Service service);
std::optional<Service> ServiceFromName(const std::string& name);

/// One value for each service, zero at first.
template <typename T>
class PerService {
  public:
    T& operator[](Service service) { return values[static_cast<std::size_t>(service)]; }
    const T& operator[](Service service) const { return values[static_cast<std::size_t>(service)]; }
    bool operator==(const PerService&) const = default;

  private:
    std::array<T, serviceCount> values{};
};

/// How often each was called.
using ServiceCounts = PerService<std::int64_t>;
/// True for those that the filter doesn't find.
using WithheldServices = PerService<bool>;

}  // namespace host
