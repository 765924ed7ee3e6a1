// Controls bound to the fields of a record, in ways that no dialog of an operation uses yet; with
// the resources of the real dialogs.
#include "dialogs/tools/ToolsDialog.h"
#include "paint/records/EffectParams.h"
#include "paint/records/FilterParams.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"

namespace {

/// A dialog that consists of its rows.
class BoundDialog : public ToolsDialog {
  public:
    BoundDialog(short newResourceId, hostapi::Rect& newPlacement, void* params,
                const std::function<void(Bindings&)>& addRows)
        : ToolsDialog(newResourceId, nullptr, newPlacement, params) {
        addRows(bindings);
    }
};

class BoundDialogTest : public PluginRunTest {
  protected:
    /// Runs the dialog over `params`; the user closes it.
    void RunBound(short resource, void* params, const std::function<void(Bindings&)>& addRows,
                  const std::function<void(const GuiDriver&, const DrivenDialog&)>& user) {
        hostapi::Rect placement{};
        BoundDialog dialog(resource, placement, params, addRows);
        RunWithUser([&] { dialog.Run(); },
                    [&](const GuiDriver& gui) {
                        const DrivenDialog driven = gui.WaitFor(resource);
                        user(gui, driven);
                        CloseWith(driven, okItem);
                    });
    }
};

TEST_F(BoundDialogTest, ANumberIsShownLessItsOffset) {
    SaturationParams params{30};
    using Items = SaturationItems;
    RunBound(
        saturationDialog, &params,
        [](Bindings& rows) {
            rows.Number(FieldFor(&SaturationParams::saturation),
                        {.field = Items::saturation, .slider = Items::slider}, {.offset = -50});
        },
        [](const GuiDriver& gui, const DrivenDialog& dialog) {
            EXPECT_EQ(dialog.Text(Items::saturation), "-20");
            EXPECT_EQ(dialog.Value(Items::slider), -20);
            TypeInto(gui, dialog, Items::saturation, "50");
            WaitUntil("the slider", [&] { return dialog.Value(Items::slider) == 50; });
            TypeInto(gui, dialog, Items::saturation, "5");
            gui.Type("1");
            EXPECT_EQ(AnswerAlert(gui, dialog),
                      "An integer in the range between -50 and 50 required. Would you like to "
                      "insert the closest value?");
            TabTo(gui, dialog, Items::slider);
            gui.Chord({VK_END});
            WaitUntil("the field", [&] { return dialog.Text(Items::saturation) == "-50"; });
            gui.Chord({VK_RIGHT});
            WaitUntil("one more", [&] { return dialog.Text(Items::saturation) == "-49"; });
        });
    EXPECT_EQ(params.saturation, 1);
}

TEST_F(BoundDialogTest, ANegatedNumberKeepsItsLimits) {
    struct Offset {
        std::int16_t down = 7;
    };
    static constexpr Field down = fields::Number<&Offset::down>("down", -30, 10);
    Offset params;
    using Items = SharpenItems;
    RunBound(
        sharpenDialog, &params,
        [](Bindings& rows) {
            rows.Number(down, {.field = Items::passes, .slider = Items::slider}, {.factor = -1});
        },
        [](const GuiDriver& gui, const DrivenDialog& dialog) {
            EXPECT_EQ(dialog.Text(Items::passes), "-7");
            TabTo(gui, dialog, Items::slider);
            gui.Chord({VK_END});
            WaitUntil("the least", [&] { return dialog.Text(Items::passes) == "-10"; });
            gui.Chord({VK_HOME});
            WaitUntil("the most", [&] { return dialog.Text(Items::passes) == "30"; });
        });
    EXPECT_EQ(params.down, -30);
}

TEST_F(BoundDialogTest, RadioButtonsStandForTheirValues) {
    NoiseParams params;
    using Items = NoiseItems;
    for (const auto& [mode, item] :
         {std::pair{noiseGrey, Items::blackAndWhite}, {noiseColorful, Items::reallyColorful}}) {
        const std::int32_t first = params.mode;
        RunBound(
            noiseDialog, &params,
            [](Bindings& rows) {
                rows.Radios(FieldFor(&NoiseParams::mode), {{noiseGrey, Items::blackAndWhite},
                                                           {noiseColored, Items::colored},
                                                           {noiseColorful, Items::reallyColorful}});
            },
            [&, item = item](const GuiDriver&, const DrivenDialog& dialog) {
                EXPECT_EQ(dialog.Value(Items::colored), first == noiseColored ? 1 : 0);
                EXPECT_EQ(dialog.Value(Items::blackAndWhite), first == noiseGrey ? 1 : 0);
                dialog.Click(item, {6, 8});
                WaitUntil("the button", [&, item = item] { return dialog.Value(item) == 1; });
                EXPECT_EQ(dialog.Value(Items::colored) + dialog.Value(Items::blackAndWhite) +
                              dialog.Value(Items::reallyColorful),
                          1);
            });
        EXPECT_EQ(params.mode, mode);
    }
}

class SkewRowsTest : public BoundDialogTest {
  protected:
    void RunSkewRows(SkewParams& params,
                     const std::function<void(const GuiDriver&, const DrivenDialog&)>& user) {
        RunBound(
            skewDialog, &params,
            [](Bindings& rows) {
                rows.Radios(FieldFor(&SkewParams::direction),
                            RadioRange(SkewItems::firstRadio, SkewItems::lastRadio,
                                       SkewItems::firstPicture));
            },
            user);
    }
    static int On(const DrivenDialog& dialog) {
        int sum = 0;
        for (int item = SkewItems::firstRadio; item <= SkewItems::lastRadio; ++item) {
            sum += dialog.Value(item) != 0 ? item : 0;
        }
        return sum;
    }
};

TEST_F(SkewRowsTest, APictureActsAsItsButton) {
    SkewParams params{1};
    RunSkewRows(params, [](const GuiDriver&, const DrivenDialog& dialog) {
        EXPECT_EQ(On(dialog), SkewItems::firstRadio + 1);
        dialog.ClickMiddle(SkewItems::lastPicture);
        WaitUntil("its button", [&] { return On(dialog) == SkewItems::lastRadio; });
        dialog.ClickMiddle(SkewItems::firstPicture + 2);
        WaitUntil("the next", [&] { return On(dialog) == SkewItems::firstRadio + 2; });
    });
    EXPECT_EQ(params.direction, 2);
}

TEST_F(SkewRowsTest, AValueWithoutAButtonIsKept) {
    SkewParams params{9};
    RunSkewRows(params,
                [](const GuiDriver&, const DrivenDialog& dialog) { EXPECT_EQ(On(dialog), 0); });
    EXPECT_EQ(params.direction, 9);
}

TEST_F(BoundDialogTest, APopupDisablesWhatDependsOnIt) {
    WavesParams params;
    params.formX = waveNone;
    using Items = WavesItems;
    const auto isOn = [](const DrivenDialog& dialog) {
        const bool first = dialog.IsEnabled(Items::horizontalHeight);
        for (const int item : {Items::horizontalHeightSlider, Items::horizontalCountSlider,
                               Items::horizontalCount}) {
            EXPECT_EQ(dialog.IsEnabled(item), first) << item;
        }
        return first;
    };
    RunBound(
        wavesDialog, &params,
        [](Bindings& rows) {
            rows.Popup(FieldFor(&WavesParams::formX), Items::horizontalForm);
            rows.Popup(FieldFor(&WavesParams::formY), Items::verticalForm);
            rows.Disable({Items::horizontalHeightSlider, Items::horizontalHeight,
                          Items::horizontalCountSlider, Items::horizontalCount},
                         Items::horizontalForm, waveNone);
        },
        [&](const GuiDriver& gui, const DrivenDialog& dialog) {
            EXPECT_EQ(dialog.Value(Items::horizontalForm), waveNone);
            EXPECT_EQ(dialog.Value(Items::verticalForm), waveSine);
            EXPECT_FALSE(isOn(dialog));
            ChooseEntry(gui, dialog, Items::horizontalForm, waveRandom);
            EXPECT_TRUE(isOn(dialog));
            ChooseEntry(gui, dialog, Items::verticalForm, waveNone);
            EXPECT_TRUE(isOn(dialog));
            ChooseEntry(gui, dialog, Items::horizontalForm, waveNone);
            EXPECT_FALSE(isOn(dialog));
            ChooseEntry(gui, dialog, Items::horizontalForm, waveSquare);
        });
    EXPECT_EQ(params.formX, waveSquare);
    EXPECT_EQ(params.formY, waveNone);
}

TEST_F(BoundDialogTest, APartOfOneIsShownInPercent) {
    ShapesParams params;
    params.sizeX = 0.57;
    using Items = ShapesItems;
    RunBound(
        shapesDialog, &params,
        [](Bindings& rows) {
            rows.Number(FieldFor(&ShapesParams::sizeX),
                        {.field = Items::width, .slider = Items::widthSlider}, {.factor = 100});
            rows.Number(FieldFor(&ShapesParams::sizeY),
                        {.field = Items::height, .slider = Items::heightSlider}, {.factor = 100});
        },
        [](const GuiDriver& gui, const DrivenDialog& dialog) {
            EXPECT_EQ(dialog.Text(Items::width), "57");
            EXPECT_EQ(dialog.Value(Items::heightSlider), 67);
            DragSlider(dialog, Items::heightSlider, {0, 100}, {29});
            EXPECT_EQ(dialog.Text(Items::height), "29");
            EXPECT_EQ(dialog.Text(Items::width), "57") << "a row of its own";
            gui.Chord({VK_HOME});
            WaitUntil("all of it", [&] { return dialog.Text(Items::height) == "100"; });
        });
    EXPECT_EQ(params.sizeX, 0.57);
    EXPECT_EQ(params.sizeY, 1.0);
}

}  // namespace
