// The dialogs of all operations of the catalogue: a stored record goes through the controls
// unchanged, a record that is set in the controls is the one that runs, and both make the pixels
// that a recipe makes.
//
// RANDOM_RECORDS in the environment says how many random records of each operation are set in the
// controls.
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string_view>

#include "editor/Operations.h"
#include "paint/Catalog.h"
#include "paint/math/Random.h"
#include "tests/gui/ControlTables.Win.h"
#include "tests/gui/DialogRun.Win.h"
#include "tests/gui/ReadingOrder.Win.h"
#include "tests/gui/RecipeRun.Win.h"
#include "tests/gui/ShownView.Win.h"

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

    /// Fills the record of each operation with values that its dialog gives.
    static void FillWithRandomRecords(Preferences& preferences, unsigned seed) {
        std::mt19937 generator(seed);
        for (const CatalogRow& row : RowsWithDialogs()) {
            for (const Field& field : row.fields) {
                Fill(field, LastUsedRecord(preferences, row.id), generator);
            }
        }
        // Values that the dialogs do not offer.
        preferences.waves.interpolate = 1;
        preferences.lines.colorMode =
            preferences.lines.colorMode == linesAverage ? linesAverage : linesRandom;
        preferences.shapes.stacking = preferences.shapes.stacking == shapesStacked ? 1 : 0;
        preferences.dividers.foreground = preferences.foreground;
        preferences.dividers.background = preferences.background;
    }

    /// The line of a recipe that runs the operation with the record in the preferences.
    static std::string LineOf(const CatalogRow& row, Preferences& preferences) {
        return RecipeLine(row, LastUsedRecord(preferences, row.id));
    }

    /// The command that runs the operation once more.
    static int RepeatOf(const CatalogRow& row) {
        return row.kind == OperationKind::effect ? TextureItems::repeatEffect
                                                 : TextureItems::repeatFilter;
    }

  private:
    static void Fill(const Field& field, void* record, std::mt19937& generator) {
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
    FillWithRandomRecords(stored, GetParam());
    std::vector<Pixel> expected;
    {
        RecipeRun recipe([&] { return Noise(); });
        for (const CatalogRow& row : RowsWithDialogs()) {
            recipe.Run(LineOf(row, stored));
            recipe.Run(LineOf(row, stored));
        }
        expected = recipe.Colors();
    }
    SetSeed(RecipeRun::seed);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const CatalogRow& row : RowsWithDialogs()) {
            CloseWith(Open(gui, editor, row), okItem);
            WaitUntil("the repeat", [&] { return editor.IsEnabled(RepeatOf(row)); });
            editor.Press(RepeatOf(row));
        }
    });
    EXPECT_EQ(ColorsOf(*Applied()), expected);
    ExpectFilledWithApplied();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRecordsTest, testing::Values(1u, 2u, 3u));

// --- Records that are set in the controls ---

/// 1, 2 and so on, as many as RANDOM_RECORDS says.
std::vector<unsigned> SeedsOfRecords() {
    const char* const wanted = std::getenv("RANDOM_RECORDS");
    std::vector<unsigned> seeds(wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : 1);
    std::iota(seeds.begin(), seeds.end(), 1u);
    return seeds;
}

class SetRecordsTest : public OperationDialogsTest, public testing::WithParamInterface<unsigned> {
  protected:
    /// The texture after a run from the dialog, and after one by the repeat.
    struct TwoRuns {
        std::vector<Pixel> byDialog;
        std::vector<Pixel> byRepeat;
    };

    SetRecordsTest() {
        constexpr unsigned others = 1000;
        FillWithRandomRecords(stored, GetParam() + others);
        FillWithRandomRecords(wanted, GetParam());
        KeepToControls();
    }

    /// The results of the operations on the noise, each on the noise itself.
    std::vector<TwoRuns> RunsOfRecipes() {
        RecipeRun recipe([&] { return Noise(); });
        const auto runOnce = [&](const CatalogRow& row) {
            recipe.Run(LineOf(row, wanted));
            std::vector<Pixel> colors = recipe.Colors();
            recipe.Run("undo");
            return colors;
        };
        std::vector<TwoRuns> runs;
        for (const CatalogRow& row : RowsWithDialogs()) {
            std::vector<Pixel> byDialog = runOnce(row);
            runs.push_back({std::move(byDialog), runOnce(row)});
        }
        return runs;
    }

