// Presets: saved under a name, chosen, deleted, kept for the next run.
#include "fixtures/InputDesktop.Win.h"
#include "paint/EffectRun.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

constexpr LinesParams crisp{10, linesInk, linesRandom, 90, {0x7FFF, 0x7FFF, 0x7FFF}};
constexpr LinesParams soft{70, linesWax, linesAverage, -30, {0x2000, 0x4000, 0x6000}};

class PresetDialogTest : public DialogRunTest {
  protected:
    static DrivenDialog OpenLines(const GuiDriver& gui, const DrivenDialog& editor) {
        return OpenDialog(gui, editor, TextureItems::lines, linesDialog);
    }
    /// Two presets, as if saved before.
    void StoreTwo() {
        AddPreset(stored.presets[presetLines], crisp, "Crisp");
        AddPreset(stored.presets[presetLines], soft, "Soft");
    }
    static void SaveAs(const GuiDriver& gui, const DrivenDialog& lines, const std::string& name) {
        lines.PressToOpen(ApplyItems::save);
        const DrivenDialog dialog = gui.WaitFor(presetDialog);
        TypeInto(gui, dialog, PresetItems::name, name);
        CloseWith(dialog, okItem);
    }
    /// The contents of the file after the run.
    static std::vector<std::string> StoredNames() {
        Preferences after;
        EXPECT_TRUE(LoadPreferences(after));
        std::vector<std::string> names;
        char name[nameCapacity];
        for (short n = 1; after.presets[presetLines].NameAt(n, name); ++n) {
            names.emplace_back(name);
        }
        return names;
    }
    static void ExpectValues(const DrivenDialog& lines, const LinesParams& params) {
        WaitUntil("the preset's values", [&] {
            return lines.Value(LinesItems::precision) == params.precision &&
                   lines.Text(LinesItems::angle) == std::to_string(params.angle);
        });
        EXPECT_EQ(lines.Value(LinesItems::ink), params.appearance == linesInk ? 1 : 0);
        EXPECT_EQ(lines.Value(LinesItems::averageColor), params.colorMode == linesAverage ? 1 : 0);
    }
};

using Names = std::vector<std::string>;

TEST_F(PresetDialogTest, AnEmptyListShowsLastUsedAlone) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        EXPECT_EQ(Entries(lines, ApplyItems::presets), (Names{"Last Used", ""}));
        EXPECT_EQ(lines.Value(ApplyItems::presets), 1);
        WaitUntil("nothing to delete", [&] { return !lines.IsEnabled(ApplyItems::remove); });
        CloseWith(lines, cancelItem);
    });
}

TEST_F(PresetDialogTest, SavedPresetsAreInTheFileByteByByte) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        TypeInto(gui, lines, LinesItems::angle, "12");
        SaveAs(gui, lines, "Slanted");
        WaitUntil("the entry", [&] {
            return Entries(lines, ApplyItems::presets) == Names{"Last Used", "", "Slanted"};
        });
        EXPECT_EQ(lines.Value(ApplyItems::presets), 1) << "saving changes no selection";
        CloseWith(lines, cancelItem);
    });
    const std::string file = BytesOf(folder.Path() / "Zandermolite3.prf");
    constexpr std::size_t lists = 193;
    ASSERT_EQ(file.size(), 383u + 256 + sizeof(LinesParams));
    EXPECT_EQ(file.substr(lists, 2), std::string("\x02\0", 2));
    EXPECT_EQ(file.substr(lists + 2, 8), std::string("Slanted\0", 8));
    LinesParams saved;
    saved.angle = 12;
    EXPECT_EQ(file.substr(lists + 2 + 256, sizeof saved),
              std::string(reinterpret_cast<const char*>(&saved), sizeof saved));
    EXPECT_EQ(file.substr(lists + 2 + 256 + sizeof saved, 2), std::string("\x01\0", 2));
    EXPECT_EQ(file.substr(53, sizeof saved),
              std::string(reinterpret_cast<const char*>(&stored.lines), sizeof saved))
        << "the last values were not applied";
}

