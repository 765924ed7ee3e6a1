#include "tests/support/CoreTest.h"

#include <cstring>

#include "base/HostServices.h"

namespace {

PlatformLog log;

void RecordFault(std::int16_t id, const char* file, int line) {
    log.faults.push_back({id, file, line});
}

int RecordAlert(std::int16_t id, const std::array<const char*, 4>& texts) {
    ShownAlert alert{id, {}};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        alert.texts[i] = texts[i] != nullptr ? texts[i] : "";
    }
    log.alerts.push_back(alert);
    return log.alertAnswer;
}

int TemporaryPath(char* buffer, int size) {
    const auto length = static_cast<int>(log.temporaryPath.size());
    if (length < size) {
        std::memcpy(buffer, log.temporaryPath.c_str(), log.temporaryPath.size() + 1);
    }
    return length;
}

}  // namespace

PlatformLog& Log() {
    return log;
}

CoreTest::CoreTest(const host::MemorySettings& settings) : memory(settings) {
    log = {};
    log.temporaryPath = testing::TempDir();
    platformServices.clockSeconds = [] { return log.clock; };
    platformServices.tickCount = [] { return log.ticks; };
    platformServices.showWaitCursor = [] { ++log.waitCursors; };
    platformServices.showArrowCursor = [] { ++log.arrowCursors; };
    platformServices.beep = [] { ++log.beeps; };
    platformServices.reportFault = RecordFault;
    platformServices.showAlert = RecordAlert;
    platformServices.temporaryPath = TemporaryPath;
    platformServices.showAbout = [] { ++log.abouts; };
    record.bufferProcs = memory.Buffers();
    record.handleProcs = memory.Handles();
    filterRecord = &record;
}

CoreTest::~CoreTest() {
    // Only now, when what the test itself held is gone.
    memory.CheckAtEnd();
    EXPECT_EQ(memory.FoundFaults().Lines(), std::vector<std::string>{});
    filterRecord = nullptr;
}
