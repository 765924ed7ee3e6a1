#include "shell/Selectors.h"

#include <cstring>
#include <memory>

#include "base/HostServices.h"
#include "base/Platform.h"
#include "hostapi/Results.h"
#include "paint/PaintClass.h"
#include "shell/Zandermolite.h"
#include "shell/transfer/FilterContext.h"
#include "shell/transfer/LastTexture.h"
#include "shell/transfer/Transfer.h"

namespace {

/// Memory that prepare asks the host to keep free, in bytes: the transfer is one row high.
constexpr std::int32_t requestedBufferSpace = 65535;

void HandleAbout(FilterContext*) {
    platformServices.showAbout();
}

/// The new block's handle; null without memory.
hostapi::Handle NewParameters() {
    const hostapi::Handle handle = NewHostHandle(sizeof(ParametersBlock));
    if (handle == nullptr) {
        return nullptr;
    }
    if (*handle == nullptr) {
        DisposeHostHandle(handle);
        return nullptr;
    }
    // Only these: the reserved bytes are the host's.
    auto* block = reinterpret_cast<ParametersBlock*>(*handle);
    std::memcpy(block->tag, "VELK", sizeof block->tag);
    block->haveLastTexture = 0;
    return handle;
}

void HandleParameters(FilterContext* context) {
    hostapi::FilterRecord* const record = context->record;
    if (record->parameters == nullptr) {
        record->parameters = NewParameters();
    }
    ParametersBlock* const block = ParametersOf(*record);
    if (block == nullptr) {
        context->result = hostapi::memFullErr;
        return;
    }
    block->ran = 0;
}

void HandlePrepare(FilterContext* context) {
    // maxSpace is left alone: some hosts answer every query for free memory with it.
    context->record->bufferSpace = requestedBufferSpace;
}

/// One run with the user. Null without memory, or with a result other than 0.
std::unique_ptr<PaintClass> RunInteractively(FilterContext* context) {
    std::unique_ptr<PaintClass> pic;
    context->result = RunTexture(context, pic);
    if (context->result != hostapi::noErr) {
        return nullptr;
    }
    // Looked up anew: the block may have moved meanwhile.
    ParametersBlock* const block = ParametersOf(*context->record);
    if (block != nullptr) {
        block->ran = 1;
    }
    if (SaveLastTexture(pic.get()) && block != nullptr) {
        block->haveLastTexture = 1;
    }
    return pic;
}

void HandleStart(FilterContext* context) {
    // A host may have lost the block since, or never asked for one: without it there is nothing to
    // say that a dialog is wanted, so the run is a repeat.
    const ParametersBlock* const block = ParametersOf(*context->record);
    const bool interactive = block != nullptr && block->ran == 0;
    const std::unique_ptr<PaintClass> pic =
        interactive ? RunInteractively(context) : LoadLastTexture();
    if (context->result != hostapi::noErr) {
        return;
    }
    if (!pic) {
        context->result = hostapi::memFullErr;
        return;
    }
    WriteTileToSelection(context, TileOf(*pic));
}

void HandleContinue(FilterContext* context) {
    // Start transfers everything by itself; this only serves hosts that call all the same.
    context->record->inRect = {};
    context->record->outRect = {};
}

void HandleFinish(FilterContext*) {}

using Handler = void (*)(FilterContext*);
constexpr Handler handlers[] = {HandleAbout, HandleParameters, HandlePrepare,
                                HandleStart, HandleContinue,   HandleFinish};

bool IsSelector(std::int16_t selector) {
    return selector >= hostapi::filterSelectorAbout && selector <= hostapi::filterSelectorFinish;
}

/// Ends a call whose handler has thrown. A host that finds rectangles would call on without end.
void EndWithFault(std::int16_t selector, hostapi::FilterRecord* record) {
    platformServices.beep();
    if (selector == hostapi::filterSelectorStart) {
        record->inRect = {};
        record->outRect = {};
        record->maskRect = {};
    }
}

}  // namespace

void DispatchSelector(std::int16_t selector, hostapi::FilterRecord* record, std::int16_t* result) {
    filterRecord = record;
    FilterContext context{hostapi::noErr, record};
    const bool needsRecord = selector != hostapi::filterSelectorAbout;
    if (!IsSelector(selector) || (needsRecord && record == nullptr)) {
        context.result = hostapi::filterBadParameters;
    } else {
        try {
            handlers[selector](&context);
        } catch (...) {
            EndWithFault(selector, record);
        }
    }
    if (result != nullptr) {
        *result = context.result;
    }
}
