#include "shell/PhotoshopUtilities.h"
#include "base/HostServices.h"
#include "base/Progress.h"

#include <algorithm>
#include <iterator>

#include "base/FatalError.h"
#include "base/Platform.h"
#include "hostapi/Results.h"

using hostapi::BufferID;
using hostapi::ColorServicesInfo;
using hostapi::Handle;
using hostapi::ImageMode;

hostapi::FilterRecord* filterRecord = nullptr;
void* hostWindow = nullptr;
ProgressTarget* CursorClass::target = nullptr;
ProgressTarget* ShowClass::target = nullptr;

namespace {

constexpr char sourceName[] = "PhotoshopUtilities";

// Bookkeeping of what the plug-in holds of the host's memory.
std::int32_t liveHandles = 0;
std::int32_t liveBuffers = 0;

/// The suite's member, or FatalError 17500 where the record, the suite or the member is null.
template <typename Suite, typename Procedure>
Procedure Required(Suite* hostapi::FilterRecord::*suite, Procedure Suite::*member, int line) {
    Suite* procs = filterRecord != nullptr ? filterRecord->*suite : nullptr;
    Procedure procedure = procs != nullptr ? procs->*member : nullptr;
    if (procedure == nullptr) {
        FatalError(faultHostService, sourceName, line);
    }
    return procedure;
}

template <typename Procedure>
Procedure BufferService(Procedure hostapi::BufferProcs::*member, int line) {
    return Required(&hostapi::FilterRecord::bufferProcs, member, line);
}

template <typename Procedure>
Procedure HandleService(Procedure hostapi::HandleProcs::*member, int line) {
    return Required(&hostapi::FilterRecord::handleProcs, member, line);
}

}  // namespace

bool TestAbort() {
    return filterRecord != nullptr && filterRecord->abortProc != nullptr &&
           filterRecord->abortProc() != 0;
}

void ShowProgress(std::int32_t done, std::int32_t total) {
    if (filterRecord != nullptr && filterRecord->progressProc != nullptr && total != 0) {
        filterRecord->progressProc(done, total);
    }
}

std::int16_t AdvanceState() {
    if (filterRecord == nullptr || filterRecord->advanceState == nullptr) {
        return faultHostService;
    }
    return filterRecord->advanceState();
}

Handle NewHostHandle(std::int32_t size) {
    Handle handle = HandleService(&hostapi::HandleProcs::newProc, __LINE__)(size);
    if (handle != nullptr) {
        ++liveHandles;
    }
    return handle;
}

void DisposeHostHandle(Handle handle) {
    if (handle == nullptr) {
        return;
    }
    HandleService(&hostapi::HandleProcs::disposeProc, __LINE__)(handle);
    --liveHandles;
}

std::int32_t BufferSpace() {
    return BufferService(&hostapi::BufferProcs::spaceProc, __LINE__)();
}

std::int16_t AllocateBuffer(std::int32_t size, BufferID* id) {
    const std::int16_t result =
        BufferService(&hostapi::BufferProcs::allocateProc, __LINE__)(size, id);
    if (result == hostapi::noErr) {
        ++liveBuffers;
    }
    return result;
}

void* LockBuffer(BufferID id, bool moveHigh) {
    return BufferService(&hostapi::BufferProcs::lockProc, __LINE__)(id, moveHigh ? 1 : 0);
}

void FreeBuffer(BufferID id) {
    BufferService(&hostapi::BufferProcs::freeProc, __LINE__)(id);
    --liveBuffers;
}

hostapi::PSPixelMap MapCovering(const hostapi::PSPixelMap& map, const hostapi::VRect& rect) {
    hostapi::PSPixelMap covering = map;
    covering.bounds.right = std::max(covering.bounds.right, rect.right);
    covering.bounds.bottom = std::max(covering.bounds.bottom, rect.bottom);
    return covering;
}

