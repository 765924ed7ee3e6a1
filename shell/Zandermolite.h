// One interactive run of the plug-in.
#pragma once

#include <cstdint>
#include <memory>

#include "paint/PaintClass.h"
#include "shell/transfer/FilterContext.h"

/// Notes the host's window and makes a texture for the selection. Returns 0, memFullErr or
/// userCanceledErr; `picOut` then holds the raster, owned by the caller whatever the result, or
/// null.
std::int16_t RunTexture(FilterContext* context, std::unique_ptr<PaintClass>& picOut);
