// The dialog of Lines: its controls, each of which takes an applied result back.
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

class LinesDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenLines(const GuiDriver& gui, const DrivenDialog& editor) {
        return OpenDialog(gui, editor, TextureItems::lines, linesDialog);
    }
    static std::unique_ptr<PaintClass> LinesOf(const LinesParams& params) {
        std::unique_ptr<PaintClass> texture = Blank();
        RunLines(*texture, params);
        return texture;
    }
    /// Chooses a preset, presses Apply, then lets the user change something: the texture is as it
    /// was before the dialog, and the popup shows "Last Used". OK then draws with the new settings.
    void ExpectTakenBack(
        const LinesParams& expected,
        const std::function<void(const GuiDriver& gui, const DrivenDialog& lines)>& change);
};

void LinesDialogTest::ExpectTakenBack(
    const LinesParams& expected,
    const std::function<void(const GuiDriver& gui, const DrivenDialog& lines)>& change) {
    const std::unique_ptr<PaintClass> blank = Blank();
    const std::unique_ptr<PaintClass> plain = LinesOf({});
    AddPreset(stored.presets[presetLines], LinesParams{}, "Plain");
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        lines.Press(ApplyItems::apply);
        ExpectShown(editor, *plain);
        EXPECT_EQ(lines.Value(ApplyItems::presets), 3);
        change(gui, lines);
        WaitUntil("the popup", [&] { return lines.Value(ApplyItems::presets) == 1; });
        ExpectShown(editor, *blank);
        CloseWith(lines, okItem);
    });
    ExpectApplied(*LinesOf(expected));
}

TEST_F(LinesDialogTest, StartsWithTheStoredValues) {
    stored.lines = {30, linesInk, linesAverage, -120, {0x1000, 0x2000, 0x3000}};
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        EXPECT_EQ(lines.Title(), "Lines");
        EXPECT_EQ(lines.Value(LinesItems::precision), 30);
        EXPECT_EQ(lines.Value(LinesItems::ink), 1);
        EXPECT_EQ(lines.Value(LinesItems::wax), 0);
        EXPECT_EQ(lines.Value(LinesItems::random), 0);
        EXPECT_EQ(lines.Value(LinesItems::averageColor), 1);
        EXPECT_EQ(lines.Text(LinesItems::angle), "-120");
        EXPECT_EQ(lines.Text(ApplyItems::apply), "Apply");
        WaitUntil("nothing to delete", [&] { return !lines.IsEnabled(ApplyItems::remove); });
        const RECT swatch = lines.Bounds(LinesItems::color);
        const host::Picture shown = lines.Grab();
        const std::uint8_t* const pixel =
            shown.Pixel(static_cast<int>(swatch.left + swatch.right) / 2,
                        static_cast<int>(swatch.top + swatch.bottom) / 2);
        EXPECT_EQ(Color(pixel[0], pixel[1], pixel[2]), Color(0x10, 0x20, 0x30));
        CloseWith(lines, okItem);
    });
    ExpectApplied(*LinesOf(stored.lines));
}

TEST_F(LinesDialogTest, InkAndWaxByTheMouse) {
    LinesParams expected;
    expected.appearance = linesInk;
    ExpectTakenBack(expected, [](const GuiDriver&, const DrivenDialog& lines) {
        lines.Click(LinesItems::ink, {6, 8});
        WaitUntil("ink", [&] { return lines.Value(LinesItems::ink) == 1; });
        EXPECT_EQ(lines.Value(LinesItems::wax), 0);
        EXPECT_EQ(lines.Value(LinesItems::random), 1) << "a pair of its own";
    });
}

TEST_F(LinesDialogTest, BackToWax) {
    LinesParams expected;
    ExpectTakenBack(expected, [](const GuiDriver&, const DrivenDialog& lines) {
        lines.Press(LinesItems::ink);
        lines.Press(LinesItems::wax);
        EXPECT_EQ(lines.Value(LinesItems::wax), 1);
        EXPECT_EQ(lines.Value(LinesItems::ink), 0);
    });
}