TEST_F(PresetDialogTest, SavingLeavesTheChosenOneChosen) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        ExpectValues(lines, crisp);
        SaveAs(gui, lines, "Another");
        WaitUntil("the entry", [&] {
            return Entries(lines, ApplyItems::presets) ==
                   Names{"Last Used", "", "Crisp", "Soft", "Another"};
        });
        EXPECT_EQ(lines.Value(ApplyItems::presets), 3);
        WaitUntil("Delete", [&] { return lines.IsEnabled(ApplyItems::remove); });
        lines.PressToOpen(ApplyItems::remove);
        EXPECT_EQ(AnswerAlert(gui, lines),
                  "Are you sure you want to delete the preset named <Crisp>?");
        CloseWith(lines, cancelItem);
    });
    EXPECT_EQ(StoredNames(), (Names{"Soft", "Another"}));
}

TEST_F(PresetDialogTest, AreThereInTheNextRun) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        TypeInto(gui, lines, LinesItems::angle, "12");
        SaveAs(gui, lines, "Slanted");
        CloseWith(lines, cancelItem);
    });
    picture = before;
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        const DrivenDialog lines = OpenLines(gui, editor);
        EXPECT_EQ(lines.Text(LinesItems::angle), "45");
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        WaitUntil("the angle", [&] { return lines.Text(LinesItems::angle) == "12"; });
        CloseWith(lines, cancelItem);
        CloseWith(editor, cancelItem);
    });
}

TEST_F(PresetDialogTest, NamesAreUniqueWhateverTheirCase) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        for (const char* const name : {"Crisp", "sOFT", "last used"}) {
            SaveAs(gui, lines, name);
            EXPECT_EQ(AnswerAlert(gui, lines),
                      "This name is already taken. Please choose a unique name.");
        }
        EXPECT_EQ(Entries(lines, ApplyItems::presets), (Names{"Last Used", "", "Crisp", "Soft"}));
        CloseWith(lines, cancelItem);
    });
    EXPECT_EQ(StoredNames(), (Names{"Crisp", "Soft"}));
}

TEST_F(PresetDialogTest, TheNameFieldWantsAName) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        lines.PressToOpen(ApplyItems::save);
        const DrivenDialog dialog = gui.WaitFor(presetDialog);
        EXPECT_EQ(dialog.Title(), "Save New Preset");
        WaitUntil("OK to be grey", [&] { return !dialog.IsEnabled(okItem); });
        EXPECT_EQ(FocusedItem(dialog), PresetItems::name);
        gui.Type("a!-./<>b");
        WaitUntil("the name", [&] { return dialog.Text(PresetItems::name) == "ab"; });
        WaitUntil("OK", [&] { return dialog.IsEnabled(okItem); });
        gui.Chord({VK_BACK});
        gui.Chord({VK_BACK});
        WaitUntil("OK to be grey again", [&] { return !dialog.IsEnabled(okItem); });
        // A pasted name may have them.
        dialog.SetText(PresetItems::name, "a/b");
        WaitUntil("OK again", [&] { return dialog.IsEnabled(okItem); });
        gui.Chord({VK_RETURN});
        dialog.WaitUntilClosed();
        WaitUntil("the entry", [&] {
            return Entries(lines, ApplyItems::presets) == Names{"Last Used", "", "a/b"};
        });
        CloseWith(lines, cancelItem);
    });
    EXPECT_EQ(StoredNames(), (Names{"a/b"}));
}

TEST_F(PresetDialogTest, ACancelledNameSavesNothing) {
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        lines.PressToOpen(ApplyItems::save);
        const DrivenDialog dialog = gui.WaitFor(presetDialog);
        gui.Type("Lost");
        gui.Chord({VK_ESCAPE});
        dialog.WaitUntilClosed();
        EXPECT_EQ(Entries(lines, ApplyItems::presets).size(), 2u);
        CloseWith(lines, cancelItem);
    });
    EXPECT_EQ(StoredNames(), Names{});
}

TEST_F(PresetDialogTest, AChosenPresetIsShownAndNotRun) {
    const std::unique_ptr<PaintClass> blank = Blank();
    const std::unique_ptr<PaintClass> applied = Blank();
    RunLines(*applied, {});
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        lines.Press(ApplyItems::apply);
        ExpectShown(editor, *applied);
        ChooseEntry(gui, lines, ApplyItems::presets, 4);
        ExpectValues(lines, soft);
        EXPECT_EQ(lines.Value(ApplyItems::presets), 4);
        ExpectShown(editor, *blank);
        WaitUntil("Delete", [&] { return lines.IsEnabled(ApplyItems::remove); });
        CloseWith(lines, okItem);
    });
    std::unique_ptr<PaintClass> expected = Blank();
    RunLines(*expected, soft);
    ExpectApplied(*expected);
}