    /// Sets all controls that are not disabled to the wanted record, with the mouse and the keys.
    void SetControls(const GuiDriver& gui, const DrivenDialog& dialog, const CatalogRow& row) {
        const void* const record = LastUsedRecord(wanted, row.id);
        // A colour chooses a radio button, and buttons and popups enable numbers.
        for (const SwatchRow& swatch : RowsOf(swatchRows, row.id)) {
            SetSwatch(gui, dialog, swatch, ReadColor(FieldNamed(row, swatch.field), record));
        }
        const auto numberOf = [&](std::string_view field) {
            return ReadNumber(FieldNamed(row, field), record);
        };
        for (const BoxRow& box : RowsOf(boxRows, row.id)) {
            SetBox(dialog, box, static_cast<int>(numberOf(box.field)));
        }
        for (const RadioRow& radio : RowsOf(radioRows, row.id)) {
            if (radio.value == numberOf(radio.field)) {
                ClickRadio(dialog, radio);
            }
        }
        // After the radio buttons, which disable and enable them.
        for (const BoxRow& box : RowsOf(boxRows, row.id)) {
            SetBox(dialog, box, static_cast<int>(numberOf(box.field)));
        }
        for (const PopupRow& popup : RowsOf(popupRows, row.id)) {
            ChooseEntry(gui, dialog, popup.item, static_cast<int>(numberOf(popup.field)));
        }
        for (const NumberRow& number : RowsOf(numberRows, row.id)) {
            SetNumber(gui, dialog, number, row, numberOf(number.field));
        }
    }

    /// Waits until the drawing area shows the texture in all of its middle tile. No size marks are
    /// there, and nothing covers it.
    void ExpectTile(const DrivenDialog& editor, const std::vector<Pixel>& expected,
                    const std::string& what) const {
        WaitUntil("the tile after " + what, [&] { return ShownTile(editor) == expected; });
    }

    void ExpectWantedRecords() {
        Preferences after;
        ASSERT_TRUE(LoadPreferences(after));
        for (const CatalogRow& row : RowsWithDialogs()) {
            EXPECT_EQ(LineOf(row, after), LineOf(row, wanted));
        }
    }

    Preferences wanted;

  private:
    /// Changes the wanted records to values that the controls can be set to.
    void KeepToControls() {
        // The system's dialog gives colours of a byte.
        for (RGBColor16* const color :
             {&wanted.lines.color, &wanted.shapes.color, &wanted.addColor.color}) {
            *color = {static_cast<std::uint16_t>(color->red & 0xFF00),
                      static_cast<std::uint16_t>(color->green & 0xFF00),
                      static_cast<std::uint16_t>(color->blue & 0xFF00)};
        }
        KeepToDivisors(wanted.mosaic.horizontal, width);
        KeepToDivisors(wanted.mosaic.vertical, height);
        if (wanted.dividers.randomColors != 0) {
            wanted.dividers.transparent = 1;
        }
        // Disabled controls stay as they were.
        if (wanted.blur.motion == 0) {
            wanted.blur.direction = stored.blur.direction;
        }
        if (wanted.waves.formX == waveNone) {
            wanted.waves.heightX = stored.waves.heightX;
            wanted.waves.countX = stored.waves.countX;
        }
        if (wanted.waves.formY == waveNone) {
            wanted.waves.heightY = stored.waves.heightY;
            wanted.waves.countY = stored.waves.countY;
        }
    }
    /// The entries of Mosaic that can be chosen are those whose label, one less than the value,
    /// divides the side.
    static void KeepToDivisors(std::int16_t& value, int side) {
        while (value != 1 && side % (value - 1) != 0) {
            --value;
        }
        value = value == 2 ? std::int16_t{1} : value;
    }

