// Dialogs with rules of their own: Dividers, Waves and Mosaic.
#include "tests/gui/ControlsRun.Win.h"

namespace {

class DividersControlsTest : public ControlsTest {
  protected:
    DividersControlsTest() : ControlsTest(devidersDialog) {}

    using Items = DividersItems;
};

TEST_F(DividersControlsTest, RandomColoursTurnTransparentOnAndGrey) {
    preferences.dividers.transparent = 0;
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        EXPECT_TRUE(dialog.IsEnabled(Items::transparent));
        EXPECT_EQ(dialog.Value(Items::transparent), 0);
        dialog.Click(Items::randomColors, {6, 8});
        WaitUntil("grey", [&] { return !dialog.IsEnabled(Items::transparent); });
        EXPECT_EQ(dialog.Value(Items::transparent), 1);
        ExpectRead(dialog, "transparent", 1);
        dialog.Click(Items::pickedColors, {6, 8});
        WaitUntil("the box", [&] { return dialog.IsEnabled(Items::transparent); });
        EXPECT_EQ(dialog.Value(Items::transparent), 1);
    });
}

TEST_F(DividersControlsTest, AStoredRecordIsShownAsItIs) {
    preferences.dividers.randomColors = 1;
    preferences.dividers.transparent = 0;
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        EXPECT_FALSE(dialog.IsEnabled(Items::transparent));
        EXPECT_EQ(dialog.Value(Items::transparent), 0);
        ExpectRead(dialog, "transparent", 0);
    });
}

TEST_F(DividersControlsTest, TheEditorsColoursAreTakenAtEveryRead) {
    DividersParams other;
    other.lines = 7;
    other.foreground = {1, 2, 3};
    other.background = {4, 5, 6};
    AddPreset(preferences.presets[presetDividers], other, "Other");
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        const auto expectColors = [&] {
            Apply(dialog);
            EXPECT_EQ(preferences.dividers.foreground, father.foreground);
            EXPECT_EQ(preferences.dividers.background, father.background);
        };
        expectColors();
        ChooseEntry(gui, dialog, ApplyItems::presets, 3);
        expectColors();
        EXPECT_EQ(preferences.dividers.lines, 7);
        father.foreground = {0x7700, 0, 0};
        father.background = {0, 0x7700, 0};
        expectColors();
    });
}

class WavesControlsTest : public ControlsTest {
  protected:
    WavesControlsTest() : ControlsTest(wavesDialog) {}

    using Items = WavesItems;
    struct Side {
        int form;
        std::vector<int> others;
    };
    const Side horizontal{Items::horizontalForm,
                          {Items::horizontalHeight, Items::horizontalHeightSlider,
                           Items::horizontalCount, Items::horizontalCountSlider}};
    const Side vertical{Items::verticalForm,
                        {Items::verticalHeight, Items::verticalHeightSlider, Items::verticalCount,
                         Items::verticalCountSlider}};

    static void ExpectEnabled(const DrivenDialog& dialog, const Side& side, bool isOn) {
        for (const int item : side.others) {
            EXPECT_EQ(dialog.IsEnabled(item), isOn) << item;
        }
    }
};

TEST_F(WavesControlsTest, NoneDisablesItsSide) {
    preferences.waves.formY = waveNone;
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        ExpectEnabled(dialog, horizontal, true);
        ExpectEnabled(dialog, vertical, false);
        ChooseEntry(gui, dialog, vertical.form, waveRandom);
        ExpectEnabled(dialog, vertical, true);
        ChooseEntry(gui, dialog, horizontal.form, waveNone);
        ExpectEnabled(dialog, horizontal, false);
        ExpectEnabled(dialog, vertical, true);
        ChooseEntryByMouse(gui, dialog, horizontal.form, waveSquare);
        ExpectEnabled(dialog, horizontal, true);
    });
}

TEST_F(WavesControlsTest, TheBytesWithoutControlsAreAlwaysTheSame) {
    preferences.waves.unused12 = 9;
    preferences.waves.interpolate = 0;
    Open([&](const GuiDriver&, const DrivenDialog& dialog) { Apply(dialog); });
    EXPECT_EQ(preferences.waves.unused12, 0);
    EXPECT_EQ(preferences.waves.interpolate, 1);
}

class MosaicControlsTest : public ControlsTest {
  protected:
    MosaicControlsTest() : ControlsTest(mosaicDialog) {}

    /// The places that the arrow comes to from the first entry on.
    static std::vector<int> PlacesOf(const GuiDriver& gui, const DrivenDialog& dialog, int item) {
        std::vector<int> places;
        TabTo(gui, dialog, item);
        gui.Chord({VK_HOME});
        do {
            gui.WaitUntilIdle();
            places.push_back(dialog.Value(item));
            gui.Chord({VK_DOWN});
            gui.WaitUntilIdle();
        } while (dialog.Value(item) != places.back());
        return places;
    }
};

TEST_F(MosaicControlsTest, OffersTheDivisorsOfEachSide) {
    father.size = {100, 150};
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        EXPECT_EQ(PlacesOf(gui, dialog, MosaicItems::horizontal),
                  (std::vector<int>{1, 3, 4, 6, 7}));
        EXPECT_EQ(PlacesOf(gui, dialog, MosaicItems::vertical), (std::vector<int>{1, 3, 5, 6}));
        Keep(dialog, "mosaic-100-150");
    });
}

TEST_F(MosaicControlsTest, ASideOfSevenPixelsHasSevenAlone) {
    father.size = {8, 7};
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        EXPECT_EQ(PlacesOf(gui, dialog, MosaicItems::horizontal), (std::vector<int>{1, 8}));
        EXPECT_EQ(PlacesOf(gui, dialog, MosaicItems::vertical), (std::vector<int>{1, 3, 5, 9}));
    });
}

}  // namespace