TEST_F(PresetDialogTest, LastUsedChangesNothing) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        ExpectValues(lines, crisp);
        ChooseEntry(gui, lines, ApplyItems::presets, 1);
        ExpectValues(lines, crisp);
        WaitUntil("nothing to delete", [&] { return !lines.IsEnabled(ApplyItems::remove); });
        CloseWith(lines, cancelItem);
    });
}

void OpenMenu(const DrivenDialog& lines) {
    OpenMenuOf(lines, ApplyItems::presets);
}

/// The values load as the choice passes over the names, before one is chosen.
TEST_F(PresetDialogTest, TheOpenMenuShowsWhatItPasses) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        OpenMenu(lines);
        while (lines.Value(ApplyItems::presets) != 4) {
            const int passed = lines.Value(ApplyItems::presets);
            gui.Chord({VK_DOWN});
            WaitUntil("the next", [&] { return lines.Value(ApplyItems::presets) != passed; });
        }
        ExpectValues(lines, soft);
        EXPECT_TRUE(HasOpenMenu(lines));
        gui.Chord({VK_RETURN});
        WaitUntilMenuIsClosed(gui, lines);
        EXPECT_EQ(lines.Value(ApplyItems::presets), 4);
        ExpectValues(lines, soft);
        CloseWith(lines, cancelItem);
    });
}

TEST_F(PresetDialogTest, ThePointerPassesOverTheNames) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        OpenMenu(lines);
        PointAtEntry(lines, ApplyItems::presets, 3);
        ExpectValues(lines, crisp);
        PointAtEntry(lines, ApplyItems::presets, 4);
        ExpectValues(lines, soft);
        gui.PressMouse();
        gui.ReleaseMouse();
        WaitUntilMenuIsClosed(gui, lines);
        EXPECT_EQ(lines.Value(ApplyItems::presets), 4);
        ExpectValues(lines, soft);
        CloseWith(lines, okItem);
    });
    const std::unique_ptr<PaintClass> expected = Blank();
    RunLines(*expected, soft);
    ExpectApplied(*expected);
}

TEST_F(PresetDialogTest, LeavingTheMenuTakesTheValuesBack) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        OpenMenu(lines);
        while (lines.Value(ApplyItems::presets) != 4) {
            const int passed = lines.Value(ApplyItems::presets);
            gui.Chord({VK_DOWN});
            WaitUntil("the next", [&] { return lines.Value(ApplyItems::presets) != passed; });
        }
        ExpectValues(lines, soft);
        gui.Chord({VK_ESCAPE});
        WaitUntilMenuIsClosed(gui, lines);
        WaitUntil("the entry before", [&] { return lines.Value(ApplyItems::presets) == 3; });
        ExpectValues(lines, crisp);
        CloseWith(lines, okItem);
    });
    const std::unique_ptr<PaintClass> expected = Blank();
    RunLines(*expected, crisp);
    ExpectApplied(*expected);
}

/// The text that the system makes of an entry of the open menu.
std::string ShownInMenu(int place) {
    const HWND window = FindWindowA("#32768", nullptr);
    constexpr UINT getMenu = 0x1E1;
    const HMENU menu = reinterpret_cast<HMENU>(Ask(window, getMenu));
    char text[600] = "";
    GetMenuStringA(menu, static_cast<UINT>(place - 1), text, sizeof text, MF_BYPOSITION);
    std::string shown;
    for (const char* at = text; *at != '\0'; ++at) {
        // A single one underlines what follows.
        at += *at == '&' ? 1 : 0;
        shown += *at;
    }
    return shown;
}

TEST_F(PresetDialogTest, AnAmpersandOfANameIsInTheOpenMenu) {
    const std::string longest(255, '&');
    AddPreset(stored.presets[presetLines], crisp, "Salt & pepper");
    AddPreset(stored.presets[presetLines], soft, longest.c_str());
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        EXPECT_EQ(Entries(lines, ApplyItems::presets),
                  (Names{"Last Used", "", "Salt & pepper", longest}));
        OpenMenu(lines);
        EXPECT_EQ(ShownInMenu(3), "Salt & pepper");
        EXPECT_EQ(ShownInMenu(4), longest);
        gui.Chord({VK_ESCAPE});
        WaitUntilMenuIsClosed(gui, lines);
        CloseWith(lines, cancelItem);
    });
}

