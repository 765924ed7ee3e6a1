// Both compilations of the loops that paint/kernels/Dispatch.h chooses between.
#pragma once

#include <gtest/gtest.h>

#include "paint/kernels/Dispatch.h"

/// Runs `body` with the code for any processor, then with the code for this one.
template <typename Body>
void WithBothCompilations(Body body) {
    for (const bool allowed : {false, true}) {
        SCOPED_TRACE(allowed ? "for this processor" : "for any processor");
        avx2Allowed = allowed;
        body();
    }
}