TEST_F(LinesDialogTest, AverageAndRandomByTheMouse) {
    LinesParams expected;
    expected.colorMode = linesAverage;
    ExpectTakenBack(expected, [](const GuiDriver&, const DrivenDialog& lines) {
        lines.Click(LinesItems::averageColor, {6, 8});
        WaitUntil("average", [&] { return lines.Value(LinesItems::averageColor) == 1; });
        EXPECT_EQ(lines.Value(LinesItems::random), 0);
        lines.Click(LinesItems::random, {6, 8});
        WaitUntil("random", [&] { return lines.Value(LinesItems::random) == 1; });
        EXPECT_EQ(lines.Value(LinesItems::averageColor), 0);
        lines.Press(LinesItems::averageColor);
    });
}

TEST_F(LinesDialogTest, ThePrecisionByTheMouse) {
    LinesParams expected;
    expected.precision = 3;
    ExpectTakenBack(expected, [](const GuiDriver&, const DrivenDialog& lines) {
        DragSlider(lines, LinesItems::precision, {0, 100}, {80, 3});
    });
}

TEST_F(LinesDialogTest, ThePrecisionByTheKeys) {
    LinesParams expected;
    expected.precision = 0;
    ExpectTakenBack(expected, [](const GuiDriver& gui, const DrivenDialog& lines) {
        TabTo(gui, lines, LinesItems::precision);
        gui.Chord({VK_END});
        WaitUntil("the lowest precision", [&] { return lines.Value(LinesItems::precision) == 0; });
    });
}

TEST_F(LinesDialogTest, TheAngleByTheMouse) {
    LinesParams expected;
    expected.angle = -90;
    ExpectTakenBack(expected, [](const GuiDriver&, const DrivenDialog& lines) {
        const RECT globe = lines.Bounds(LinesItems::globe);
        const int x = static_cast<int>(globe.right - globe.left) / 2;
        const int y = static_cast<int>(globe.bottom - globe.top) / 2;
        std::vector<std::string> angles{"180", "90", "-90"};
        lines.Drag(LinesItems::globe, {{x, y + 25}, {x + 25, y}, {x - 25, y}}, [&] {
            // The field follows while the button is down.
            WaitUntil("the angle " + angles.front(), [&] {
                const std::string text = lines.Text(LinesItems::angle);
                return text == angles.front() || (angles.front() == "180" && text == "-180");
            });
            angles.erase(angles.begin());
        });
    });
}

/// The angle that the dial shows.
std::vector<std::uint8_t> DialOf(const DrivenDialog& lines) {
    const RECT dial = lines.Bounds(LinesItems::globe);
    const host::Picture whole = lines.Grab();
    std::vector<std::uint8_t> bytes;
    for (LONG y = dial.top; y < dial.bottom; ++y) {
        const std::uint8_t* const row =
            whole.Pixel(static_cast<int>(dial.left), static_cast<int>(y));
        bytes.insert(bytes.end(), row, row + 3 * (dial.right - dial.left));
    }
    return bytes;
}

TEST_F(LinesDialogTest, TheAngleByItsFieldTurnsTheDial) {
    LinesParams expected;
    expected.angle = 170;
    ExpectTakenBack(expected, [](const GuiDriver& gui, const DrivenDialog& lines) {
        const std::vector<std::uint8_t> still = DialOf(lines);
        TypeInto(gui, lines, LinesItems::angle, "170");
        WaitUntil("the dial to turn", [&] { return DialOf(lines) != still; });
    });
}

TEST_F(LinesDialogTest, TheAngleOfAPresetTurnsTheDial) {
    AddPreset(stored.presets[presetLines], LinesParams{}, "Plain");
    LinesParams turned;
    turned.angle = -120;
    AddPreset(stored.presets[presetLines], turned, "Turned");
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        const std::vector<std::uint8_t> plain = DialOf(lines);
        ChooseEntry(gui, lines, ApplyItems::presets, 4);
        WaitUntil("the dial to turn", [&] { return DialOf(lines) != plain; });
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        WaitUntil("the dial to turn back", [&] { return DialOf(lines) == plain; });
        CloseWith(lines, cancelItem);
    });
}