/// From "Last Used", after an Apply of values that no preset has.
TEST_F(PresetDialogTest, LeavingTheMenuKeepsTunedValuesAndTheResult) {
    StoreTwo();
    LinesParams tuned;
    tuned.angle = 12;
    const std::unique_ptr<PaintClass> applied = Blank();
    RunLines(*applied, tuned);
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        TypeInto(gui, lines, LinesItems::angle, "12");
        lines.Press(ApplyItems::apply);
        ExpectShown(editor, *applied);
        OpenMenu(lines);
        PointAtEntry(lines, ApplyItems::presets, 4);
        ExpectValues(lines, soft);
        PointAtEntry(lines, ApplyItems::presets, 1);
        ExpectValues(lines, tuned);
        PointAtEntry(lines, ApplyItems::presets, 4);
        ExpectValues(lines, soft);
        ExpectShown(editor, *applied);
        gui.Chord({VK_ESCAPE});
        WaitUntilMenuIsClosed(gui, lines);
        ExpectValues(lines, tuned);
        EXPECT_EQ(lines.Value(ApplyItems::presets), 1);
        ExpectShown(editor, *applied);
        CloseWith(lines, okItem);
    });
    ExpectApplied(*applied);
}

/// No Idle runs during a drag; keys that are pressed meanwhile are handled before the next Idle.
TEST_F(PresetDialogTest, ADragThatLeavesThePresetLeavesNothingToDelete) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const DrivenDialog lines = OpenLines(gui, editor);
        ChooseEntry(gui, lines, ApplyItems::presets, 3);
        WaitUntil("Delete", [&] { return lines.IsEnabled(ApplyItems::remove); });
        const RECT globe = lines.Bounds(LinesItems::globe);
        const int x = static_cast<int>(globe.right - globe.left) / 2;
        const int y = static_cast<int>(globe.bottom - globe.top) / 2;
        lines.Drag(LinesItems::globe, {{x - 25, y}}, [&] {
            WaitUntil("-90", [&] { return lines.Text(LinesItems::angle) == "-90"; });
            gui.Chord({VK_MENU, 'D'});
        });
        WaitUntil("Last Used", [&] { return lines.Value(ApplyItems::presets) == 1; });
        EXPECT_FALSE(lines.IsEnabled(ApplyItems::remove));
        EXPECT_EQ(Entries(lines, ApplyItems::presets), (Names{"Last Used", "", "Crisp", "Soft"}));
        CloseWith(lines, cancelItem);
    });
    EXPECT_EQ(StoredNames(), (Names{"Crisp", "Soft"}));
}

/// Alt+D that is typed with the key or the press that opens the dialog.
TEST_F(PresetDialogTest, NothingIsToDeleteWhenTheDialogOpens) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(TextureItems::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        EXPECT_FALSE(lines.IsEnabled(ApplyItems::remove));
        CloseWith(lines, cancelItem);
    });
}

TEST_F(PresetDialogTest, DeleteAsks) {
    StoreTwo();
    RunBlank([&](const GuiDriver& gui, const DrivenDialog& editor) {
        const std::string question = "Are you sure you want to delete the preset named <Crisp>?";
        const DrivenDialog lines = OpenLines(gui, editor);
        const auto removeCrisp = [&](int answer) {
            ChooseEntry(gui, lines, ApplyItems::presets, 3);
            WaitUntil("Delete", [&] { return lines.IsEnabled(ApplyItems::remove); });
            lines.PressToOpen(ApplyItems::remove);
            EXPECT_EQ(AnswerAlert(gui, lines, answer), question);
        };
        removeCrisp(cancelItem);
        WaitUntil("Last Used", [&] { return lines.Value(ApplyItems::presets) == 1; });
        EXPECT_EQ(Entries(lines, ApplyItems::presets), (Names{"Last Used", "", "Crisp", "Soft"}));
        removeCrisp(okItem);
        WaitUntil("one entry less", [&] {
            return Entries(lines, ApplyItems::presets) == Names{"Last Used", "", "Soft"};
        });
        EXPECT_EQ(lines.Value(ApplyItems::presets), 1);
        CloseWith(lines, cancelItem);
    });
    EXPECT_EQ(StoredNames(), (Names{"Soft"}));
}

}  // namespace
