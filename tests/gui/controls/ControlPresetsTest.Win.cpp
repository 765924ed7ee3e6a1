// The presets of every effect: saved, chosen, deleted, and passed in their live menu.
#include "fixtures/InputDesktop.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "tests/gui/ControlsRun.Win.h"

namespace {

enum class End { low, high };

/// Gives each field of the record a value at one end of what its controls give.
void FillFromControls(const CatalogRow& row, void* record, End end) {
    const bool isHigh = end == End::high;
    for (const NumberRow& number : RowsOf(numberRows, row.id)) {
        const Field& field = FieldNamed(row, number.field);
        WriteNumber(field, record, isHigh ? field.high : field.low);
    }
    for (const BoxRow& box : RowsOf(boxRows, row.id)) {
        WriteNumber(FieldNamed(row, box.field), record, isHigh ? 1 : 0);
    }
    std::vector<RadioRow> radios = RowsOf(radioRows, row.id);
    if (!isHigh) {
        // The first of each group is written last.
        std::reverse(radios.begin(), radios.end());
    }
    for (const RadioRow& radio : radios) {
        WriteNumber(FieldNamed(row, radio.field), record, radio.value);
    }
    for (const PopupRow& popup : RowsOf(popupRows, row.id)) {
        const Field& field = FieldNamed(row, popup.field);
        WriteNumber(field, record, isHigh ? field.high : field.low);
    }
    for (const SwatchRow& swatch : RowsOf(swatchRows, row.id)) {
        const std::uint16_t component = isHigh ? 0xFE00 : 0x0100;
        WriteColor(FieldNamed(row, swatch.field), record, {component, component, component});
    }
}

class EveryEffectTest : public EveryDialogTest {
  protected:
    using Names = std::vector<std::string>;

    void Fill(End end) { FillFromControls(row, LastUsedRecord(preferences, row.id), end); }
    void ExpectFilled(End end) const {
        AnyRecord expected(row);
        FillFromControls(row, expected.Data(), end);
        for (const Field& field : row.fields) {
            if (field.type == FieldType::color) {
                EXPECT_EQ(ReadColor(field, Record()), ReadColor(field, expected.Data()));
            } else {
                EXPECT_EQ(ReadNumber(field, Record()), ReadNumber(field, expected.Data()))
                    << field.name;
            }
        }
    }
    /// Adds a preset of the values at one end.
    void AddFilled(const char* name, End end) {
        void* const preset = ::operator new(row.recordSize);
        std::memcpy(preset, row.defaults, row.recordSize);
        FillFromControls(row, preset, end);
        preferences.presets[row.presets].Append(preset, name);
    }
    static Names NamesIn(const DrivenDialog& dialog) {
        return Entries(dialog, ApplyItems::presets);
    }
};

std::vector<short> IdsOfEffects() {
    std::vector<short> ids = IdsOfDialogs();
    std::erase_if(ids, [](short id) { return CatalogRowOf(id).presets == presetEffectCount; });
    return ids;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryEffectTest, testing::ValuesIn(IdsOfEffects()), NameOfRow);

TEST_P(EveryEffectTest, PresetsAreSavedChosenAndDeleted) {
    Fill(End::high);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        gui.Chord({VK_MENU, 'S'});
        const DrivenDialog question = gui.WaitFor(presetDialog);
        gui.Type("Salt & pepper");
        WaitUntil("the name", [&] { return question.Text(PresetItems::name) == "Salt & pepper"; });
        gui.Chord({VK_RETURN});
        question.WaitUntilClosed();
        EXPECT_EQ(NamesIn(dialog), (Names{"Last Used", "", "Salt & pepper"}));
    });
    Fill(End::low);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        Apply(dialog);
        ExpectFilled(End::low);
        const int before = father.reverts;
        ChooseEntryByMouse(gui, dialog, ApplyItems::presets, 3);
        EXPECT_EQ(father.reverts, before + 1);
        EXPECT_EQ(father.runs, 1) << "a preset is shown, not run";
        Apply(dialog);
        ExpectFilled(End::high);
        EXPECT_EQ(dialog.Value(ApplyItems::presets), 3);
        dialog.ClickMiddle(ApplyItems::remove);
        EXPECT_EQ(AnswerAlert(gui, dialog),
                  "Are you sure you want to delete the preset named <Salt & pepper>?");
        WaitUntil("an empty list", [&] { return NamesIn(dialog) == Names{"Last Used", ""}; });
        EXPECT_FALSE(dialog.IsEnabled(ApplyItems::remove));
    });
}

