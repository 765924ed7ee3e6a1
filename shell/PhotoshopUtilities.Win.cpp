#include "shell/PhotoshopUtilities.h"
#include "base/HostServices.h"

#include <windows.h>

#include "base/FatalError.h"
#include "base/WindowContext.Win.h"

std::int16_t DisplayPixels(const hostapi::PSPixelMap* map, const hostapi::VRect* rect,
                           std::int32_t row, std::int32_t column, const ViewTarget* target) {
    if (filterRecord == nullptr || filterRecord->displayPixels == nullptr) {
        return faultHostService;
    }
    const hostapi::PSPixelMap covering = MapCovering(*map, *rect);
    const WindowContext context(static_cast<HWND>(target->window));
    CheckError(context.Get(), faultBadArgument, "PhotoshopUtilities.Win", __LINE__);
    SelectClipRgn(context.Get(), static_cast<HRGN>(target->clipRegion));
    return filterRecord->displayPixels(&covering, rect, row, column, context.Get());
}
