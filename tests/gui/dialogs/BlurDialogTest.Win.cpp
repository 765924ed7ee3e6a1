// The dialog of Blur: its controls, each of which takes an applied result back.
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

class BlurDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenBlur(const GuiDriver& gui, const DrivenDialog& editor) {
        return OpenDialog(gui, editor, TextureItems::blur, blurDialog);
    }
    std::unique_ptr<PaintClass> BlurOf(const BlurParams& params) const {
        std::unique_ptr<PaintClass> texture = Noise();
        RunBlur(*texture, params);
        return texture;
    }
    /// Presses Apply, then lets the user change something: the texture is as it was before the
    /// dialog. OK then blurs with the new settings.
    void ExpectTakenBack(
        const BlurParams& expected,
        const std::function<void(const GuiDriver& gui, const DrivenDialog& blur)>& change);
};

void BlurDialogTest::ExpectTakenBack(
    const BlurParams& expected,
    const std::function<void(const GuiDriver& gui, const DrivenDialog& blur)>& change) {
    const std::unique_ptr<PaintClass> noise = Noise();
    const std::unique_ptr<PaintClass> blurred = BlurOf(stored.blur);
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        blur.Press(ApplyItems::apply);
        ExpectShown(editor, *blurred);
        change(gui, blur);
        ExpectShown(editor, *noise);
        CloseWith(blur, okItem);
    });
    ExpectApplied(*BlurOf(expected));
}

int ChosenDirection(const DrivenDialog& blur) {
    int chosen = -1;
    for (int item = BlurItems::firstDirection; item <= BlurItems::lastDirection; ++item) {
        if (blur.Value(item) != 0) {
            EXPECT_EQ(chosen, -1) << "only one is on";
            chosen = item - BlurItems::firstDirection;
        }
    }
    return chosen;
}

bool AreDirectionsEnabled(const DrivenDialog& blur) {
    const bool first = blur.IsEnabled(BlurItems::firstDirection);
    for (int item = BlurItems::firstDirection; item <= BlurItems::lastDirection; ++item) {
        EXPECT_EQ(blur.IsEnabled(item), first) << item;
    }
    return first;
}

TEST_F(BlurDialogTest, StartsWithTheDefaults) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        EXPECT_EQ(blur.Title(), "Blur");
        EXPECT_EQ(blur.Text(BlurItems::amount), "20");
        EXPECT_EQ(blur.Value(BlurItems::slider), 20);
        EXPECT_EQ(blur.Value(BlurItems::motion), 0);
        EXPECT_EQ(ChosenDirection(blur), 1);
        EXPECT_FALSE(AreDirectionsEnabled(blur));
        CloseWith(blur, okItem);
        WaitUntil("the repeat", [&] { return editor.IsEnabled(TextureItems::repeatFilter); });
        EXPECT_FALSE(editor.IsEnabled(TextureItems::repeatEffect));
    });
    ExpectApplied(*BlurOf({}));
}

TEST_F(BlurDialogTest, StartsWithTheStoredValues) {
    stored.blur = {77, 1, 0, 6};
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        EXPECT_EQ(blur.Text(BlurItems::amount), "77");
        EXPECT_EQ(blur.Value(BlurItems::slider), 77);
        EXPECT_EQ(blur.Value(BlurItems::motion), 1);
        EXPECT_EQ(ChosenDirection(blur), 6);
        EXPECT_TRUE(AreDirectionsEnabled(blur));
        CloseWith(blur, okItem);
    });
    ExpectApplied(*BlurOf(stored.blur));
}

