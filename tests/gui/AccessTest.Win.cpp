// Every control of every window, as a screen reader is told of it.
#include <set>

#include "dialogs/JPEGDialog.h"
#include "editor/Operations.h"
#include "framework/access/Accessibility.Win.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "tests/gui/DialogRun.Win.h"
#include "tests/support/windows/ScreenReader.Win.h"

namespace {

using Texture = TextureItems;

LONG StyleOf(HWND control) {
    return GetWindowLongA(control, GWL_STYLE);
}

bool IsRadio(HWND control) {
    return ClassOf(control) == "Button" && (StyleOf(control) & BS_TYPEMASK) == BS_RADIOBUTTON;
}

/// The roles that a control may have; none for one that the system itself tells of.
std::set<long> RolesOf(HWND control) {
    const std::string name = ClassOf(control);
    const LONG style = StyleOf(control);
    if (name == "tBitmapButton") {
        return {ROLE_SYSTEM_PUSHBUTTON};
    }
    if (name == "tToolPalette") {
        return {ROLE_SYSTEM_TOOLBAR};
    }
    if (name == "tPopupMenu" || name == "tRealtimeMenu") {
        return {ROLE_SYSTEM_COMBOBOX};
    }
    if (name == "tLinearSlider") {
        return {ROLE_SYSTEM_SLIDER};
    }
    if (name == "tUserItem") {
        return {ROLE_SYSTEM_DIAL,    ROLE_SYSTEM_PUSHBUTTON,  ROLE_SYSTEM_GROUPING,
                ROLE_SYSTEM_GRAPHIC, ROLE_SYSTEM_PROGRESSBAR, ROLE_SYSTEM_STATICTEXT,
                ROLE_SYSTEM_BORDER};
    }
    if (name == "Edit") {
        return {ROLE_SYSTEM_TEXT};
    }
    if (name == "ScrollBar") {
        return {ROLE_SYSTEM_SCROLLBAR};
    }
    if (IsRadio(control) && TextOf(control).empty()) {
        return {ROLE_SYSTEM_RADIOBUTTON};
    }
    if (name == "Button" && (style & BS_ICON) != 0) {
        return {ROLE_SYSTEM_PUSHBUTTON};
    }
    if (name == "Static" && (style & SS_NOTIFY) != 0) {
        return {ROLE_SYSTEM_RADIOBUTTON, ROLE_SYSTEM_GRAPHIC};
    }
    return {};
}

class WindowAccessTest : public DialogRunTest {
  protected:
    ~WindowAccessTest() override { EXPECT_EQ(accessibility::ObjectCount(), 0); }

    static void ExpectTold(const DrivenDialog& dialog) {
        const ScreenReader reader;
        std::set<std::pair<long, std::string>> names;
        int told = 0;
        for (int item = 1; HWND control = GetDlgItem(dialog.Window(), item); ++item) {
            const std::set<long> roles = RolesOf(control);
            if (roles.empty() || !IsWindowVisible(control)) {
                continue;
            }
            const std::string which = dialog.Title() + ", item " + std::to_string(item);
            const Heard heard = reader.Hear(control);
            EXPECT_EQ(roles.count(heard.role), 1U) << which << " has role " << heard.role;
            EXPECT_FALSE(heard.name.empty()) << which;
            EXPECT_TRUE(names.insert({heard.role, heard.name}).second)
                << which << " has the name of another: " << heard.name;
            ExpectValue(dialog, item, heard, which);
            ExpectState(dialog, item, heard, which);
            for (const Heard& part : heard.parts) {
                EXPECT_FALSE(part.name.empty()) << which;
            }
            ++told;
        }
        EXPECT_GT(told, 0) << dialog.Title();
    }

    static void ExpectValue(const DrivenDialog& dialog, int item, const Heard& heard,
                            const std::string& which) {
        switch (heard.role) {
            case ROLE_SYSTEM_SLIDER:
                EXPECT_EQ(heard.value, std::to_string(dialog.Value(item))) << which;
                break;
            case ROLE_SYSTEM_TEXT:
                EXPECT_EQ(heard.value, dialog.Text(item)) << which;
                break;
            case ROLE_SYSTEM_COMBOBOX: {
                const auto chosen = static_cast<std::size_t>(dialog.Value(item) - 1);
                EXPECT_EQ(heard.value, Entries(dialog, item).at(chosen)) << which;
                break;
            }
            case ROLE_SYSTEM_DIAL:
                EXPECT_NE(heard.value.find(" degrees"), std::string::npos) << which;
                break;
            default:
                break;
        }
    }

