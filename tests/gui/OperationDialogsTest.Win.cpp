// What the dialogs of all operations have in common, over the catalogue: a record that was stored
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
        // What the dialogs do not offer.
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

TEST_F(OperationDialogsTest, CancelTakesAnApplyBack) {
    const std::unique_ptr<PaintClass> noise = Noise();
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const CatalogRow& row : RowsWithDialogs()) {
            const DrivenDialog dialog = Open(gui, editor, row);
            dialog.Press(ApplyItems::apply);
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

}  // namespace