namespace {

struct ModeColors {
    ImageMode mode;
    hostapi::ColorSpace space;
    int planes;
};

constexpr ModeColors modeColors[] = {
    {hostapi::imageModeGrey, hostapi::colorSpaceGrey, 1},
    {hostapi::imageModeRGB, hostapi::colorSpaceRGB, 3},
    {hostapi::imageModeCMYK, hostapi::colorSpaceCMYK, 4},
    {hostapi::imageModeHSL, hostapi::colorSpaceHSL, 3},
    {hostapi::imageModeHSB, hostapi::colorSpaceHSB, 3},
    {hostapi::imageModeLab, hostapi::colorSpaceLab, 3},
};

const ModeColors* ColorsOf(ImageMode mode) {
    const ModeColors* found =
        std::find_if(std::begin(modeColors), std::end(modeColors),
                     [mode](const ModeColors& entry) { return entry.mode == mode; });
    return found != std::end(modeColors) ? found : nullptr;
}

/// One colour in place. Zeroed but for the request itself: hosts refuse reserved fields in use.
std::int16_t ConvertColor(const ModeColors& from, const ModeColors& to, const std::uint8_t* source,
                          std::uint8_t* target) {
    ColorServicesInfo info{};
    info.infoSize = sizeof info;
    info.selector = hostapi::colorServicesConvertColor;
    info.sourceSpace = from.space;
    info.resultSpace = to.space;
    std::copy_n(source, from.planes, info.colorComponents);
    const std::int16_t result = filterRecord->colorServices(&info);
    if (result == hostapi::noErr) {
        std::transform(info.colorComponents, info.colorComponents + to.planes, target,
                       [](std::int16_t component) {
                           return static_cast<std::uint8_t>(std::clamp<int>(component, 0, 255));
                       });
    }
    return result;
}

}  // namespace

std::int16_t ConvertColors(ImageMode sourceMode, ImageMode targetMode, std::int32_t count,
                           const std::uint8_t* source, std::uint8_t* target) {
    if (sourceMode == targetMode) {
        return hostapi::noErr;
    }
    if (filterRecord == nullptr || filterRecord->colorServices == nullptr) {
        return faultHostService;
    }
    const ModeColors* from = ColorsOf(sourceMode);
    const ModeColors* to = ColorsOf(targetMode);
    if (from == nullptr || to == nullptr) {
        return hostapi::filterBadParameters;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const std::int16_t result = ConvertColor(*from, *to, source, target);
        if (result != hostapi::noErr) {
            return result;
        }
        source += from->planes;
        target += to->planes;
    }
    return hostapi::noErr;
}

namespace {

constexpr std::uint32_t busyInterval = 250;
std::uint32_t lastBusyTick = 0;
std::uint32_t busySteps = 0;

}  // namespace

void BusyTick() {
    const std::uint32_t now = platformServices.tickCount();
    // Unsigned, so the count may wrap.
    if (now - lastBusyTick < busyInterval) {
        return;
    }
    lastBusyTick = now;
    ++busySteps;
    platformServices.showWaitCursor();
}

CursorClass::CursorClass() {
    Tick();
}

CursorClass::~CursorClass() {
    if (target != nullptr) {
        platformServices.showArrowCursor();
    }
}

void CursorClass::Tick() {
    if (target != nullptr) {
        BusyTick();
    }
}

ShowClass::ShowClass(short newTotal) : total(newTotal), current(0) {
    if (target != nullptr) {
        BusyTick();
    }
}

ShowClass::~ShowClass() {
    if (target != nullptr) {
        platformServices.showArrowCursor();
    }
}

bool ShowClass::Report(short value) {
    current = value;
    if (target != nullptr) {
        BusyTick();
        // A total of 0 has nothing to be a part of.
        const int percent =
            total != 0 ? static_cast<int>(static_cast<double>(current) / total * 100.0) : 0;
        target->DrawProgress(static_cast<short>(percent));
    }
    return false;
}
