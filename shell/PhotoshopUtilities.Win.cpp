#include "shell/PhotoshopUtilities.h"
#include "base/HostServices.h"

#include <windows.h>

#include "base/FatalError.h"
#include "base/WindowContext.Win.h"
#include "hostapi/Results.h"

namespace {

std::int16_t DisplayInto(const WindowContext& context, const hostapi::PSPixelMap* map,
                         const hostapi::VRect* rect, std::int32_t row, std::int32_t column,
                         const ViewTarget* target) {
    const hostapi::PSPixelMap covering = MapCovering(*map, *rect);
    SelectClipRgn(context.Get(), static_cast<HRGN>(target->clipRegion));
    return filterRecord->displayPixels(&covering, rect, row, column, context.Get());
}

bool HasDisplay() {
    return filterRecord != nullptr && filterRecord->displayPixels != nullptr;
}

}  // namespace

std::int16_t DisplayPixels(const hostapi::PSPixelMap* map, const hostapi::VRect* rect,
                           std::int32_t row, std::int32_t column, const ViewTarget* target) {
    if (!HasDisplay()) {
        return faultHostService;
    }
    const WindowContext context(static_cast<HWND>(target->window));
    CheckError(context.Get(), faultBadArgument, "PhotoshopUtilities.Win", __LINE__);
    return DisplayInto(context, map, rect, row, column, target);
}

std::int16_t DisplayPixelsIfDrawable(const hostapi::PSPixelMap* map, const hostapi::VRect* rect,
                                     std::int32_t row, std::int32_t column,
                                     const ViewTarget* target) {
    if (!HasDisplay()) {
        return faultHostService;
    }
    const WindowContext context(static_cast<HWND>(target->window));
    if (context.Get() == nullptr) {
        return hostapi::memFullErr;
    }
    return DisplayInto(context, map, rect, row, column, target);
}
