// Series of many runs of the editor in one process, after which no objects of the system, no memory
// of the process and no buffers of the host are left.
//
// MANY_RUNS in the environment says how many runs make a series, rounded up to whole rounds through
// all dialogs; a thousand take some minutes.
#include <cstdio>
#include <cstdlib>

#include "editor/Operations.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/windows/Levels.Win.h"

namespace {

struct Figures {
    Levels levels;
    std::size_t heapBlocks;
    std::size_t heapBytes;
    bool operator==(const Figures&) const = default;
};

void PrintTo(const Figures& figures, std::ostream* out) {
    PrintTo(figures.levels, out);
    *out << ", " << figures.heapBlocks << " blocks with " << figures.heapBytes << " bytes";
}

/// Adds what is in use on a heap.
void CountHeap(HANDLE heap, Figures& figures) {
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            ++figures.heapBlocks;
            figures.heapBytes += entry.cbData;
        }
    }
    HeapUnlock(heap);
}

Figures TakeFigures() {
    Figures figures{CountLevels(), 0, 0};
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    for (DWORD i = 0; i < count && i < 64; ++i) {
        CountHeap(heaps[i], figures);
    }
    return figures;
}

/// Each round has a run for each dialog.
int RoundsInASeries() {
    const char* const wanted = std::getenv("MANY_RUNS");
    const int runs = wanted != nullptr ? std::atoi(wanted) : 1;
    const int dialogs = static_cast<int>(AllOperations().size());
    return (runs + dialogs - 1) / dialogs;
}

class ManyRunsTest : public PluginRunTest {
  protected:
    /// Opens the editor, applies the operation in its dialog, fills the selection.
    void RunOperation(const Operation& operation) {
        picture = before;
        Run([&](const GuiDriver& gui) {
            const DrivenDialog editor = gui.WaitFor(textureDialog);
            editor.PressToOpen(operation.item);
            const DrivenDialog dialog = gui.WaitFor(operation.id);
            dialog.Press(ApplyItems::apply);
            CloseWith(dialog, okItem);
            CloseWith(editor, TextureItems::apply);
        });
    }
    /// The change that a series made to the figures at its beginning.
    Figures RunSeries(int rounds) {
        for (int i = 0; i < rounds && !HasFailure(); ++i) {
            for (const Operation& operation : AllOperations()) {
                RunOperation(operation);
            }
        }
        return TakeFigures();
    }
};

/// Each run has a host of its own: a strict one keeps what was freed for a while.
///
/// The system keeps some objects of first uses, so a series may find more than the one before: the
/// busy cursor (an icon of three bitmaps), which only a run of a quarter of a second shows, or pens
/// of its colours. But what each run leaves would make every series end above its beginning.
TEST_F(ManyRunsTest, EachDialogInTurnLeavesNothingBehind) {
    SkipNewDialog();
    RunSeries(1);
    const int rounds = RoundsInASeries();
    const std::size_t runs = static_cast<std::size_t>(rounds) * AllOperations().size();
    Figures first = TakeFigures();
    constexpr int seriesAllowed = 8;
    for (int series = 0; series < seriesAllowed; ++series) {
        const Figures last = RunSeries(rounds);
        std::printf("%zu runs: from %s\n      to %s\n", runs, testing::PrintToString(first).c_str(),
                    testing::PrintToString(last).c_str());
        if (last == first || HasFailure()) {
            return;
        }
        first = last;
    }
    FAIL() << "every series of " << runs << " runs left something";
}

}  // namespace
