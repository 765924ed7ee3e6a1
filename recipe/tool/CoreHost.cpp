#include "recipe/tool/CoreHost.h"

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "host/record/ColorServices.h"

namespace recipe {

namespace {

// The state of the functions that the core calls, whose pointers carry no context.
std::uint32_t fixedSeconds = 0;
std::string reportedFault;

std::uint32_t FixedClock() {
    return fixedSeconds;
}

void KeepFault(std::int16_t id, const char* file, int line) {
    reportedFault = id == faultAssertion ? "assertion failed: " + std::string(file)
                                         : "fault " + std::to_string(id) + " in " + file +
                                               ", line " + std::to_string(line);
}

std::int16_t HOST_CALL ServeColor(hostapi::ColorServicesInfo* info) {
    // The core asks for conversions alone.
    static const host::ColorSource nothing{};
    return host::ServeColor(info, nothing);
}

}  // namespace

CoreHost::CoreHost(const host::MemorySettings& memory)
    : suites(memory), previousRecord(filterRecord), previousServices(platformServices) {
    record.bufferProcs = suites.Buffers();
    record.handleProcs = suites.Handles();
    record.colorServices = ServeColor;
    filterRecord = &record;
    platformServices.reportFault = KeepFault;
    reportedFault.clear();
}

CoreHost::~CoreHost() {
    filterRecord = previousRecord;
    platformServices = previousServices;
}

void CoreHost::SetClock(std::uint32_t seconds) {
    fixedSeconds = seconds;
    platformServices.clockSeconds = FixedClock;
}

std::string CoreHost::FaultText(std::int16_t id) {
    return reportedFault.empty() ? "fault " + std::to_string(id) : reportedFault;
}

RecordInUse::RecordInUse(hostapi::FilterRecord* record) : previous(filterRecord) {
    filterRecord = record;
}

RecordInUse::~RecordInUse() {
    filterRecord = previous;
}

}  // namespace recipe
