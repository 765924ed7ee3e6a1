// How many of the system's objects this process holds.
#pragma once

#include <gtest/gtest.h>

struct Levels {
    int kernelHandles;
    int gdiObjects;
    int windows;  // of this process: other programs open and close theirs at any time
    int menus;
    int icons;
    int threads;
    /// Thread-local ones, of which a process has about a thousand.
    int freeSlots;
    bool operator==(const Levels&) const = default;
};

void PrintTo(const Levels& levels, std::ostream* out);

/// Counts by asking the system about every number that an object could have, kernel handles apart:
/// the calls that return the counts are empty in Wine.
Levels CountLevels();
