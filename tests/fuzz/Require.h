// The conditions of a fuzz target.
#pragma once

#include <cstdlib>

/// Ends the program, which libFuzzer reports with the input.
inline void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}
