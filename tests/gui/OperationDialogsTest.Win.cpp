// The dialogs of all operations, over the catalogue: a record that was stored
// goes through the controls and comes out the same, and makes the pixels that the operation makes
// of it alone.
#include <random>
#include <string_view>

#include "editor/Operations.h"
#include "paint/Catalog.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

std::vector<CatalogRow> RowsWithDialogs() {
    std::vector<CatalogRow> rows;
    std::copy_if(Catalog().begin(), Catalog().end(), std::back_inserter(rows),
                 [](const CatalogRow& row) { return row.id != 0; });
    return rows;
}

class OperationDialogsTest : public DialogRunTest {
  protected:
    static DrivenDialog Open(const GuiDriver& gui, const DrivenDialog& editor,
                             const CatalogRow& row) {
        editor.PressToOpen(OperationWithId(row.id)->item);
        return gui.WaitFor(row.id);
    }

    /// Fills the stored record of each operation with values that its dialog gives.
    void StoreRandomRecords(unsigned seed) {
        std::mt19937 generator(seed);
        for (const CatalogRow& row : RowsWithDialogs()) {
            for (const Field& field : row.fields) {
                Store(field, LastUsedRecord(stored, row.id), generator);
            }
        }
        // Forms that go on from the generator's state differ from run to run.
        for (std::int16_t* const form : {&stored.waves.formX, &stored.waves.formY}) {
            *form = *form == waveRandom ? std::int16_t{waveSine} : *form;
        }
        // Values that the dialogs do not offer.
        stored.waves.interpolate = 1;
        stored.lines.colorMode =
            stored.lines.colorMode == linesAverage ? linesAverage : linesRandom;
        stored.shapes.stacking = stored.shapes.stacking == shapesStacked ? 1 : 0;
        stored.dividers.foreground = stored.foreground;
        stored.dividers.background = stored.background;
    }

    /// The operation's own step with the stored record.
    void RunAlone(const CatalogRow& row, PaintClass& texture) const {
        row.run(texture, LastUsedRecord(stored, row.id));
    }

  private:
    static void Store(const Field& field, void* record, std::mt19937& generator) {
        const auto below = [&](std::size_t count) { return generator() % count; };
        if (field.type == FieldType::color) {
            const auto component = [&] { return static_cast<std::uint16_t>(below(0x10000)); };
            WriteColor(field, record, {component(), component(), component()});
        } else if (!field.words.empty()) {
            WriteNumber(field, record, field.words[below(field.words.size())].value);
        } else if (field.type == FieldType::real) {
            constexpr std::size_t percent = 100;
            WriteNumber(field, record, static_cast<double>(below(percent + 1)) / percent);
        } else {
            const auto count = static_cast<std::size_t>(field.high - field.low) + 1;
            WriteNumber(field, record, field.low + static_cast<double>(below(count)));
        }
    }
};

class RandomRecordsTest : public OperationDialogsTest,
                          public testing::WithParamInterface<unsigned> {};

// OK runs the stored record, and the repeat runs it once more.
TEST_P(RandomRecordsTest, GoThroughTheControlsAndMakeTheirPixels) {
    StoreRandomRecords(GetParam());
    const std::unique_ptr<PaintClass> expected = Noise();
    expected->SetColors(&stored.foreground, &stored.background);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const CatalogRow& row : RowsWithDialogs()) {
            CloseWith(Open(gui, editor, row), okItem);
            const int repeat = row.kind == OperationKind::effect ? TextureItems::repeatEffect
                                                                 : TextureItems::repeatFilter;
            WaitUntil("the repeat", [&] { return editor.IsEnabled(repeat); });
            editor.Press(repeat);
            RunAlone(row, *expected);
            RunAlone(row, *expected);
        }
    });
    ExpectApplied(*expected);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRecordsTest, testing::Values(1u, 2u, 3u));

TEST_F(OperationDialogsTest, CancelTakesAllAppliesBack) {
    const std::unique_ptr<PaintClass> noise = Noise();
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const CatalogRow& row : RowsWithDialogs()) {
            const DrivenDialog dialog = Open(gui, editor, row);
            dialog.Press(ApplyItems::apply);
            dialog.Press(ApplyItems::apply);
            gui.HoldKey(VK_CONTROL);
            WaitUntil("Apply again",
                      [&] { return dialog.Text(ApplyItems::apply) == "Apply again"; });
            dialog.Press(ApplyItems::apply);
            gui.ReleaseKey(VK_CONTROL);
            CloseWith(dialog, cancelItem);
            editor.Settle();
        }
        EXPECT_FALSE(editor.IsEnabled(TextureItems::repeatEffect));
        EXPECT_FALSE(editor.IsEnabled(TextureItems::repeatFilter));
    });
    ExpectApplied(*noise);
}

