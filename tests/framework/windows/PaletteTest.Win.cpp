// The tool palette: two columns and two rows.
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

class PaletteTest : public ControlsTest {};

POINT CellOf(Script& script, int cell) {
    RECT client{};
    GetClientRect(script.Item(palette), &client);
    const int column = (cell - 1) % 2;
    const int row = (cell - 1) / 2;
    return script.Inside(palette, client.right / 4 + column * client.right / 2,
                         client.bottom / 4 + row * client.bottom / 2);
}

TEST_F(PaletteTest, ThePaletteHasThePicturesCells) {
    Run([&](Script& script) {
        EXPECT_EQ(Send(script, palette, controlGetValue, 0, 0), 1);
        EXPECT_EQ(Send(script, palette, controlGetMinimum, 0, 0), 0);
        EXPECT_EQ(Send(script, palette, controlGetCount, 0, 0), 4);
    });
}

TEST_F(PaletteTest, AClickChoosesATool) {
    Run([&](Script& script) {
        script.Click(CellOf(script, 4));
        script.WaitFor("hit 11");
        EXPECT_EQ(Value(palette), 4);
        LetTimePass();
        script.Click(CellOf(script, 1));
        script.WaitFor("hit 11", 2);
        EXPECT_EQ(Value(palette), 1);
    });
    EXPECT_EQ(Hits(palette), 2);
}

TEST_F(PaletteTest, OnlyAQuickSecondClickOnTheChosenToolCounts) {
    Run([&](Script& script) {
        script.Click(CellOf(script, 2));
        script.WaitFor("hit 11");
        LetTimePass();
        script.Click(CellOf(script, 2));
        EXPECT_EQ(Hits(palette), 1) << "a slow second click does nothing";
        script.Click(CellOf(script, 2));
        script.WaitFor("hit 11 twice");
    });
    EXPECT_EQ(Hits(palette), 2);
}

TEST_F(PaletteTest, TheFirstClickIsNoSecondOne) {
    Run([&](Script& script) {
        // The system's clock begins anew every 49.7 days.
        Log().ticks = 100;
        script.Click(CellOf(script, 1));
        EXPECT_EQ(Hits(palette), 0) << "the tool is chosen already";
        script.Click(CellOf(script, 1));
        script.WaitFor("hit 11 twice");
    });
    EXPECT_EQ(Hits(palette), 1);
}

TEST_F(PaletteTest, ThePaletteCanBeSetAndShowNoTool) {
    Run([&](Script& script) {
        Send(script, palette, controlSetValue, 0, 3);
        EXPECT_EQ(Value(palette), 3);
        Send(script, palette, controlSetValue, 0, 5);
        EXPECT_EQ(Value(palette), 3) << "there is no such cell";
        Send(script, palette, controlSetValue, 0, 0);
        EXPECT_EQ(Value(palette), 0);
        script.Click(CellOf(script, 2));
        script.WaitFor("hit 11");
    });
    EXPECT_EQ(Hits(palette), 1) << "setting tells nobody";
}

TEST_F(PaletteTest, ADisabledPaletteLooksSoAndTakesNoClicks) {
    Run([&](Script& script) {
        const host::Picture before = script.Shot(palette);
        EnableWindow(script.Item(palette), FALSE);
        EXPECT_FALSE(before == script.Shot(palette));
        script.Click(CellOf(script, 4));
    });
    EXPECT_EQ(Hits(palette), 0);
}

}  // namespace
