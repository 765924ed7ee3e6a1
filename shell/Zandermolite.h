// One interactive run of the plug-in.
#pragma once

#include <cstdint>
#include <memory>

#include "paint/PaintClass.h"
#include "shell/transfer/FilterContext.h"

/// Notes the window over which the dialogs and alerts of this call open.
void NoteHostWindow(const hostapi::FilterRecord& record);

/// Notes the host's window and makes a texture for the selection. Returns 0, memFullErr or
/// userCanceledErr; `picOut` then holds the raster, owned by the caller whatever the result, or
/// null. Throws the id of a fault as a std::int16_t, also of one that ended a window.
std::int16_t RunTexture(FilterContext* context, std::unique_ptr<PaintClass>& picOut);
