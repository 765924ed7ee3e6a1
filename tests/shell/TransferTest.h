// A transfer between a selection and a texture, at a host that gives it row by row.
#pragma once

#include "hostapi/HostTypes.h"
#include "shell/transfer/Transfer.h"
#include "tests/support/CoreTest.h"

inline constexpr hostapi::Rect anyRect{1, 2, 3, 4};
inline constexpr std::int16_t tooFewPlanes[] = {2, 1, 0, -1};

class TransferTest : public CoreTest {
  protected:
    FilterContext context{0, &record};

    /// Fills the record's three rectangles, which a transfer has to empty.
    void SetRectangles() {
        record.inRect = anyRect;
        record.outRect = anyRect;
        record.maskRect = anyRect;
    }
};
