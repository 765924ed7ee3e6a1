// The quality of a JPEG that has no callback. Saving a texture never opens this window.
#include "dialogs/JPEGDialog.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

/// The calls of the file's callback, and what it returns to a question that a dialog opens with.
struct QualityTalk {
    std::int16_t remembered = 0;
    std::vector<std::int16_t> changes;
};
QualityTalk talk;

std::int16_t TalkAboutQuality(File&, std::int16_t operation, std::int16_t value) {
    if (operation == qualityRemembered) {
        return talk.remembered;
    }
    if (operation == qualityChanged) {
        talk.changes.push_back(value);
    }
    return value;
}

class JPEGDialogTest : public DialogRunTest {
  protected:
    JPEGDialogTest() {
        talk = {};
        file.callback = TalkAboutQuality;
    }

    /// Runs the dialog; it is cancelled at the end if the user has not closed it.
    std::int16_t RunQuality(
        const std::function<void(const GuiDriver&, const DrivenDialog&)>& user) {
        JPEGQualityChoice choice(file,
                                 [this](std::int16_t quality) { applied.push_back(quality); });
        std::int16_t status = -1;
        RunWithUser([&] { status = RunJPEGDialog(choice); },
                    [&](const GuiDriver& gui) {
                        const DrivenDialog dialog = gui.WaitFor(jpegDialog);
                        user(gui, dialog);
                        if (dialog.IsOpen()) {
                            CloseWith(dialog, cancelItem);
                        }
                    });
        return status;
    }
    static void ExpectQuality(const DrivenDialog& dialog, int quality, bool isDefault) {
        WaitUntil("the field",
                  [&] { return dialog.Text(JPEGItems::quality) == std::to_string(quality); });
        WaitUntil("the slider", [&] { return dialog.Value(JPEGItems::slider) == quality; });
        WaitUntil("the button", [&] { return dialog.IsEnabled(JPEGItems::standard) != isDefault; });
    }

    File file;
    std::vector<std::int16_t> applied;
    using Qualities = std::vector<std::int16_t>;
};

TEST_F(JPEGDialogTest, StartsWith75AndTakesTheFieldAtOnce) {
    EXPECT_EQ(RunQuality([&](const GuiDriver& gui, const DrivenDialog& dialog) {
                  EXPECT_EQ(dialog.Title(), "JPEG Quality Setting");
                  ExpectQuality(dialog, 75, true);
                  gui.Chord({VK_MENU, 'Q'});
                  WaitUntil("the field", [&] { return FocusedItem(dialog) == JPEGItems::quality; });
                  gui.Chord({VK_UP});
                  ExpectQuality(dialog, 76, false);
                  Keep(dialog, "jpeg");
                  EXPECT_EQ(applied, (Qualities{75, 76}));
                  EXPECT_EQ(talk.changes, (Qualities{76}));
                  gui.Chord({VK_RETURN});
                  dialog.WaitUntilClosed();
              }),
              0);
}

TEST_F(JPEGDialogTest, TheSliderMovesTheFieldByMouseAndKeys) {
    RunQuality([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        DragSlider(dialog, JPEGItems::slider, {20, 100}, {100, 20},
                   [&](int value) { ExpectQuality(dialog, value, false); });
        EXPECT_EQ(talk.changes.back(), 20);
        TabTo(gui, dialog, JPEGItems::slider);
        gui.Chord({VK_RIGHT});
        ExpectQuality(dialog, 21, false);
        gui.Chord({VK_HOME});
        ExpectQuality(dialog, 100, false);
        EXPECT_EQ(applied.back(), 100);
        EXPECT_EQ(talk.changes.back(), 100);
    });
}

TEST_F(JPEGDialogTest, DefaultSetsBothAndIsGreyThere) {
    talk.remembered = 40;
    RunQuality([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        ExpectQuality(dialog, 40, true);
        // As a whole: its first digit alone would be below the limit.
        dialog.SetText(JPEGItems::quality, "90");
        ExpectQuality(dialog, 90, false);
        dialog.ClickMiddle(JPEGItems::standard);
        ExpectQuality(dialog, 40, true);
        EXPECT_EQ(talk.changes.back(), 40);
        dialog.SetText(JPEGItems::quality, "100");
        gui.Chord({VK_MENU, 'D'});
        ExpectQuality(dialog, 40, true);
    });
}

TEST_F(JPEGDialogTest, QualitiesBeyondTheLimitsAsk) {
    RunQuality([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        const std::string question =
            "An integer in the range between 20 and 100 required. Would you like to insert the "
            "closest value?";
        TabTo(gui, dialog, JPEGItems::quality);
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, dialog), question);
        ExpectQuality(dialog, 20, false);
        dialog.SetText(JPEGItems::quality, "100");
        gui.Chord({VK_END});
        gui.Type("1");
        EXPECT_EQ(AnswerAlert(gui, dialog, cancelItem), question);
        ExpectQuality(dialog, 100, false);
    });
}

TEST_F(JPEGDialogTest, EscapeIsACancelledSave) {
    EXPECT_EQ(RunQuality([](const GuiDriver& gui, const DrivenDialog& dialog) {
                  TabTo(gui, dialog, okItem);
                  EXPECT_EQ(TabOrder(gui, dialog),
                            (std::vector<int>{okItem, cancelItem, JPEGItems::quality,
                                              JPEGItems::slider}));
                  gui.Chord({VK_ESCAPE});
                  dialog.WaitUntilClosed();
              }),
              fileCancelled);
}

class JPEGWriteTest : public DialogRunTest {
  protected:
    std::filesystem::path PathOf(const char* name) const { return folder.Path() / name; }
    /// Writes noise to a file without a callback while the user works in the dialog.
    std::int16_t WriteWith(const char* name,
                           const std::function<void(const DrivenDialog& dialog)>& user) const {
        ImageFile file;
        file.SetPath(PathOf(name).string());
        const std::unique_ptr<PaintClass> noise = Noise();
        std::int16_t status = -1;
        RunWithUser([&] { status = WriteTexture(file, *noise); },
                    [&](const GuiDriver& gui) { user(gui.WaitFor(jpegDialog)); });
        return status;
    }
};

TEST_F(JPEGWriteTest, OkWritesWithTheChosenQuality) {
    EXPECT_EQ(WriteWith("asked.jpg",
                        [](const DrivenDialog& dialog) {
                            dialog.SetText(JPEGItems::quality, "60");
                            CloseWith(dialog, okItem);
                        }),
              0);
    ImageFile told;
    told.SetPath(PathOf("told.jpg").string());
    told.callback = [](File&, std::int16_t, std::int16_t) { return std::int16_t{60}; };
    EXPECT_EQ(WriteTexture(told, *Noise()), 0);
    EXPECT_FALSE(BytesOf(PathOf("told.jpg")).empty());
    EXPECT_EQ(BytesOf(PathOf("asked.jpg")), BytesOf(PathOf("told.jpg")));
}

TEST_F(JPEGWriteTest, CancelTouchesNoFile) {
    EXPECT_EQ(
        WriteWith("asked.jpg", [](const DrivenDialog& dialog) { CloseWith(dialog, cancelItem); }),
        fileCancelled);
    EXPECT_FALSE(std::filesystem::exists(PathOf("asked.jpg")));
}

}  // namespace