TEST_F(BlurDialogTest, TheFieldMovesTheSlider) {
    ExpectTakenBack({35, 0, 0, 1}, [](const GuiDriver& gui, const DrivenDialog& blur) {
        const RECT bounds = blur.Bounds(BlurItems::slider);
        const auto shown = [&] {
            const host::Picture window = blur.Grab();
            std::vector<std::uint8_t> slider;
            for (LONG y = bounds.top; y < bounds.bottom; ++y) {
                slider.insert(slider.end(), window.Pixel(bounds.left, y),
                              window.Pixel(bounds.right, y));
            }
            return slider;
        };
        const std::vector<std::uint8_t> before = shown();
        TypeInto(gui, blur, BlurItems::amount, "35");
        WaitUntil("the slider", [&] { return blur.Value(BlurItems::slider) == 35; });
        WaitUntil("its picture", [&] { return shown() != before; });
    });
}

TEST_F(BlurDialogTest, TheSliderWritesTheFieldDuringItsDrag) {
    ExpectTakenBack({1, 0, 0, 1}, [](const GuiDriver&, const DrivenDialog& blur) {
        DragSlider(blur, BlurItems::slider, {1, 100}, {90, 50, 1}, [&](int value) {
            WaitUntil("the field",
                      [&] { return blur.Text(BlurItems::amount) == std::to_string(value); });
        });
    });
}

TEST_F(BlurDialogTest, TheSliderByTheKeys) {
    ExpectTakenBack({100, 0, 0, 1}, [](const GuiDriver& gui, const DrivenDialog& blur) {
        TabTo(gui, blur, BlurItems::slider);
        gui.Chord({VK_HOME});
        WaitUntil("the field", [&] { return blur.Text(BlurItems::amount) == "100"; });
        EXPECT_TRUE(blur.IsOpen());
    });
}

TEST_F(BlurDialogTest, TheArrowsStepTheField) {
    ExpectTakenBack({31, 0, 0, 1}, [](const GuiDriver& gui, const DrivenDialog& blur) {
        TabTo(gui, blur, BlurItems::amount);
        gui.Chord({VK_UP});
        WaitUntil("21", [&] { return blur.Text(BlurItems::amount) == "21"; });
        gui.Chord({VK_SHIFT, VK_UP});
        WaitUntil("31", [&] { return blur.Text(BlurItems::amount) == "31"; });
        EXPECT_EQ(blur.Value(BlurItems::slider), 31);
    });
}

TEST_F(BlurDialogTest, TheCheckBoxEnablesTheDirections) {
    ExpectTakenBack({20, 1, 0, 1}, [](const GuiDriver&, const DrivenDialog& blur) {
        blur.Click(BlurItems::motion, {6, 8});
        WaitUntil("the directions", [&] { return blur.IsEnabled(BlurItems::lastDirection); });
        EXPECT_TRUE(AreDirectionsEnabled(blur));
        EXPECT_EQ(blur.Value(BlurItems::motion), 1);
        blur.Click(BlurItems::motion, {6, 8});
        WaitUntil("no directions", [&] { return !blur.IsEnabled(BlurItems::lastDirection); });
        EXPECT_FALSE(AreDirectionsEnabled(blur));
        EXPECT_EQ(blur.Value(BlurItems::motion), 0);
        blur.Press(BlurItems::motion);
    });
}

TEST_F(BlurDialogTest, EachDirectionTurnsTheOthersOff) {
    stored.blur.motion = 1;
    ExpectTakenBack({20, 1, 0, 7}, [](const GuiDriver&, const DrivenDialog& blur) {
        for (int item = BlurItems::firstDirection; item <= BlurItems::lastDirection; ++item) {
            blur.ClickMiddle(item);
            WaitUntil("the direction", [&] { return blur.Value(item) == 1; });
            EXPECT_EQ(ChosenDirection(blur), item - BlurItems::firstDirection);
        }
    });
}

TEST_F(BlurDialogTest, AnAmountBeyondTheLimits) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const std::string question =
            "An integer in the range between 1 and 100 required. Would you like to insert the "
            "closest value?";
        const DrivenDialog blur = OpenBlur(gui, editor);
        TabTo(gui, blur, BlurItems::amount);
        gui.Type("0");
        EXPECT_EQ(AnswerAlert(gui, blur), question);
        WaitUntil("the closest", [&] { return blur.Text(BlurItems::amount) == "1"; });
        EXPECT_EQ(blur.Value(BlurItems::slider), 1);
        TypeInto(gui, blur, BlurItems::amount, "10");
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, blur, cancelItem), question);
        WaitUntil("the value before", [&] { return blur.Text(BlurItems::amount) == "10"; });
        CloseWith(blur, okItem);
    });
    ExpectApplied(*BlurOf({10, 0, 0, 1}));
}

