// The mnemonics, keys and buttons that the dialogs of all operations share, and where they open.
#include "fixtures/InputDesktop.Win.h"
#include "tests/gui/ControlsRun.Win.h"

namespace {

/// 0 for a text without one.
char MnemonicOf(const std::string& text) {
    for (std::size_t at = text.find('&'); at < text.size() - 1; at = text.find('&', at + 2)) {
        if (text[at + 1] != '&') {
            return text[at + 1];
        }
    }
    return 0;
}

bool IsPopup(const DrivenDialog& dialog, int item) {
    const std::string name = ClassOf(dialog.Control(item));
    return name == "tPopupMenu" || name == "tRealtimeMenu";
}

LONG ButtonType(const DrivenDialog& dialog, int item) {
    return ClassOf(dialog.Control(item)) == "Button"
               ? GetWindowLongA(dialog.Control(item), GWL_STYLE) & BS_TYPEMASK
               : -1;
}

class MnemonicTest : public EveryDialogTest {
  protected:
    /// The item that a label's mnemonic leads to.
    int TargetOf(const DrivenDialog& dialog, int label) const {
        for (const LabelRow& set : Rows(labelRows)) {
            if (set.label == label) {
                return set.item;
            }
        }
        if (IsPopup(dialog, label)) {
            return label;
        }
        return GetDlgCtrlID(GetNextDlgTabItem(dialog.Window(), dialog.Control(label), FALSE));
    }
    /// A text with a colon that stands beside a control and is no title of a frame.
    static bool IsLabel(const DrivenDialog& dialog, int item) {
        const std::string name = ClassOf(dialog.Control(item));
        const bool canBe = IsPopup(dialog, item) || name == "Static";
        return canBe && dialog.Text(item).find(':') != std::string::npos;
    }
};

INSTANTIATE_TEST_SUITE_P(Of, MnemonicTest, testing::ValuesIn(IdsOfDialogs()), NameOfRow);

TEST_P(MnemonicTest, EveryLabelHasOne) {
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        for (int item = 1; GetDlgItem(dialog.Window(), item) != nullptr; ++item) {
            // The text beside a colour has none; Tab reaches the colour.
            if (IsLabel(dialog, item) && dialog.Text(item) != "Color:") {
                EXPECT_NE(MnemonicOf(dialog.Text(item)), 0) << dialog.Text(item);
            }
        }
    });
}

TEST_P(MnemonicTest, ReachesItsControl) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (int item = 1; GetDlgItem(dialog.Window(), item) != nullptr; ++item) {
            const char letter = MnemonicOf(dialog.Text(item));
            const LONG type = ButtonType(dialog, item);
            // Save and Delete open something.
            if (letter == 0 || type == BS_PUSHBUTTON) {
                continue;
            }
            const std::vector<WORD> chord{
                VK_MENU, static_cast<WORD>(static_cast<WORD>(VkKeyScanA(letter)) & 0xFF)};
            const std::string name = "Alt+" + std::string(1, letter);
            if (type == BS_CHECKBOX || type == BS_RADIOBUTTON) {
                const int expected = type == BS_CHECKBOX ? 1 - dialog.Value(item) : 1;
                gui.Chord(chord);
                WaitUntil("the button by " + name, [&] { return dialog.Value(item) == expected; });
            } else {
                const int target = TargetOf(dialog, item);
                TabTo(gui, dialog, okItem);
                gui.Chord(chord);
                WaitUntil("the focus by " + name, [&] { return FocusedItem(dialog) == target; });
            }
        }
    });
}

TEST_P(EveryDialogTest, ReturnIsOkAndEscapeIsCancel) {
    EXPECT_EQ(Open([](const GuiDriver& gui, const DrivenDialog& dialog) {
                  gui.Chord({VK_RETURN});
                  dialog.WaitUntilClosed();
              }),
              okItem);
    EXPECT_TRUE(isRunOwed);
    EXPECT_EQ(Open([](const GuiDriver& gui, const DrivenDialog& dialog) {
                  gui.Chord({VK_ESCAPE});
                  dialog.WaitUntilClosed();
              }),
              cancelItem);
    EXPECT_EQ(father.runs, 0);
}

TEST_P(EveryDialogTest, TheButtonsByTheMouse) {
    EXPECT_EQ(Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
                  dialog.ClickMiddle(ApplyItems::apply);
                  WaitUntil("the run", [&] { return father.runs == 1; });
                  EXPECT_EQ(father.reverts, 1);
                  dialog.ClickMiddle(ApplyItems::apply);
                  WaitUntil("another run", [&] { return father.runs == 2; });
                  EXPECT_EQ(father.reverts, 2);
                  gui.HoldKey(VK_CONTROL);
                  WaitUntil("Apply again",
                            [&] { return dialog.Text(ApplyItems::apply) == "Apply again"; });
                  dialog.ClickMiddle(ApplyItems::apply);
                  WaitUntil("a run on top", [&] { return father.runs == 3; });
                  EXPECT_EQ(father.reverts, 2);
                  gui.ReleaseKey(VK_CONTROL);
                  WaitUntil("Apply", [&] { return dialog.Text(ApplyItems::apply) == "Apply"; });
                  dialog.ClickMiddle(okItem);
                  dialog.WaitUntilClosed();
              }),
              okItem);
    EXPECT_FALSE(isRunOwed) << "the texture shows the result";
    EXPECT_EQ(Open([](const GuiDriver&, const DrivenDialog& dialog) {
                  dialog.ClickMiddle(cancelItem);
                  dialog.WaitUntilClosed();
              }),
              cancelItem);
    EXPECT_EQ(father.reverts, 2) << "the way back is the editor's";
}

TEST_P(EveryDialogTest, OpensWhereItWasLeft) {
    POINT left{};
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        SetWindowPos(dialog.Window(), nullptr, 211, 123, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        dialog.Settle();
        ClientToScreen(dialog.Window(), &left);
    });
    EXPECT_EQ(placement.left, left.x);
    EXPECT_EQ(placement.top, left.y);
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        Keep(dialog, row.name);
        POINT place{};
        ClientToScreen(dialog.Window(), &place);
        EXPECT_EQ(place.x, left.x);
        EXPECT_EQ(place.y, left.y);
    });
}

}  // namespace