    static void ExpectState(const DrivenDialog& dialog, int item, const Heard& heard,
                            const std::string& which) {
        EXPECT_EQ(heard.Is(STATE_SYSTEM_UNAVAILABLE), !dialog.IsEnabled(item)) << which;
        EXPECT_EQ(heard.Is(STATE_SYSTEM_FOCUSED), FocusedItem(dialog) == item) << which;
        if (IsRadio(dialog.Control(item))) {
            EXPECT_EQ(heard.Is(STATE_SYSTEM_CHECKED), dialog.Value(item) != 0) << which;
        }
        const bool canFocus =
            dialog.IsEnabled(item) &&
            ((StyleOf(dialog.Control(item)) & WS_TABSTOP) != 0 || IsRadio(dialog.Control(item)));
        EXPECT_EQ(heard.Is(STATE_SYSTEM_FOCUSABLE), canFocus) << which;
    }

    static std::string ZoomTextOf(const DrivenDialog& editor) {
        const ScreenReader reader;
        return reader.Hear(editor.Control(Texture::zoomReadout)).value;
    }

    static void HearAndCancel(const DrivenDialog& dialog) {
        ExpectTold(dialog);
        CloseWith(dialog, cancelItem);
    }
};

TEST_F(WindowAccessTest, EveryControlOfTheOperationsHasARoleANameAndAValue) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const Operation& operation : AllOperations()) {
            editor.PressToOpen(operation.item);
            HearAndCancel(gui.WaitFor(operation.id));
        }
    });
}

TEST_F(WindowAccessTest, EveryControlOfTheOtherDialogs) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        for (const auto& [item, dialogId] : {std::pair<int, int>{Texture::combine, combineDialog},
                                             {Texture::tile, tileDialog},
                                             {Texture::edit, editDialog}}) {
            editor.PressToOpen(item);
            HearAndCancel(gui.WaitFor(dialogId));
        }
        for (const auto& [command, dialogId] :
             {std::pair<int, int>{commandStampSettings, cloneDialog},
              {commandFillSettings, fillDialog},
              {commandBrushSettings, brushDialog}}) {
            editor.ChooseToOpen(command);
            HearAndCancel(gui.WaitFor(dialogId));
        }
        const DrivenDialog lines = OpenDialog(gui, editor, Texture::lines, linesDialog);
        lines.PressToOpen(ApplyItems::save);
        HearAndCancel(gui.WaitFor(presetDialog));
        CloseWith(lines, cancelItem);
    });
}

TEST_F(WindowAccessTest, EveryControlOfTheNewDialog) {
    Run([](const GuiDriver& gui) { HearAndCancel(gui.WaitFor(createrDialog)); });
}

// The program's own save has a callback, so that no run of the editor opens this window.
TEST_F(WindowAccessTest, EveryControlOfTheQualityDialog) {
    File file;
    JPEGQualityChoice choice(file, [](std::int16_t) {});
    RunWithUser([&] { RunJPEGDialog(choice); },
                [](const GuiDriver& gui) { HearAndCancel(gui.WaitFor(jpegDialog)); });
}

TEST_F(WindowAccessTest, EveryControlOfTheEditor) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        ExpectTold(editor);
        const ScreenReader reader;
        const auto hear = [&](int item) { return reader.Hear(editor.Control(item)); };
        EXPECT_EQ(hear(Texture::flipVertical).name, "Click to flip the entire texture vertically");
        EXPECT_EQ(hear(Texture::zoomIn).name, "Click to zoom in");
        EXPECT_EQ(hear(Texture::blur).name, "Blur...");
        EXPECT_EQ(hear(Texture::zoomReadout).value, "100%");
        const Heard tools = hear(Texture::toolPalette);
        ASSERT_EQ(tools.parts.size(), 8U);
        EXPECT_EQ(tools.parts[1].name, "Paintbrush Tool");
        EXPECT_EQ(tools.parts[1].role, ROLE_SYSTEM_RADIOBUTTON);
        EXPECT_TRUE(tools.parts[0].Is(STATE_SYSTEM_CHECKED));
        EXPECT_FALSE(tools.parts[1].Is(STATE_SYSTEM_CHECKED));
        ASSERT_EQ(hear(Texture::viewPalette).parts.size(), 2U);
        const Heard wells = hear(Texture::colorWells);
        ASSERT_EQ(wells.parts.size(), 4U);
        EXPECT_EQ(wells.parts[0].name, "Set the Foreground color");
        EXPECT_EQ(wells.parts[0].value, "red 0, green 0, blue 0");
        EXPECT_EQ(wells.parts[1].value, "red 255, green 255, blue 255");
        TabTo(gui, editor, Texture::colorWells);
        EXPECT_TRUE(hear(Texture::colorWells).Is(STATE_SYSTEM_FOCUSED));
        EXPECT_TRUE(hear(Texture::colorWells).parts[0].Is(STATE_SYSTEM_FOCUSED));
        EXPECT_FALSE(hear(Texture::colorWells).parts[1].Is(STATE_SYSTEM_FOCUSED));
        gui.Chord({VK_RIGHT});
        WaitUntil("the other well",
                  [&] { return hear(Texture::colorWells).parts[1].Is(STATE_SYSTEM_FOCUSED); });
        EXPECT_FALSE(hear(Texture::colorWells).parts[0].Is(STATE_SYSTEM_FOCUSED));
        gui.Type("x");
        WaitUntil("other colours", [&] {
            return hear(Texture::colorWells).parts[0].value == "red 255, green 255, blue 255";
        });
        ChooseTool(gui, editor, 'b', 2);
        EXPECT_TRUE(hear(Texture::toolPalette).parts[1].Is(STATE_SYSTEM_CHECKED));
        // A reader chooses a tool.
        IAccessible* const object = reader.ObjectOf(editor.Control(Texture::toolPalette));
        ASSERT_NE(object, nullptr);
        VARIANT pencil = WholeItem();
        pencil.lVal = 4;
        EXPECT_EQ(object->accDoDefaultAction(pencil), S_OK);
        object->Release();
        WaitUntil("the pencil", [&] { return editor.Value(Texture::toolPalette) == 4; });
    });
}