TEST_F(BlurDialogTest, AnEmptyFieldKeepsItsValue) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        TabTo(gui, blur, BlurItems::amount);
        gui.Chord({VK_DELETE});
        WaitUntil("nothing", [&] { return blur.Text(BlurItems::amount).empty(); });
        TabTo(gui, blur, BlurItems::slider);
        WaitUntil("the value", [&] { return blur.Text(BlurItems::amount) == "20"; });
        CloseWith(blur, okItem);
    });
    ExpectApplied(*BlurOf({}));
}

TEST_F(BlurDialogTest, AnEmptyFieldTakesWhatTheSliderIsMovedTo) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        TabTo(gui, blur, BlurItems::amount);
        gui.Chord({VK_DELETE});
        WaitUntil("nothing", [&] { return blur.Text(BlurItems::amount).empty(); });
        blur.Click(BlurItems::slider, PlaceOnSlider(blur, BlurItems::slider, {1, 100}, 57));
        TabTo(gui, blur, okItem);
        EXPECT_EQ(blur.Text(BlurItems::amount), "57");
        CloseWith(blur, okItem);
    });
    ExpectApplied(*BlurOf({57, 0, 0, 1}));
}

TEST_F(BlurDialogTest, TheKeyboard) {
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog blur = OpenBlur(gui, editor);
        TabTo(gui, blur, okItem);
        EXPECT_EQ(TabOrder(gui, blur),
                  (std::vector<int>{okItem, cancelItem, ApplyItems::apply, BlurItems::amount,
                                    BlurItems::slider, BlurItems::motion}));
        gui.Chord({VK_MENU, 'M'});
        WaitUntil("motion by its letter", [&] { return blur.Value(BlurItems::motion) == 1; });
        gui.Chord({VK_MENU, 'B'});
        WaitUntil("the field by its letter",
                  [&] { return FocusedItem(blur) == BlurItems::amount; });
        gui.Chord({VK_RETURN});
        blur.WaitUntilClosed();
    });
    ExpectApplied(*BlurOf({20, 1, 0, 1}));
}

TEST_F(BlurDialogTest, TheRepeatBlursOnceMore) {
    const std::unique_ptr<PaintClass> twice = BlurOf({});
    RunBlur(*twice, {});
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        CloseWith(OpenBlur(gui, editor), okItem);
        WaitUntil("the repeat", [&] { return editor.IsEnabled(TextureItems::repeatFilter); });
        gui.Chord({VK_CONTROL, 'F'});
        ExpectShown(editor, *twice);
    });
}

TEST_F(BlurDialogTest, TheRepeatGoesOnInTheDirectionOfTheLastDialog) {
    const std::unique_ptr<PaintClass> expected = Noise();
    BlurParams params{.amount = 80, .motion = 1};
    for (const short direction : std::initializer_list<short>{2, 5, 5}) {
        params.direction = direction;
        RunBlur(*expected, params);
    }
    RunOnSelection([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog first = OpenBlur(gui, editor);
        TypeInto(gui, first, BlurItems::amount, "80");
        first.Press(BlurItems::motion);
        first.Press(BlurItems::firstDirection + 2);
        CloseWith(first, okItem);
        const DrivenDialog second = OpenBlur(gui, editor);
        second.Press(BlurItems::firstDirection + 5);
        CloseWith(second, okItem);
        WaitUntil("the repeat", [&] { return editor.IsEnabled(TextureItems::repeatFilter); });
        editor.Press(TextureItems::repeatFilter);
    });
    ExpectApplied(*expected);
}

}  // namespace
