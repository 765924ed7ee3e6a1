// Counts what an operation shows of the busy cursor.
#pragma once

#include <cstdint>

#include "base/Progress.h"
#include "tests/support/CoreTest.h"

/// For its lifetime there is an editor, and every look at the clock finds it 250 ms later, so that
/// every tick shows the cursor. In a CoreTest; one at a time.
class BusyCursor {
  public:
    BusyCursor() {
        CursorClass::target = &editor;
        platformServices.tickCount = [] { return clock += 250; };
        Log().waitCursors = 0;
        Log().arrowCursors = 0;
    }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
    ~BusyCursor() {
        CursorClass::target = nullptr;
        platformServices.tickCount = [] { return Log().ticks; };
    }

    /// One for the beginning and one for each tick.
    int Waits() const { return Log().waitCursors; }
    /// How often the work was over.
    int Arrows() const { return Log().arrowCursors; }

  private:
    /// Is never set back, since the program remembers its last tick from test to test.
    static inline std::uint32_t clock = 1000000;

    struct Editor final : ProgressTarget {
        void DrawProgress(short /*percent*/) override {}
    } editor;
};