std::string KeysOf(const Heard& heard) {
    std::string keys;
    for (const Heard& part : heard.parts) {
        keys += part.shortcut.empty() ? "-" : part.shortcut;
    }
    return keys;
}

std::string ActionOf(IAccessible* object, LONG part) {
    VARIANT child = WholeItem();
    child.lVal = part;
    BSTR text = nullptr;
    object->get_accDefaultAction(child, &text);
    const std::string action(text, text + SysStringLen(text));
    SysFreeString(text);
    return action;
}

TEST_F(WindowAccessTest, PalettesTellTheKeysOfTheirToolsAndColours) {
    RunBlank([](const GuiDriver&, const DrivenDialog& editor) {
        const ScreenReader reader;
        const auto keysOf = [&](int item) { return KeysOf(reader.Hear(editor.Control(item))); };
        EXPECT_EQ(keysOf(Texture::toolPalette), "VBENGSKI");
        EXPECT_EQ(keysOf(Texture::viewPalette), "HZ");
        EXPECT_EQ(keysOf(Texture::colorWells), "--XD");
    });
}

TEST_F(WindowAccessTest, AReaderUsesEachPartOfTheWells) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        const ScreenReader reader;
        const auto valueOf = [&](std::size_t part) {
            return reader.Hear(editor.Control(Texture::colorWells)).parts[part].value;
        };
        IAccessible* const wells = reader.ObjectOf(editor.Control(Texture::colorWells));
        ASSERT_NE(wells, nullptr);
        EXPECT_EQ(ActionOf(wells, CHILDID_SELF), "");
        const auto use = [&](LONG part) {
            EXPECT_EQ(ActionOf(wells, part), "Press");
            VARIANT child = WholeItem();
            child.lVal = part;
            EXPECT_EQ(wells->accDoDefaultAction(child), S_OK);
        };
        for (const LONG part : {1, 2}) {
            use(part);
            const DrivenDialog colors = gui.WaitForTitle("Color");
            // Not one more time below the dialog that it has opened.
            PostMessageA(editor.Window(), messageUsePart, TextureItems::colorWells, 3);
            constexpr int red = 0x2C2;
            colors.SetText(red, std::to_string(10 * part));
            CloseWith(colors, IDOK);
            const std::string chosen = "red " + std::to_string(10 * part) + ", green 0, blue 0";
            WaitUntil("the colour",
                      [&] { return valueOf(static_cast<std::size_t>(part - 1)) == chosen; });
        }
        use(3);
        WaitUntil("the exchange", [&] { return valueOf(0) == "red 20, green 0, blue 0"; });
        EXPECT_EQ(valueOf(1), "red 10, green 0, blue 0");
        use(4);
        WaitUntil("black on white", [&] { return valueOf(0) == "red 0, green 0, blue 0"; });
        EXPECT_EQ(valueOf(1), "red 255, green 255, blue 255");
        wells->Release();
    });
}

