// The general allocator, counted, and failing on demand.
//
// FailingAllocator.cpp replaces the global operators new and delete of its program. They count only
// while a CountingSwitch says so, so neither the test framework nor the host disturbs the count.
#pragma once

/// Begins a new count. Its nth allocation fails, 1 the first; 0 none.
void CountAllocations(int failNth);
/// Asked for since then, the failed one included.
int AllocationsAsked();
/// Blocks that were made and have not been freed.
int AllocationsLive();

/// Switches the counting for its lifetime.
class CountingSwitch {
  public:
    explicit CountingSwitch(bool on);
    CountingSwitch(const CountingSwitch&) = delete;
    CountingSwitch& operator=(const CountingSwitch&) = delete;
    ~CountingSwitch();

  private:
    bool before;
};