    static void SetSwatch(const GuiDriver& gui, const DrivenDialog& dialog, const SwatchRow& swatch,
                          const RGBColor16& color) {
        dialog.ClickMiddle(swatch.item);
        const DrivenDialog colors = gui.WaitForTitle("Color");
        constexpr int firstComponent = 0x2C2;
        const std::uint16_t components[]{color.red, color.green, color.blue};
        for (int i = 0; i < 3; ++i) {
            colors.SetText(firstComponent + i, std::to_string(components[i] >> 8));
        }
        CloseWith(colors, IDOK);
        dialog.Settle();
    }
    static void ClickRadio(const DrivenDialog& dialog, const RadioRow& radio) {
        if (dialog.IsEnabled(radio.item)) {
            dialog.Click(radio.item, {6, 8});
            WaitUntil("the button", [&] { return dialog.Value(radio.item) != 0; });
        }
    }
    static void SetBox(const DrivenDialog& dialog, const BoxRow& box, int value) {
        if (dialog.IsEnabled(box.item) && dialog.Value(box.item) != value) {
            dialog.Click(box.item, {6, 8});
            WaitUntil("the box", [&] { return dialog.Value(box.item) == value; });
        }
    }
    /// Half of the numbers that have a field and a slider are set by the slider.
    static void SetNumber(const GuiDriver& gui, const DrivenDialog& dialog, const NumberRow& number,
                          const CatalogRow& row, double value) {
        const int shown = static_cast<int>(std::lround(value * number.factor)) + number.offset;
        const bool byField = number.slider == 0 || (number.item != 0 && shown % 2 == 0);
        if (!dialog.IsEnabled(byField ? number.item : number.slider)) {
            return;
        }
        if (byField) {
            TypeInto(gui, dialog, number.item, std::to_string(shown));
            return;
        }
        const Limits limits = ShownLimits(number, FieldNamed(row, number.field));
        SetSlider(gui, dialog, number.slider, {limits.low, limits.high}, shown);
    }
    /// Moves the slider to its place with the mouse, then with the arrow keys to the value, of
    /// which a pixel may stand for several.
    static void SetSlider(const GuiDriver& gui, const DrivenDialog& dialog, int item,
                          SliderLimits limits, int value) {
        dialog.Click(item, PlaceOnSlider(dialog, item, limits, value));
        dialog.Settle();
        TabTo(gui, dialog, item);
        while (dialog.Value(item) != value) {
            const int before = dialog.Value(item);
            gui.Chord({static_cast<WORD>(before < value ? VK_RIGHT : VK_LEFT)});
            WaitUntil("another value", [&] { return dialog.Value(item) != before; });
        }
        dialog.Settle();
    }

    std::vector<Pixel> ShownTile(const DrivenDialog& editor) const {
        const ShownView view(editor);
        const ItemPlace first = PlaceOfPixel(editor, width, height);
        std::vector<Pixel> colors;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                colors.push_back(view.At({first.x + x, first.y + y}));
            }
        }
        return colors;
    }
};

// The dialog, the repeat and a recipe make the same of the same texture.
TEST_P(SetRecordsTest, MakeTheSamePixelsThreeWays) {
    const std::vector<TwoRuns> expected = RunsOfRecipes();
    SetSeed(RecipeRun::seed);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        gui.Type("m");
        auto runs = expected.begin();
        for (const CatalogRow& row : RowsWithDialogs()) {
            const DrivenDialog dialog =
                OpenDialog(gui, editor, OperationWithId(row.id)->item, row.id);
            SetControls(gui, dialog, row);
            dialog.Press(ApplyItems::apply);
            CloseWith(dialog, okItem);
            ExpectTile(editor, runs->byDialog, row.name);
            editor.Choose(commandUndo);
            editor.Press(RepeatOf(row));
            ExpectTile(editor, runs->byRepeat, std::string("the repeat of ") + row.name);
            editor.Choose(commandUndo);
            ++runs;
        }
    });
    ExpectApplied(*Noise());
    ExpectWantedRecords();
}

INSTANTIATE_TEST_SUITE_P(Seeds, SetRecordsTest, testing::ValuesIn(SeedsOfRecords()));

// --- Laws of all dialogs ---

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

// Every control is enabled, so that Tab reaches each that can have the focus.
TEST_F(OperationDialogsTest, TabGoesThroughAllControlsAsTheyAreRead) {
    stored.blur.motion = 1;
    stored.dividers.randomColors = 0;
    for (const CatalogRow& row : RowsWithDialogs()) {
        if (row.presets != presetEffectCount) {
            void* const preset = ::operator new(row.recordSize);
            std::memcpy(preset, LastUsedRecord(stored, row.id), row.recordSize);
            stored.presets[row.presets].Append(preset, "Some");
        }
    }
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const CatalogRow& row : RowsWithDialogs()) {
            const DrivenDialog dialog = Open(gui, editor, row);
            if (row.presets != presetEffectCount) {
                ChooseEntry(gui, dialog, ApplyItems::presets, 3);
                WaitUntil("Delete", [&] { return dialog.IsEnabled(ApplyItems::remove); });
            }
            TabTo(gui, dialog, okItem);
            EXPECT_EQ(TabOrder(gui, dialog), ReadingOrder(dialog)) << row.name;
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
