// Runs a filter on a picture as an image editor does.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/picture/Picture.h"
#include "host/picture/Selection.h"
#include "host/record/Faults.h"
#include "host/record/HostSettings.h"
#include "host/record/MemorySuites.h"
#include "hostapi/FilterRecord.h"
#include "hostapi/Results.h"

namespace host {

/// A filter's entry. `data` points to a pointer-sized word that is the filter's own. With the About
/// selector `record` is an AboutRecord in truth.
using EntryPoint = void(HOST_CALL*)(std::int16_t selector, hostapi::FilterRecord* record,
                                    void* data, std::int16_t* result);

/// With its dialog (selectors 1, 2, 3, ...), or the last filter again (without selector 1).
enum class Execution { interactive, repeat };

/// How the input of a filter case is matted where the picture is transparent: the values of the
/// filter case table.
enum class Matte : std::uint8_t { cannotFilter = 0, straight = 1, black = 2, grey = 3, white = 4 };

struct SelectorCall {
    std::int16_t selector;
    std::int16_t result;
    bool operator==(const SelectorCall&) const = default;
};

struct RunReport {
    /// Every call of the entry, in order.
    std::vector<SelectorCall> calls;
    /// The first result that is not 0, or 0.
    std::int16_t result = 0;
    /// False if the host had to give up calling the continue selector.
    bool completed = true;
    std::vector<std::string> faults;
    ServiceCounts counts;
    /// Rows that advanceState delivered.
    int rowsDelivered = 0;

    /// The picture took over what the filter wrote.
    bool Succeeded() const { return result == 0 && completed; }
};

class PixelExchange;

/// The host's side of one filter: its record, its memory, the picture it works on. The record and
/// the `parameters` handle live from execution to execution, as long as the object.
///
/// The interface gives callbacks no context, so as with MemorySuites the newest object serves all
/// calls. Use on one thread.
///
/// Either run a filter from start to end with Run(), or, to drive code that works on a record
/// directly, call Begin(), use Record(), then End().
class FilterHost {
  public:
    explicit FilterHost(const HostSettings& settings = {});
    ~FilterHost();
    FilterHost(const FilterHost&) = delete;
    FilterHost& operator=(const FilterHost&) = delete;

    /// How input is matted in each filter case; all Straight at first.
    void SetMattes(const std::array<Matte, 7>& mattes);

    /// One execution. `picture` changes only if the report says Succeeded(), or with the trait
    /// ignoreResults. Throws SelectionError
    /// if the selection isn't inside the picture (a trait that shrinks rectangles allows that), and
    /// std::bad_alloc.
    RunReport Run(EntryPoint entry, Picture& picture, const Selection& selection,
                  Execution execution = Execution::interactive);
    /// The About selector alone, with an AboutRecord of its own.
    RunReport RunAbout(EntryPoint entry);
    /// Any one selector, alone, on a whole record; for tests. Changes no picture.
    RunReport RunSelector(EntryPoint entry, std::int16_t selector, const Picture& picture,
                          const Selection& selection);

    /// Fills the record for an execution on a copy of the picture. Throws as Run().
    void Begin(const Picture& picture, const Selection& selection);
    /// Between Begin() and End().
    hostapi::FilterRecord& Record() { return *record; }
    /// Stores what was written to the last outData and checks all memory. Returns the picture
    /// with the selected part changed.
    Picture End();

    MemorySuites& Memory() { return memory; }
    Faults& FoundFaults() { return memory.FoundFaults(); }
    /// Since Begin().
    int RowsDelivered() const;
    /// The row of the filter case table for a picture and a selection, 1 to 7.
    std::int16_t FilterCaseOf(const Picture& picture, const Selection& selection) const;

  private:
    struct Callbacks;

    void FillImageFields(const Picture& picture, const Selection& selection);
    void FillPlaneFields(const Picture& picture);
    void FillServices();
    void RequireFit(const Picture& picture, const Selection& selection) const;
    hostapi::Point Origin() const;
    LayerKind Layer(const Picture& picture) const;
    std::int16_t Call(EntryPoint entry, std::int16_t selector, hostapi::FilterRecord* callRecord,
                      RunReport& report);
    void CallSelectors(EntryPoint entry, Execution execution, RunReport& report);
    void Continue(EntryPoint entry, RunReport& report);
    void Complete(RunReport& report);
    bool AsksForMore() const;

    HostSettings settings;
    MemorySuites memory;
    std::array<Matte, 7> mattes;
    std::unique_ptr<hostapi::FilterRecord> record;
    std::unique_ptr<PixelExchange> exchange;
    hostapi::PlatformData platformData{};
    std::intptr_t filterData = 0;
    FilterHost* previous;
};

}  // namespace host
