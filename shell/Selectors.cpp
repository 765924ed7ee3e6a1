#include "shell/Selectors.h"

#include <cstring>
#include <memory>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "base/Platform.h"
#include "hostapi/Results.h"
#include "paint/PaintClass.h"
#include "resources/Ids.h"
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

/// The rectangles that the host is asked for. Reading the selection writes there; a run that
/// changes nothing leaves it as it was.
class SavedRectangles {
  public:
    explicit SavedRectangles(const hostapi::FilterRecord& record)
        : in(record.inRect), out(record.outRect), mask(record.maskRect) {}

    void Restore(hostapi::FilterRecord* record) const {
        record->inRect = in;
        record->outRect = out;
        record->maskRect = mask;
    }

  private:
    hostapi::Rect in;
    hostapi::Rect out;
    hostapi::Rect mask;
};

/// A host that finds rectangles would call on without end.
void EmptyRectangles(hostapi::FilterRecord* record) {
    record->inRect = {};
    record->outRect = {};
    record->maskRect = {};
}

/// Nothing takes a fault back, and no dialog would stay open: says so, and ends the call like the
/// one in which the fault was. A repeat needs no dialog.
void RefuseAfterFault(const hostapi::FilterRecord& record) {
    if (errorCell != 0) {
        NoteHostWindow(record);
        platformServices.showAlert(alertEarlierFault, {});
        throw errorCell;
    }
}

/// One run with the user. Null without memory, or with a result other than 0.
std::unique_ptr<PaintClass> RunInteractively(FilterContext* context) {
    RefuseAfterFault(*context->record);
    std::unique_ptr<PaintClass> pic;
    const SavedRectangles before(*context->record);
    context->result = RunTexture(context, pic);
    if (context->result != hostapi::noErr) {
        before.Restore(context->record);
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

/// Whether the host's picture can be filled: known before anybody works on a texture for it.
std::int16_t CheckPicture(FilterContext* context, bool interactive) {
    if (!HasColors(*context->record)) {
        return hostapi::filterBadParameters;
    }
    return interactive ? TryFirstRow(context) : std::int16_t{hostapi::noErr};
}

void HandleStart(FilterContext* context) {
    // A host may have lost the block since, or never asked for one: without it there is nothing to
    // say that a dialog is wanted, so the run is a repeat.
    const ParametersBlock* const block = ParametersOf(*context->record);
    const bool interactive = block != nullptr && block->ran == 0;
    context->result = CheckPicture(context, interactive);
    if (context->result != hostapi::noErr) {
        EmptyRectangles(context->record);
        return;
    }
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

/// A start is under way. A host that takes messages while the filter runs may call it again.
bool isStarted = false;

/// The time of a start, and the record of its call.
class StartSection {
  public:
    explicit StartSection(std::int16_t selector)
        : isStart(selector == hostapi::filterSelectorStart),
          isInner(isStarted),
          outerRecord(filterRecord) {
        isStarted = isStarted || isStart;
    }
    StartSection(const StartSection&) = delete;
    StartSection& operator=(const StartSection&) = delete;
    ~StartSection() {
        if (isInner) {
            filterRecord = outerRecord;
        } else {
            isStarted = false;
        }
    }

    bool IsRefused() const { return isInner && isStart; }
    /// The editor below the About box goes on to draw through the start's record; that of About is
    /// shorter.
    bool KeepsRecord(std::int16_t selector) const {
        return isInner && selector == hostapi::filterSelectorAbout;
    }

  private:
    bool isStart;
    bool isInner;
    hostapi::FilterRecord* outerRecord;
};

/// Ends a call whose handler has thrown.
void EndWithFault(std::int16_t selector, hostapi::FilterRecord* record) {
    platformServices.beep();
    if (selector == hostapi::filterSelectorStart) {
        EmptyRectangles(record);
    }
}

}  // namespace

void DispatchSelector(std::int16_t selector, hostapi::FilterRecord* record, std::int16_t* result) {
    const StartSection section(selector);
    FilterContext context{hostapi::noErr, record};
    const bool needsRecord = selector != hostapi::filterSelectorAbout;
    if (section.IsRefused()) {
        context.result = hostapi::userCanceledErr;
    } else if (!IsSelector(selector) || (needsRecord && record == nullptr)) {
        filterRecord = record;
        context.result = hostapi::filterBadParameters;
    } else {
        if (!section.KeepsRecord(selector)) {
            filterRecord = record;
        }
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
