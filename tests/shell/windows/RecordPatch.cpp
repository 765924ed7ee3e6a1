#include "tests/shell/windows/RecordPatch.h"

#include "hostapi/FilterRecord.h"
#include "hostapi/Results.h"
#include "tests/shell/windows/Refusals.h"

namespace {

/// A host's own error, of no meaning to a filter.
constexpr std::int16_t hostError = -36;

/// The stand-in for one of the host's functions; each is a type, and so a group, of its own.
template <int group, typename Function>
struct StandIn;

template <int group, typename Result, typename... Arguments>
struct StandIn<group, Result(HOST_CALL*)(Arguments...)> {
    static inline Result(HOST_CALL* function)(Arguments...) = nullptr;
    static inline Result failure{};
    static Result HOST_CALL Call(Arguments... arguments) {
        return Refusals::Takes(Refused::host, group) ? failure : function(arguments...);
    }
};

template <int group, typename Function, typename Result>
Function Exchanged(Function function, Result failure) {
    using Own = StandIn<group, Function>;
    Own::function = function;
    Own::failure = failure;
    return function != nullptr ? &Own::Call : nullptr;
}

/// The record has its own callbacks back at the end.
class RecordPatch {
  public:
    explicit RecordPatch(hostapi::FilterRecord* newRecord)
        : record(newRecord),
          abortProc(record->abortProc),
          advanceState(record->advanceState),
          displayPixels(record->displayPixels),
          colorServices(record->colorServices),
          bufferProcs(record->bufferProcs),
          handleProcs(record->handleProcs),
          buffers(*bufferProcs),
          handles(*handleProcs) {
        record->abortProc = Exchanged<1>(abortProc, hostapi::Boolean8{1});
        record->advanceState = Exchanged<2>(advanceState, hostError);
        record->displayPixels = Exchanged<3>(displayPixels, hostError);
        record->colorServices = Exchanged<4>(colorServices, hostError);
        buffers.allocateProc =
            Exchanged<5>(buffers.allocateProc, std::int16_t{hostapi::memFullErr});
        buffers.lockProc = Exchanged<6>(buffers.lockProc, nullptr);
        buffers.spaceProc = Exchanged<7>(buffers.spaceProc, 0);
        handles.newProc = Exchanged<8>(handles.newProc, nullptr);
        handles.lockProc = Exchanged<9>(handles.lockProc, nullptr);
        handles.setSizeProc = Exchanged<10>(handles.setSizeProc, std::int16_t{hostapi::memFullErr});
        record->bufferProcs = &buffers;
        record->handleProcs = &handles;
    }
    RecordPatch(const RecordPatch&) = delete;
    RecordPatch& operator=(const RecordPatch&) = delete;
    ~RecordPatch() {
        record->abortProc = abortProc;
        record->advanceState = advanceState;
        record->displayPixels = displayPixels;
        record->colorServices = colorServices;
        record->bufferProcs = bufferProcs;
        record->handleProcs = handleProcs;
    }

  private:
    hostapi::FilterRecord* record;
    decltype(hostapi::FilterRecord::abortProc) abortProc;
    decltype(hostapi::FilterRecord::advanceState) advanceState;
    decltype(hostapi::FilterRecord::displayPixels) displayPixels;
    decltype(hostapi::FilterRecord::colorServices) colorServices;
    hostapi::BufferProcs* bufferProcs;
    hostapi::HandleProcs* handleProcs;
    hostapi::BufferProcs buffers;
    hostapi::HandleProcs handles;
};

host::EntryPoint patchedEntry = nullptr;

void HOST_CALL CallPatched(std::int16_t selector, hostapi::FilterRecord* record, void* data,
                           std::int16_t* result) {
    const RecordPatch patch(record);
    patchedEntry(selector, record, data, result);
}

}  // namespace

host::EntryPoint EntryWithRefusals(host::EntryPoint entry) {
    patchedEntry = entry;
    return CallPatched;
}
