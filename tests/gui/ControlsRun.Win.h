// The dialogs of the operations alone: in the editor's place is a count of what they ask of it.
#pragma once

#include <algorithm>

#include "editor/Operations.h"
#include "tests/gui/ControlTables.Win.h"
#include "tests/gui/DialogRun.Win.h"

/// In the editor's place.
class CountingFather final : public ApplyFather {
  public:
    NorvantaDialog* FatherDialog() override { return nullptr; }
    void RevertToUndo() override { ++reverts; }
    void RunOperation(short) override { ++runs; }
    hostapi::Point TextureSize() const override { return size; }
    const RGBColor16& Foreground() const override { return foreground; }
    const RGBColor16& Background() const override { return background; }

    /// All that Mosaic offers divides it.
    hostapi::Point size{840, 840};
    std::atomic<int> reverts = 0;
    std::atomic<int> runs = 0;
    RGBColor16 foreground{0x1100, 0x2200, 0x3300};
    RGBColor16 background{0x4400, 0x5500, 0x6600};
};

class ControlsTest : public PluginRunTest {
  protected:
    using User = std::function<void(const GuiDriver&, const DrivenDialog&)>;

    explicit ControlsTest(short id) : row(CatalogRowOf(id)) {
        // Controls that are disabled otherwise.
        preferences.blur.motion = 1;
        preferences.dividers.randomColors = 0;
    }

    /// Opens the dialog and cancels it at the end if the user has not closed it.
    /// @return what it ended with
    int Open(const User& user) {
        SimpleLink* const presets =
            row.presets != presetEffectCount ? &preferences.presets[row.presets] : nullptr;
        const std::unique_ptr<ApplyDialog> dialog =
            OperationWithId(row.id)->makeDialog({&father, placement, presets}, preferences);
        int ended = 0;
        RunWithUser([&] { ended = dialog->Run(); },
                    [&](const GuiDriver& gui) {
                        const DrivenDialog driven = gui.WaitFor(row.id);
                        user(gui, driven);
                        if (driven.IsOpen()) {
                            CloseWith(driven, cancelItem);
                        }
                    });
        isRunOwed = dialog->WasApplied();
        return ended;
    }

    const void* Record() const { return LastUsedRecord(preferences, row.id); }
    const Field& FieldOf(std::string_view name) const { return FieldNamed(row, name); }

    /// Applies, lets the user change a control, and expects that the result is taken back and that
    /// the next Apply runs with the value.
    void ExpectTaken(const DrivenDialog& dialog, std::string_view field, double value,
                     const std::function<void()>& change) {
        Apply(dialog);
        const int before = father.reverts;
        change();
        WaitUntil("the result to go after " + std::string(field),
                  [&] { return father.reverts == before + 1; });
        ExpectRead(dialog, field, value);
    }
    void ExpectRead(const DrivenDialog& dialog, std::string_view field, double value) const {
        Apply(dialog);
        EXPECT_EQ(ReadNumber(FieldOf(field), Record()), value) << field;
    }
    /// Leaves the focus where it is.
    static void Apply(const DrivenDialog& dialog) {
        Ask(dialog.Window(), WM_COMMAND, MAKEWPARAM(ApplyItems::apply, BN_CLICKED),
            reinterpret_cast<LPARAM>(dialog.Control(ApplyItems::apply)));
    }

    const CatalogRow& row;
    Preferences preferences;
    CountingFather father;
    hostapi::Rect placement{};
    bool isRunOwed = false;
};

class EveryDialogTest : public ControlsTest, public testing::WithParamInterface<short> {
  protected:
    EveryDialogTest() : ControlsTest(GetParam()) {}

    template <typename Row>
    std::vector<Row> Rows(std::span<const Row> table) const {
        return RowsOf(table, row.id);
    }
    /// The limits that the controls show.
    Limits LimitsOf(const NumberRow& number) const {
        return ShownLimits(number, FieldOf(number.field));
    }
};

/// Waits until the field and the slider of the number, where it has them, show the value.
inline void ExpectPartners(const DrivenDialog& dialog, const NumberRow& number, int value) {
    if (number.item != 0) {
        WaitUntil("the field at " + std::to_string(value),
                  [&] { return dialog.Text(number.item) == std::to_string(value); });
    }
    if (number.slider != 0) {
        WaitUntil("the slider at " + std::to_string(value),
                  [&] { return dialog.Value(number.slider) == value; });
    }
}

inline std::vector<short> IdsOfDialogs() {
    std::vector<short> ids;
    for (const Operation& operation : AllOperations()) {
        ids.push_back(operation.id);
    }
    return ids;
}

inline std::string NameOfRow(const testing::TestParamInfo<short>& info) {
    return CatalogRowOf(info.param).name;
}

/// The dialogs that have such controls.
template <typename Row>
std::vector<short> IdsWith(std::span<const Row> table,
                           const std::function<bool(const Row&)>& fits) {
    std::vector<short> ids = IdsOfDialogs();
    std::erase_if(ids, [&](short id) {
        const std::vector<Row> rows = RowsOf(table, id);
        return std::none_of(rows.begin(), rows.end(), fits);
    });
    return ids;
}

template <typename Row>
std::vector<short> IdsWith(std::span<const Row> table) {
    return IdsWith<Row>(table, [](const Row&) { return true; });
}