TEST_F(LinesDialogTest, AnEmptyAngleTakesWhatTheDialIsTurnedTo) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        TabTo(gui, lines, LinesItems::angle);
        gui.Chord({VK_DELETE});
        WaitUntil("nothing", [&] { return lines.Text(LinesItems::angle).empty(); });
        const RECT globe = lines.Bounds(LinesItems::globe);
        const int x = static_cast<int>(globe.right - globe.left) / 2;
        const int y = static_cast<int>(globe.bottom - globe.top) / 2;
        lines.Drag(LinesItems::globe, {{x + 25, y}},
                   [&] { WaitUntil("90", [&] { return lines.Text(LinesItems::angle) == "90"; }); });
        EXPECT_EQ(FocusedItem(lines), LinesItems::angle) << "the dial takes no focus";
        TabTo(gui, lines, okItem);
        EXPECT_EQ(lines.Text(LinesItems::angle), "90");
        CloseWith(lines, okItem);
    });
    LinesParams expected;
    expected.angle = 90;
    ExpectApplied(*LinesOf(expected));
}

TEST_F(LinesDialogTest, AnAngleThatIsNone) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        TabTo(gui, lines, LinesItems::angle);
        gui.Chord({VK_HOME});
        gui.Chord({VK_SHIFT, VK_END});
        gui.Type("1");
        gui.Type("8");
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, lines),
                  "An integer in the range between -180 and 180 required. Would you like to insert "
                  "the closest value?");
        WaitUntil("the closest", [&] { return lines.Text(LinesItems::angle) == "180"; });
        CloseWith(lines, okItem);
    });
    LinesParams expected;
    expected.angle = 180;
    ExpectApplied(*LinesOf(expected));
}

TEST_F(LinesDialogTest, TheSwatchOpensTheSystemsColours) {
    LinesParams expected;
    expected.colorMode = linesAverage;
    expected.color = {0x7F00, 0x7F00, 0x7F00};
    ExpectTakenBack(expected, [](const GuiDriver& gui, const DrivenDialog& lines) {
        lines.ClickMiddle(LinesItems::color);
        const DrivenDialog colors = gui.WaitForTitle("Color");
        constexpr int red = 0x2C2;
        constexpr int green = 0x2C3;
        constexpr int blue = 0x2C4;
        colors.SetText(red, "127");
        colors.SetText(green, "127");
        colors.SetText(blue, "127");
        CloseWith(colors, IDOK);
        WaitUntil("average", [&] { return lines.Value(LinesItems::averageColor) == 1; });
        EXPECT_EQ(lines.Value(LinesItems::random), 0);
    });
}

TEST_F(LinesDialogTest, ACancelledColourSwitchesToTheAverageAllTheSame) {
    LinesParams expected;
    expected.colorMode = linesAverage;
    ExpectTakenBack(expected, [](const GuiDriver& gui, const DrivenDialog& lines) {
        lines.ClickMiddle(LinesItems::color);
        CloseWith(gui.WaitForTitle("Color"), IDCANCEL);
        WaitUntil("average", [&] { return lines.Value(LinesItems::averageColor) == 1; });
    });
}

TEST_F(LinesDialogTest, TheKeyboardGoesThroughAllControls) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        WaitUntil("nothing to delete", [&] { return !lines.IsEnabled(ApplyItems::remove); });
        TabTo(gui, lines, okItem);
        // Tab comes to the checked ones of the radio buttons.
        EXPECT_EQ(TabOrder(gui, lines),
                  (std::vector<int>{okItem, cancelItem, ApplyItems::apply, LinesItems::precision,
                                    LinesItems::wax, LinesItems::random, LinesItems::color,
                                    LinesItems::angle, LinesItems::globe, ApplyItems::presets,
                                    ApplyItems::save}));
        gui.Chord({VK_MENU, 'I'});
        WaitUntil("ink by its letter", [&] { return lines.Value(LinesItems::ink) == 1; });
        gui.Chord({VK_MENU, 'A'});
        WaitUntil("the angle by its letter",
                  [&] { return FocusedItem(lines) == LinesItems::angle; });
        gui.Chord({VK_RETURN});
        lines.WaitUntilClosed();
    });
    LinesParams expected;
    expected.appearance = linesInk;
    ExpectApplied(*LinesOf(expected));
}

TEST_F(LinesDialogTest, EscapeIsCancel) {
    const std::unique_ptr<PaintClass> drawn = LinesOf({});
    const std::unique_ptr<PaintClass> blank = Blank();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        lines.Press(ApplyItems::apply);
        ExpectShown(editor, *drawn);
        gui.Chord({VK_ESCAPE});
        lines.WaitUntilClosed();
        ExpectShown(editor, *blank);
        EXPECT_FALSE(editor.IsEnabled(TextureItems::repeatEffect));
    });
    ExpectApplied(*Blank());
}

}  // namespace