TEST_F(WindowAccessTest, DirectionsSwatchesAndDialsSayWhatTheyShow) {
    stored.blur.motion = 1;
    stored.blur.direction = 2;
    stored.lines.angle = -30;
    stored.addColor.color = {0x1000, 0x2000, 0xFF00};
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        const ScreenReader reader;
        const DrivenDialog blur = OpenDialog(gui, editor, Texture::blur, blurDialog);
        const Heard right = reader.Hear(blur.Control(BlurItems::firstDirection + 2));
        EXPECT_EQ(right.name, "Right");
        EXPECT_TRUE(right.Is(STATE_SYSTEM_CHECKED));
        CloseWith(blur, cancelItem);
        const DrivenDialog lines = OpenDialog(gui, editor, Texture::lines, linesDialog);
        EXPECT_EQ(reader.Hear(lines.Control(LinesItems::globe)).value, "-30 degrees");
        EXPECT_EQ(reader.Hear(lines.Control(LinesItems::globe)).name, "Angle");
        EXPECT_TRUE(reader.Hear(lines.Control(LinesItems::globe)).Is(STATE_SYSTEM_FOCUSABLE));
        EXPECT_FALSE(reader.Hear(lines.Control(LinesItems::globe)).Is(STATE_SYSTEM_FOCUSED));
        TabTo(gui, lines, LinesItems::globe);
        EXPECT_TRUE(reader.Hear(lines.Control(LinesItems::globe)).Is(STATE_SYSTEM_FOCUSED));
        gui.Chord({VK_LEFT});
        WaitUntil("the turn", [&] { return lines.Text(LinesItems::angle) == "-31"; });
        EXPECT_EQ(reader.Hear(lines.Control(LinesItems::globe)).value, "-31 degrees");
        TabTo(gui, lines, LinesItems::color);
        EXPECT_TRUE(reader.Hear(lines.Control(LinesItems::color)).Is(STATE_SYSTEM_FOCUSED));
        CloseWith(lines, cancelItem);
        const DrivenDialog color = OpenDialog(gui, editor, Texture::addColor, addColorDialog);
        EXPECT_EQ(reader.Hear(color.Control(AddColorItems::color)).value,
                  "red 16, green 32, blue 255");
        EXPECT_EQ(reader.Hear(color.Control(AddColorItems::color)).name, "Color");
        CloseWith(color, cancelItem);
        const DrivenDialog skew = OpenDialog(gui, editor, Texture::skew, skewDialog);
        skew.Click(SkewItems::firstPicture + 3, {5, 5});
        WaitUntil("the choice", [&] { return skew.Value(SkewItems::firstRadio + 3) == 1; });
        EXPECT_TRUE(
            reader.Hear(skew.Control(SkewItems::firstPicture + 3)).Is(STATE_SYSTEM_CHECKED));
        EXPECT_FALSE(reader.Hear(skew.Control(SkewItems::firstPicture)).Is(STATE_SYSTEM_CHECKED));
        EXPECT_EQ(reader.Hear(skew.Control(SkewItems::firstRadio)).name, "Rows right");
        CloseWith(skew, cancelItem);
    });
}

TEST_F(WindowAccessTest, ReturnPressesTheButtonThatHasTheFocus) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        TabTo(gui, editor, Texture::blur);
        gui.Chord({VK_RETURN});
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        // Here Return presses the default button, which closes the dialog, unless a button has the
        // focus.
        TabTo(gui, blur, BlurItems::slider);
        gui.Chord({VK_RETURN});
        blur.WaitUntilClosed();
        WaitUntil("the focus", [&] { return FocusedItem(editor) == Texture::blur; });
        // Cancel has the focus, and Return presses it.
        gui.Chord({VK_RETURN});
        const DrivenDialog again = gui.WaitFor(blurDialog);
        TabTo(gui, again, cancelItem);
        gui.Chord({VK_RETURN});
        again.WaitUntilClosed();
        EXPECT_TRUE(editor.IsOpen());
        // One without a picture that the mouse has given the focus.
        editor.ClickMiddle(Texture::zoomIn);
        WaitUntil("the zoom", [&] { return ZoomTextOf(editor) != "100%"; });
        const std::string zoomed = ZoomTextOf(editor);
        gui.Chord({VK_RETURN});
        WaitUntil("another zoom", [&] { return ZoomTextOf(editor) != zoomed; });
        EXPECT_TRUE(editor.IsOpen());
    });
}

TEST_F(WindowAccessTest, ABlankTypedAtOnceDoesNotEndTheEditor) {
    RunBlank([](const GuiDriver& gui, const DrivenDialog& editor) {
        EXPECT_EQ(FocusedItem(editor), Texture::tab);
        gui.Chord({VK_SPACE});
        gui.WaitUntilIdle();
        EXPECT_TRUE(editor.IsOpen());
        EXPECT_TRUE(IsWindowEnabled(editor.Window()));
    });
}

}  // namespace
