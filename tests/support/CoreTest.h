// The base of tests of the core: a host's memory at filterRecord, a platform of their own,
// and a record of the faults that were reported.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "base/HostServices.h"
#include "base/Platform.h"
#include "host/record/MemorySuites.h"
#include "hostapi/FilterRecord.h"
#include "tests/support/StandInWindows.h"

/// Puts the platform back as it was when the object goes.
class PlatformOverride {
  public:
    PlatformOverride() : saved(platformServices) {}
    PlatformOverride(const PlatformOverride&) = delete;
    PlatformOverride& operator=(const PlatformOverride&) = delete;
    ~PlatformOverride() { platformServices = saved; }

  private:
    PlatformServices saved;
};

struct ReportedFault {
    int id;
    std::string file;
    int line;
};

struct ShownAlert {
    int id;
    /// For ^0 to ^3; "" for none.
    std::array<std::string, 4> texts;
};

/// The requests to the platform of the running CoreTest.
struct PlatformLog {
    std::vector<ReportedFault> faults;
    std::vector<ShownAlert> alerts;
    /// The button that ends every alert.
    int alertAnswer = 1;
    int beeps = 0;
    int waitCursors = 0;
    int arrowCursors = 0;
    int abouts = 0;
    std::uint32_t clock = 1000;
    std::uint32_t ticks = 0;
    std::string temporaryPath;
};

/// The log of the running CoreTest.
PlatformLog& Log();

/// A test with a strict host at filterRecord. At its end the host finds no misuse of its
/// memory and no block left, unless the test expects faults of its own.
class CoreTest : public testing::Test {
  protected:
    explicit CoreTest(const host::MemorySettings& settings = {});
    ~CoreTest() override;

    host::MemorySuites memory;
    hostapi::FilterRecord record{};

  private:
    PlatformOverride platform;
    StandInWindows windows;
};

/// Runs `operation`, which must fail an assertion. Returns its text.
template <typename Operation>
std::string AssertionOf(Operation operation) {
    const std::size_t before = Log().faults.size();
    try {
        operation();
    } catch (std::int16_t id) {
        EXPECT_EQ(id, 2);
        EXPECT_EQ(Log().faults.size(), before + 1);
        EXPECT_EQ(Log().faults.back().id, 2);
        EXPECT_EQ(Log().faults.back().line, -1);
        return Log().faults.back().file;
    }
    return "(no assertion failed)";
}

/// Runs `operation`, which must throw an id. Returns it, or 0 if it throws none.
template <typename Operation>
int FaultOf(Operation operation) {
    try {
        operation();
    } catch (std::int16_t id) {
        return id;
    }
    return 0;
}
