#include "host/record/DisplayPixels.h"

namespace host {

// No device contexts here: the arguments are checked, nothing is drawn.

hostapi::VRect VisiblePart(const hostapi::VRect& rect, void*) {
    return rect;
}

void DrawRows(const DisplayRows&, std::int32_t, std::int32_t, void*) {}

}  // namespace host
