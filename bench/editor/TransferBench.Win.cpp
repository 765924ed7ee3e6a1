#include <cstdint>
#include <cstring>

#include "bench/editor/EditorRun.Win.h"
#include "bench/editor/Measurements.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "hostapi/Results.h"
#include "resources/Ids.h"

namespace {

/// In milliseconds.
double rowsTook = 0;

/// A filter that has every row of the selection delivered and taken back, and leaves it as it is.
void HOST_CALL RowsAlone(std::int16_t selector, hostapi::FilterRecord* record, void*,
                         std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector != hostapi::filterSelectorStart) {
        return;
    }
    const Clock::time_point start = Clock::now();
    record->inLoPlane = record->outLoPlane = 0;
    record->inHiPlane = record->outHiPlane = static_cast<std::int16_t>(record->planes - 1);
    record->inRect = record->outRect = record->filterRect;
    for (std::int16_t y = record->filterRect.top; y < record->filterRect.bottom; ++y) {
        record->inRect.top = record->outRect.top = y;
        record->inRect.bottom = record->outRect.bottom = static_cast<std::int16_t>(y + 1);
        record->advanceState();
    }
    record->inRect = record->outRect = {};
    rowsTook = MillisecondsSince(start);
}

}  // namespace

/// The texture into a large selection, as after Apply in the editor: through the host, which has
/// its picture's rows delivered and taken back one by one. Beside it that alone, and a plain copy
/// of as many bytes.
void MeasureTransfer() {
    constexpr int large = 8000;
    constexpr int transfers = 5;
    StorePreferences(false);
    host::Picture picture = host::MakePicture(large, large, 3, 200);
    const host::Selection all = host::SelectRectangle({0, 0, large, large});
    host::FilterHost filterHost;
    RunWithUser([&] { filterHost.Run(NotedEntry, picture, all); },
                [](const GuiDriver& gui) { CloseWith(gui.WaitFor(textureDialog), okItem); });
    std::vector<double> applied;
    std::vector<double> rows;
    std::vector<double> copied;
    std::vector<std::uint8_t> copy(picture.pixels.size());
    for (int i = 0; i < transfers; ++i) {
        filterHost.Run(NotedEntry, picture, all, host::Execution::repeat);
        applied.push_back(StartTook());
        filterHost.Run(RowsAlone, picture, all, host::Execution::repeat);
        rows.push_back(rowsTook);
        const Clock::time_point start = Clock::now();
        std::memcpy(copy.data(), picture.pixels.data(), copy.size());
        copied.push_back(MillisecondsSince(start));
    }
    Report("Repeat over 8000 by 8000", applied);
    Report("The host's rows alone", rows);
    Report("Plain copy of its bytes", copied);
}