// Every control that takes the focus is reached by Tab, and the three buttons come first.
TEST_F(OperationDialogsTest, TabGoesThroughAllControls) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const CatalogRow& row : RowsWithDialogs()) {
            const DrivenDialog dialog = Open(gui, editor, row);
            TabTo(gui, dialog, okItem);
            const std::vector<int> order = TabOrder(gui, dialog);
            ASSERT_GE(order.size(), 4u) << row.name;
            EXPECT_EQ(std::vector<int>(order.begin(), order.begin() + 3),
                      (std::vector<int>{okItem, cancelItem, ApplyItems::apply}))
                << row.name;
            CloseWith(dialog, cancelItem);
        }
    });
}

// --- Presets in the file ---

class PresetFileTest : public OperationDialogsTest {
  protected:
    using Words = std::vector<std::uint16_t>;
    /// A preset of each effect, in the file's order, as the file has it in every build: words of 16
    /// bits, the lower byte first.
    struct Preset {
        short id;
        Words record;
    };
    const std::vector<Preset> presets{
        {linesDialog, {100, 10, 14, 180, 0xFE00, 0xFD00, 0xFC00}},
        {dropsDialog, {100, 99, 98, 97, 0x0001, 26, 29}},
        {devidersDialog,
         {100, 99, 0x0100, 0x0001, 20, 98, 19, 0x1100, 0x2200, 0x3300, 0x4400, 0x5500, 0x6600}},
        {wavesDialog, {4, 100, 20, 5, 99, 19, 0, 1}},
        {twirlsDialog, {10, 30, 99}},
        {skewDialog, {3, 0}},
        {shapesDialog, {3, 0, 100, 99, 98, 97, 0xFF4C, 0, 0, 0, 0, 0x3FD0, 0,      0,     0, 0x3FF0,
                        3, 5, 96,  95, 94, 1,  0x0001, 0, 0, 0, 0, 0xFE00, 0xFD00, 0xFC00}},
    };
    static constexpr const char* name = "Salt & pepper";

    static std::string BytesOfWords(const Words& words) {
        std::string bytes;
        for (const std::uint16_t word : words) {
            bytes += static_cast<char>(word & 0xFF);
            bytes += static_cast<char>(word >> 8);
        }
        return bytes;
    }
    std::string PresetLists() const {
        constexpr std::size_t nameSize = 256;
        std::string lists;
        for (const Preset& preset : presets) {
            std::string padded = name;
            padded.resize(nameSize);
            lists += BytesOfWords({2}) + padded + BytesOfWords(preset.record);
        }
        return lists;
    }
};

// The two builds for Windows share one file, so each is held to the same bytes.
TEST_F(PresetFileTest, IsTheSameInEveryBuildAndHasThePresetsInTheNextRun) {
    stored.foreground = {0x1100, 0x2200, 0x3300};
    stored.background = {0x4400, 0x5500, 0x6600};
    for (const Preset& preset : presets) {
        const std::string record = BytesOfWords(preset.record);
        std::memcpy(LastUsedRecord(stored, preset.id), record.data(), record.size());
    }
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const Preset& preset : presets) {
            const DrivenDialog dialog = Open(gui, editor, CatalogRowOf(preset.id));
            dialog.PressToOpen(ApplyItems::save);
            const DrivenDialog question = gui.WaitFor(presetDialog);
            TypeInto(gui, question, PresetItems::name, name);
            CloseWith(question, okItem);
            CloseWith(dialog, cancelItem);
        }
    });
    constexpr std::size_t head = 193;
    constexpr std::size_t places = 176;
    const std::string file = BytesOf(folder.Path() / "Zandermolite3.prf");
    ASSERT_GT(file.size(), head + places);
    EXPECT_EQ(file.substr(head, file.size() - head - places), PresetLists());

    Preferences next;
    ASSERT_TRUE(LoadPreferences(next));
    SetDefaultPreferences(next);
    next.launchFlag = 0;
    ASSERT_TRUE(SavePreferences(next));
    picture = before;
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        for (const Preset& preset : presets) {
            const DrivenDialog dialog = Open(gui, editor, CatalogRowOf(preset.id));
            EXPECT_EQ(Entries(dialog, ApplyItems::presets),
                      (std::vector<std::string>{"Last Used", "", name}));
            ChooseEntry(gui, dialog, ApplyItems::presets, 3);
            dialog.Press(ApplyItems::apply);
            CloseWith(dialog, cancelItem);
        }
        CloseWith(editor, cancelItem);
    });
    Preferences after;
    ASSERT_TRUE(LoadPreferences(after));
    for (const Preset& preset : presets) {
        std::string record = BytesOfWords(preset.record);
        if (preset.id == devidersDialog) {
            // Its colours are the editor's of this run.
            record.replace(14, 12, BytesOfWords({0, 0, 0, 0xFFFF, 0xFFFF, 0xFFFF}));
        }
        EXPECT_EQ(
            std::string(static_cast<const char*>(LastUsedRecord(after, preset.id)), record.size()),
            record)
            << CatalogRowOf(preset.id).name;
    }
}

}  // namespace
