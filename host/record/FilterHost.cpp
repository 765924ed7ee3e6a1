#include "host/record/FilterHost.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <limits>
#include <utility>

#include "base/Rectangles.h"
#include "host/record/CheckedBlock.h"
#include "host/record/ColorServices.h"
#include "host/record/DisplayPixels.h"
#include "host/record/EntryCall.h"
#include "host/record/PixelExchange.h"

namespace host {

namespace {

FilterHost* current = nullptr;

constexpr hostapi::Fixed ToFixed(double value) {
    return static_cast<hostapi::Fixed>(value * 65536.0);
}

// Gamma, then x and y of red, green, blue and white, then the ambient light: an sRGB monitor.
constexpr double monitorSetup[10] = {2.2, 0.64, 0.33, 0.30, 0.60, 0.15, 0.06, 0.3127, 0.3290, 0.5};
// Odd on purpose, and different, so that an exchange of the two shows.
constexpr hostapi::Point negativeOrigin{-37, -23};
constexpr std::uint8_t rubbish = 0xA7;

std::uint8_t HighByte(std::uint16_t component) {
    return static_cast<std::uint8_t>(component >> 8);
}

void PutColor(std::uint8_t* bytes, const hostapi::RGBColor& color) {
    bytes[0] = HighByte(color.red);
    bytes[1] = HighByte(color.green);
    bytes[2] = HighByte(color.blue);
}

MemorySettings MemorySettingsOf(const HostSettings& settings) {
    MemorySettings memory;
    memory.budget = settings.memoryBudget;
    memory.constantSpace = settings.traits.Has(Trait::constantSpace);
    memory.spaceInKilobytes = settings.traits.Has(Trait::spaceInKilobytes);
    memory.negativeSpace = settings.traits.Has(Trait::negativeSpace);
    memory.emptyVersions = settings.traits.Has(Trait::emptySuites);
    memory.dumbHandles = settings.traits.Has(Trait::dumbHandles);
    memory.failAllocation = settings.failAllocation;
    memory.without = settings.without;
    return memory;
}

bool AreSame(const hostapi::Point& a, const hostapi::Point& b) {
    return a.v == b.v && a.h == b.h;
}

// The fields that the host sets: its data for the filter, and its callbacks.
bool AreHostsFieldsSame(const hostapi::FilterRecord& a, const hostapi::FilterRecord& b) {
    return AreSame(a.imageSize, b.imageSize) && AreSame(a.wholeSize, b.wholeSize) &&
           AreSame(a.floatCoord, b.floatCoord) && a.planes == b.planes &&
           AreEqual(Widened(a.filterRect), Widened(b.filterRect)) && a.isFloating == b.isFloating &&
           a.haveMask == b.haveMask && a.filterCase == b.filterCase && a.imageMode == b.imageMode &&
           a.imageHRes == b.imageHRes && a.imageVRes == b.imageVRes && a.hostSig == b.hostSig &&
           a.abortProc == b.abortProc && a.progressProc == b.progressProc &&
           a.advanceState == b.advanceState && a.displayPixels == b.displayPixels &&
           a.colorServices == b.colorServices && a.platformData == b.platformData &&
           a.bufferProcs == b.bufferProcs && a.handleProcs == b.handleProcs;
}

}  // namespace

// The record points to these: count the call and pass it on to the object that serves.
struct FilterHost::Callbacks {
    static FilterHost& Count(Service service) {
        ++current->memory.Counts()[service];
        return *current;
    }
    static hostapi::Boolean8 HOST_CALL Abort() {
        FilterHost& host = Count(Service::abortProc);
        const std::optional<int>& limit = host.settings.abortAfterRow;
        if (limit && host.RowsDelivered() >= *limit) {
            return 1;
        }
        return host.settings.hooks.isAborted && host.settings.hooks.isAborted() ? 1 : 0;
    }
    static void HOST_CALL Progress(std::int32_t done, std::int32_t total) {
        FilterHost& host = Count(Service::progressProc);
        if (total <= 0) {
            host.FoundFaults().Add("progressProc: a total of 0 or less; hosts divide by it");
        } else if (host.settings.hooks.showProgress) {
            host.settings.hooks.showProgress(done, total);
        }
    }
    static std::int16_t HOST_CALL Advance() {
        FilterHost& host = Count(Service::advanceState);
        return host.exchange->Advance(*host.record);
    }
    static std::int16_t HOST_CALL Display(const hostapi::PSPixelMap* source,
                                          const hostapi::VRect* sourceRect, std::int32_t dstRow,
                                          std::int32_t dstCol, void* platformContext) {
        FilterHost& host = Count(Service::displayPixels);
        return DisplayPixels(source, sourceRect, dstRow, dstCol, platformContext,
                             host.settings.traits.Has(Trait::displayIgnoresOrigin));
    }
    static std::int16_t HOST_CALL Color(hostapi::ColorServicesInfo* info) {
        FilterHost& host = Count(Service::colorServices);
        ColorSource source{};
        PutColor(source.foreground, host.settings.foreground);
        PutColor(source.background, host.settings.background);
        source.picture = &host.exchange->Original();
        source.origin = host.Origin();
        source.chooseColor = host.settings.hooks.chooseColor;
        source.refuseAllButChoosing = host.settings.traits.Has(Trait::refuseConversion);
        return ServeColor(info, source);
    }
};

FilterHost::FilterHost(const HostSettings& newSettings)
    : settings(newSettings),
      memory(MemorySettingsOf(newSettings)),
      record(std::make_unique<hostapi::FilterRecord>()),
      previous(std::exchange(current, this)) {
    mattes.fill(Matte::straight);
}

FilterHost::~FilterHost() {
    current = previous;
}

void FilterHost::SetMattes(const std::array<Matte, 7>& newMattes) {
    mattes = newMattes;
}

hostapi::Point FilterHost::Origin() const {
    return settings.traits.Has(Trait::negativeOrigin) ? negativeOrigin : hostapi::Point{0, 0};
}

LayerKind FilterHost::Layer(const Picture& picture) const {
    if (settings.layer != LayerKind::automatic) {
        return settings.layer;
    }
    return picture.planes == 4 ? LayerKind::editableTransparency : LayerKind::flat;
}

std::int16_t FilterHost::FilterCaseOf(const Picture& picture, const Selection& selection) const {
    const std::int16_t selected = selection.isExplicit ? 1 : 0;
    switch (Layer(picture)) {
        case LayerKind::floating:
            return 3;
        case LayerKind::editableTransparency:
            return static_cast<std::int16_t>(4 + selected);
        case LayerKind::protectedTransparency:
            return static_cast<std::int16_t>(6 + selected);
        default:
            return static_cast<std::int16_t>(1 + selected);
    }
}

void FilterHost::RequireFit(const Picture& picture, const Selection& selection) const {
    const bool mayReachBeyond =
        settings.traits.Has(Trait::shrinkRectangles) || settings.traits.Has(Trait::shrinkSilently);
    if (IsEmpty(selection.bounds)) {
        throw SelectionError("the selection is empty");
    }
    if (!mayReachBeyond && !Contains(picture.Bounds(), selection.bounds)) {
        throw SelectionError("the selection reaches beyond the picture");
    }
    constexpr hostapi::VRect interfaceRange{-maximumPictureSide, -maximumPictureSide,
                                            maximumPictureSide, maximumPictureSide};
    if (!Contains(interfaceRange, selection.bounds)) {
        throw SelectionError("the selection is too large for the filter interface");
    }
    const std::size_t area = static_cast<std::size_t>(Width(selection.bounds)) *
                             static_cast<std::size_t>(Height(selection.bounds));
    if (selection.HasMask() && selection.mask.size() != area) {
        throw SelectionError("the selection's mask hasn't the selection's size");
    }
}

void FilterHost::Begin(const Picture& picture, const Selection& selection) {
    RequireFit(picture, selection);
    memory.Counts() = {};
    FoundFaults().Clear();
    if (settings.traits.Has(Trait::zeroRecord)) {
        memory.DisposeKept(record->parameters);
        *record = {};
    }
    if (settings.traits.Has(Trait::loseParameters)) {
        memory.DisposeKept(record->parameters);
        record->parameters = nullptr;
    }
    if (settings.traits.Has(Trait::moveParameters)) {
        record->parameters = memory.Renew(record->parameters);
    }
    const std::int16_t filterCase = FilterCaseOf(picture, selection);
    ExchangeSettings exchangeSettings;
    exchangeSettings.origin = Origin();
    exchangeSettings.shrinkRectangles = settings.traits.Has(Trait::shrinkRectangles);
    exchangeSettings.shrinkSilently = settings.traits.Has(Trait::shrinkSilently);
    exchangeSettings.lastChunkOnly = settings.traits.Has(Trait::lastChunkOnly);
    exchangeSettings.handOverMask =
        selection.HasMask() && !settings.traits.Has(Trait::withholdMask);
    exchangeSettings.protectTransparency = Layer(picture) == LayerKind::protectedTransparency;
    if (!settings.traits.Has(Trait::ignoreMatte)) {
        exchangeSettings.matte = mattes[static_cast<std::size_t>(filterCase - 1)];
    }
    exchangeSettings.failAdvance = settings.failAdvance;
    // It holds pictures of its own, which may be too large to be there twice.
    exchange.reset();
    exchange = std::make_unique<PixelExchange>(picture, selection, exchangeSettings, FoundFaults());

    FillPlaneFields(picture);
    FillImageFields(picture, selection);
    FillServices();
    record->filterCase = filterCase;
    record->haveMask = exchangeSettings.handOverMask ? 1 : 0;
}

// The picture, the selection, colours and resolution.
void FilterHost::FillImageFields(const Picture& picture, const Selection& selection) {
    const hostapi::Point origin = Origin();
    const hostapi::Point size{static_cast<std::int16_t>(picture.height),
                              static_cast<std::int16_t>(picture.width)};
    record->imageSize = size;
    record->wholeSize = size;
    record->floatCoord = origin;
    record->planes = settings.claimedPlanes.value_or(static_cast<std::int16_t>(picture.planes));
    record->filterRect =
        settings.claimedFilterRect.value_or(Narrowed(Offset(selection.bounds, origin.h, origin.v)));
    record->inRect = record->outRect = record->maskRect = {0, 0, 0, 0};
    record->inData = record->outData = record->maskData = nullptr;
    record->inRowBytes = record->outRowBytes = record->maskRowBytes = 0;
    record->background = settings.background;
    record->foreground = settings.foreground;
    PutColor(record->backColor, settings.background);
    PutColor(record->foreColor, settings.foreground);
    record->isFloating = Layer(picture) == LayerKind::floating ? 1 : 0;
    record->autoMask = settings.traits.Has(Trait::noAutoMask) ? 0 : 1;
    record->imageMode =
        settings.traits.Has(Trait::sixteenBits) ? hostapi::imageModeRGB48 : hostapi::imageModeRGB;
    record->imageHRes = ToFixed(picture.horizontalResolution);
    record->imageVRes = ToFixed(picture.verticalResolution);
    std::transform(std::begin(monitorSetup), std::end(monitorSetup), record->monitor, ToFixed);
}

// The layout of planes and pixels, and all fields after it.
void FilterHost::FillPlaneFields(const Picture& picture) {
    record->inLoPlane = record->outLoPlane = 0;
    record->inHiPlane = record->outHiPlane = static_cast<std::int16_t>(picture.planes - 1);
    record->inputRate = record->maskRate = ToFixed(1.0);
    constexpr std::size_t tail = offsetof(hostapi::FilterRecord, layers);
    auto* bytes = reinterpret_cast<std::uint8_t*>(record.get());
    const bool isRubbish = settings.traits.Has(Trait::rubbishTail);
    std::memset(bytes + tail, isRubbish ? rubbish : 0, sizeof(*record) - tail);
    if (isRubbish) {
        return;
    }
    // Colour planes and the transparency, for input and output.
    constexpr std::size_t inLayer = 0, inTransparency = 1, inNonLayer = 4, outOffset = 5;
    const bool isLayer = Layer(picture) != LayerKind::flat;
    for (std::size_t first : {std::size_t{0}, outOffset}) {
        record->layers[first + (isLayer ? inLayer : inNonLayer)] = 3;
        record->layers[first + inTransparency] = static_cast<std::int16_t>(picture.planes - 3);
    }
    record->inColumnBytes = record->outColumnBytes = picture.planes;
    record->inPlaneBytes = record->outPlaneBytes = 1;
    record->depth = settings.traits.Has(Trait::sixteenBits) ? 16 : 8;
}

void FilterHost::FillServices() {
    auto isThere = [&](Service service) { return !settings.without[service]; };
    platformData.window = settings.hooks.window;
    record->hostSig = static_cast<std::int32_t>(hostapi::FourCharacters('Z', 'H', 's', 't'));
    record->abortProc = isThere(Service::abortProc) ? &Callbacks::Abort : nullptr;
    record->progressProc = isThere(Service::progressProc) ? &Callbacks::Progress : nullptr;
    record->advanceState = isThere(Service::advanceState) ? &Callbacks::Advance : nullptr;
    record->displayPixels = isThere(Service::displayPixels) ? &Callbacks::Display : nullptr;
    record->colorServices = isThere(Service::colorServices) ? &Callbacks::Color : nullptr;
    record->platformData = isThere(Service::platformData) ? &platformData : nullptr;
    record->bufferProcs = memory.Buffers();
    record->handleProcs = memory.Handles();
    record->maxSpace = memory.ToldSpace();
    record->bufferSpace = 0;
}

Picture FilterHost::End() {
    exchange->Store();
    exchange->CheckLateWrites();
    memory.CheckAtEnd(record->parameters);
    return exchange->Result();
}

int FilterHost::RowsDelivered() const {
    return exchange ? exchange->RowsDelivered() : 0;
}

RunReport FilterHost::Run(EntryPoint entry, Picture& picture, const Selection& selection,
                          Execution execution) {
    Begin(picture, selection);
    const hostapi::FilterRecord given = *record;
    RunReport report;
    CallSelectors(entry, execution, report);
    if (!AreHostsFieldsSame(*record, given)) {
        FoundFaults().Add("the filter changed fields of the record that are the host's");
    }
    Picture changed = End();
    Complete(report);
    const bool takesAnything = report.completed && settings.traits.Has(Trait::ignoreResults);
    if (report.Succeeded() || takesAnything) {
        picture = std::move(changed);
    }
    return report;
}

RunReport FilterHost::RunAbout(EntryPoint entry) {
    FoundFaults().Clear();
    memory.Counts() = {};
    platformData.window = settings.hooks.window;
    CheckedBlock about(sizeof(hostapi::AboutRecord), "the About record");
    hostapi::AboutRecord contents{settings.without[Service::platformData] ? nullptr
                                                                          : &platformData};
    std::memcpy(about.Data(), &contents, sizeof(contents));
    RunReport report;
    Call(entry, hostapi::filterSelectorAbout,
         reinterpret_cast<hostapi::FilterRecord*>(about.Data()), report);
    about.Check(FoundFaults());
    memory.CheckAtEnd(record->parameters);
    Complete(report);
    return report;
}

RunReport FilterHost::RunSelector(EntryPoint entry, std::int16_t selector, const Picture& picture,
                                  const Selection& selection) {
    Begin(picture, selection);
    RunReport report;
    Call(entry, selector, record.get(), report);
    End();
    Complete(report);
    return report;
}

std::int16_t FilterHost::Call(EntryPoint entry, std::int16_t selector,
                              hostapi::FilterRecord* callRecord, RunReport& report) {
    const std::int16_t result =
        CallEntry(entry, selector, callRecord, &filterData, settings.traits, FoundFaults());
    report.calls.push_back({selector, result});
    if (report.result == 0) {
        report.result = result;
    }
    return result;
}

void FilterHost::CallSelectors(EntryPoint entry, Execution execution, RunReport& report) {
    if (execution == Execution::interactive &&
        Call(entry, hostapi::filterSelectorParameters, record.get(), report) != 0) {
        return;
    }
    if (Call(entry, hostapi::filterSelectorPrepare, record.get(), report) != 0 ||
        Call(entry, hostapi::filterSelectorStart, record.get(), report) != 0) {
        return;
    }
    Continue(entry, report);
    Call(entry, hostapi::filterSelectorFinish, record.get(), report);
}

bool FilterHost::AsksForMore() const {
    return !IsEmpty(Widened(record->inRect)) || !IsEmpty(Widened(record->outRect)) ||
           !IsEmpty(Widened(record->maskRect));
}

// For filters that let the host deliver between two calls.
void FilterHost::Continue(EntryPoint entry, RunReport& report) {
    for (int calls = 0; AsksForMore(); ++calls) {
        if (calls == settings.continueLimit) {
            FoundFaults().Add("the filter continues without end: a rectangle is still set after " +
                              std::to_string(calls) + " calls");
            report.completed = false;
            return;
        }
        // A selector's output is stored when it has returned.
        exchange->Store();
        const std::int16_t delivered = exchange->Advance(*record);
        if (delivered != 0) {
            report.result = delivered;
            return;
        }
        if (Call(entry, hostapi::filterSelectorContinue, record.get(), report) != 0) {
            return;
        }
    }
}

void FilterHost::Complete(RunReport& report) {
    report.faults = FoundFaults().Lines();
    report.counts = memory.Counts();
    report.rowsDelivered = RowsDelivered();
}

}  // namespace host
