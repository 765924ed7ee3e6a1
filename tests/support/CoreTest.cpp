#include "tests/support/CoreTest.h"

#include <cstring>

#include "base/FatalError.h"
#include "base/HostServices.h"

#ifdef __SANITIZE_ADDRESS__
/// A request that no memory can serve returns null, as it does without the sanitizer.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}
#endif

namespace {

PlatformLog called;

void RecordFault(std::int16_t id, const char* file, int line) {
    called.faults.push_back({id, file, line});
}

int RecordAlert(std::int16_t id, const std::array<const char*, 4>& texts) {
    ShownAlert alert{id, {}};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        alert.texts[i] = texts[i] != nullptr ? texts[i] : "";
    }
    called.alerts.push_back(alert);
    return called.alertAnswer;
}

int TemporaryPath(char* buffer, int size) {
    const auto length = static_cast<int>(called.temporaryPath.size());
    if (length < size) {
        std::memcpy(buffer, called.temporaryPath.c_str(), called.temporaryPath.size() + 1);
    }
    return length;
}

}  // namespace

PlatformLog& Log() {
    return called;
}

CoreTest::CoreTest(const host::MemorySettings& settings) : memory(settings) {
    called = {};
    called.temporaryPath = testing::TempDir();
    platformServices.clockSeconds = [] { return called.clock; };
    platformServices.tickCount = [] { return called.ticks; };
    platformServices.showWaitCursor = [] { ++called.waitCursors; };
    platformServices.showArrowCursor = [] { ++called.arrowCursors; };
    platformServices.beep = [] { ++called.beeps; };
    platformServices.reportFault = RecordFault;
    platformServices.showAlert = RecordAlert;
    platformServices.temporaryPath = TemporaryPath;
    platformServices.showAbout = [] { ++called.abouts; };
    record.bufferProcs = memory.Buffers();
    record.handleProcs = memory.Handles();
    filterRecord = &record;
    errorCell = 0;
}

CoreTest::~CoreTest() {
    // After the test has freed its own blocks.
    memory.CheckAtEnd();
    EXPECT_EQ(memory.FoundFaults().Lines(), std::vector<std::string>{});
    filterRecord = nullptr;
    errorCell = 0;
}
