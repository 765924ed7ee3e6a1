#include "shell/Zandermolite.h"

#include <algorithm>
#include <new>

#include "hostapi/Results.h"
#include "paint/EffectRun.h"

void* hostWindow = nullptr;

namespace {

void NoteHostWindow(const hostapi::FilterRecord& record) {
    hostWindow = record.platformData != nullptr ? record.platformData->window : nullptr;
}

/// 1 to maximalTextureSide.
short TextureSide(int selectionSide) {
    return static_cast<short>(std::clamp(selectionSide, 1, maximalTextureSide));
}

}  // namespace

// While there is no editor to make a texture in, every run draws Lines with the default record at
// the size of the selection. The editor's run sequence takes the place of this function's body.
std::int16_t RunTexture(FilterContext* context, std::unique_ptr<PaintClass>& picOut) {
    NoteHostWindow(*context->record);
    const hostapi::Rect& selection = context->record->filterRect;
    picOut.reset(new (std::nothrow) PaintClass(TextureSide(selection.right - selection.left),
                                               TextureSide(selection.bottom - selection.top)));
    if (!picOut || !picOut->pixelMap) {
        return hostapi::memFullErr;
    }
    RunLines(*picOut, LinesParams{});
    return hostapi::noErr;
}