/// By the dialog's id.
std::string DeleteAssertionOf(short id) {
    switch (id) {
        case linesDialog:
            return "LinesDialog / Zeile 117 !(menuitem > 2)";
        case shapesDialog:
            return "ShapesDialog / Zeile 123 !(menuitem > 2)";
        case dropsDialog:
            return "DropsDialog / Zeile 100 !(menuitem > 2)";
        case devidersDialog:
            return "DevidersDialog / Zeile 105 !(menuitem > 2)";
        case wavesDialog:
            return "WavesDialog / Zeile 106 !(menuitem > 2)";
        case twirlsDialog:
            return "TwirlsDialog / Zeile 104 !(menuitem > 2)";
        case skewDialog:
            return "SkewDialog / Zeile 96 !(menuitem > 2)";
        default:
            return "";
    }
}

// The button is disabled then; messages of another program come all the same.
TEST_P(EveryEffectTest, ADeleteWithoutAPresetIsAFault) {
    platformServices.reportFault = [](std::int16_t id, const char* file, int line) {
        Log().faults.push_back({id, file, line});
    };
    const int ended = Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        WaitUntil("nothing to delete", [&] { return !dialog.IsEnabled(ApplyItems::remove); });
        PostMessageA(dialog.Window(), WM_COMMAND, MAKEWPARAM(ApplyItems::remove, BN_CLICKED),
                     reinterpret_cast<LPARAM>(dialog.Control(ApplyItems::remove)));
        dialog.WaitUntilClosed();
    });
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 2);
    EXPECT_EQ(Log().faults[0].line, -1);
    EXPECT_EQ(Log().faults[0].file, DeleteAssertionOf(row.id));
    EXPECT_EQ(ended, 2);
    errorCell = 0;
}

TEST_P(EveryEffectTest, AMenuLeftWithoutAChoiceLeavesTheValuesAndTheResult) {
    AddFilled("Another", End::low);
    AddFilled("Third", End::high);
    Fill(End::high);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        Apply(dialog);
        const int before = father.reverts;
        const host::Picture tuned = dialog.Grab();
        OpenMenuOf(dialog, ApplyItems::presets);
        PointAtEntry(dialog, ApplyItems::presets, 3);
        EXPECT_NE(dialog.Grab().pixels, tuned.pixels) << "its values are shown";
        PointAtEntry(dialog, ApplyItems::presets, 4);
        PointAtEntry(dialog, ApplyItems::presets, 3);
        gui.Chord({VK_ESCAPE});
        WaitUntilMenuIsClosed(gui, dialog);
        EXPECT_EQ(dialog.Value(ApplyItems::presets), 1);
        EXPECT_FALSE(dialog.IsEnabled(ApplyItems::remove));
        EXPECT_EQ(father.reverts, before);
        CloseWith(dialog, okItem);
    });
    EXPECT_FALSE(isRunOwed) << "the texture shows the result still";
    Open([&](const GuiDriver&, const DrivenDialog& dialog) { Apply(dialog); });
    ExpectFilled(End::high);
}

TEST_P(EveryEffectTest, LastUsedChosenInTheMenuKeepsTheValues) {
    AddFilled("Another", End::low);
    Fill(End::high);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        OpenMenuOf(dialog, ApplyItems::presets);
        PointAtEntry(dialog, ApplyItems::presets, 3);
        PointAtEntry(dialog, ApplyItems::presets, 1);
        gui.PressMouse();
        gui.ReleaseMouse();
        WaitUntilMenuIsClosed(gui, dialog);
        Apply(dialog);
    });
    ExpectFilled(End::high);
}

}  // namespace
