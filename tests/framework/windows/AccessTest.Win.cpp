// Every kind of item, as a screen reader is told of it.
#include "framework/access/Accessibility.Win.h"
#include "framework/access/ItemDescription.h"
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"
#include "tests/support/windows/ImportTable.Win.h"
#include "tests/support/windows/ScreenReader.Win.h"

namespace {

constexpr int secondSlider = 22;
constexpr int okButton = 1;

class AccessTest : public DialogTest {
  protected:
    AccessTest() {
        dialog.atSetup = [this] {
            dialog.SetFormat(integerField, "%d", 0, 100);
            dialog.SetLabel(check, realField);
            dialog.SetRole(secondSlider, ItemRole::slider, realField);
            dialog.SetRole(dial, ItemRole::dial, integerField);
            dialog.SetRange(slider, 0, 100);
            dialog.SetValue(slider, 40);
            dialog.SetValue(integerField, 25);
            dialog.SetValue(popup, 2);
        };
        dialog.atHit = [](short item) { return item <= 2 ? item : short{0}; };
    }
    ~AccessTest() override { EXPECT_EQ(accessibility::ObjectCount(), 0); }

    void Run(const std::function<void(Script&, const ScreenReader&)>& script) {
        RunWithScript(dialog, [&](Script& running) {
            const ScreenReader reader;
            script(running, reader);
            running.Click(running.Middle(okButton));
        });
    }

    TestDialog dialog{allItems};
};

TEST_F(AccessTest, EveryItemOfOursTellsItsRoleNameAndValue) {
    Run([](Script& script, const ScreenReader& reader) {
        const auto expect = [&](int item, long role, const std::string& name,
                                const std::string& value) {
            const Heard heard = reader.Hear(script.Item(item));
            EXPECT_EQ(heard.role, role) << item;
            EXPECT_EQ(heard.name, name) << item;
            EXPECT_EQ(heard.value, value) << item;
            EXPECT_FALSE(heard.Is(STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE)) << item;
        };
        expect(realField, ROLE_SYSTEM_TEXT, "check", "");
        expect(secondSlider, ROLE_SYSTEM_SLIDER, "check", "0");
        expect(slider, ROLE_SYSTEM_SLIDER, "", "40");
        expect(popup, ROLE_SYSTEM_COMBOBOX, "Plain", "Beta");
        expect(live, ROLE_SYSTEM_COMBOBOX, "Live", "One");
        expect(dial, ROLE_SYSTEM_DIAL, "", "25 degrees");
        expect(padLock, ROLE_SYSTEM_CHECKBUTTON, "", "");
        expect(bitmapButton, ROLE_SYSTEM_PUSHBUTTON, "Picture", "");
        expect(userItem, ROLE_SYSTEM_GRAPHIC, "", "");
        expect(palette, ROLE_SYSTEM_TOOLBAR, "", "");
        expect(scrollBar, ROLE_SYSTEM_SCROLLBAR, "", "0");
        EXPECT_EQ(reader.Hear(script.Item(bitmapButton)).shortcut, "Alt+u");
        EXPECT_EQ(reader.Hear(script.Item(slider)).shortcut, "");
    });
}

TEST_F(AccessTest, ValuesAndStatesFollow) {
    Run([](Script& script, const ScreenReader& reader) {
        const HWND control = script.Item(slider);
        EXPECT_FALSE(reader.Hear(control).Is(STATE_SYSTEM_FOCUSED));
        EXPECT_TRUE(reader.Hear(control).Is(STATE_SYSTEM_FOCUSABLE));
        script.Click(script.Middle(slider));
        script.Keys({{VK_HOME}});
        script.WaitUntil("the end", [&] { return reader.Hear(control).value == "100"; });
        EXPECT_TRUE(reader.Hear(control).Is(STATE_SYSTEM_FOCUSED));
        EXPECT_FALSE(reader.Hear(script.Item(padLock)).Is(STATE_SYSTEM_CHECKED));
        script.Click(script.Middle(padLock));
        script.WaitUntil(
            "closed", [&] { return reader.Hear(script.Item(padLock)).Is(STATE_SYSTEM_CHECKED); });
        EXPECT_TRUE(reader.Hear(script.Item(popup)).Is(STATE_SYSTEM_HASPOPUP));
        EnableWindow(script.Item(popup), FALSE);
        EXPECT_TRUE(reader.Hear(script.Item(popup)).Is(STATE_SYSTEM_UNAVAILABLE));
        EXPECT_FALSE(reader.Hear(script.Item(popup)).Is(STATE_SYSTEM_FOCUSABLE));
        ShowWindow(script.Item(popup), SW_HIDE);
        EXPECT_TRUE(reader.Hear(script.Item(popup)).Is(STATE_SYSTEM_INVISIBLE));
    });
}

TEST_F(AccessTest, AReaderPressesAndMovesTheFocus) {
    Run([](Script& script, const ScreenReader& reader) {
        IAccessible* const button = reader.ObjectOf(script.Item(bitmapButton));
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->accDoDefaultAction(WholeItem()), S_OK);
        button->Release();
        script.WaitFor("hit 17");
        IAccessible* const held = reader.ObjectOf(script.Item(slider));
        EXPECT_EQ(held->accSelect(SELFLAG_TAKEFOCUS, WholeItem()), S_OK);
        EXPECT_EQ(script.Focus(), slider);
        LONG left = 0;
        LONG top = 0;
        LONG width = 0;
        LONG height = 0;
        EXPECT_EQ(held->accLocation(&left, &top, &width, &height, WholeItem()), S_OK);
        RECT frame{};
        GetWindowRect(script.Item(slider), &frame);
        EXPECT_EQ(left, frame.left);
        EXPECT_EQ(top, frame.top);
        EXPECT_EQ(width, frame.right - frame.left);
        EXPECT_EQ(height, frame.bottom - frame.top);
        VARIANT none = WholeItem();
        none.lVal = 1;
        BSTR name = nullptr;
        EXPECT_NE(held->get_accName(none, &name), S_OK) << "there is no such part";
        EXPECT_NE(held->accDoDefaultAction(WholeItem()), S_OK) << "a slider is not pressed";
        held->Release();
    });
}

TEST_F(AccessTest, AnObjectThatIsHeldLongerThanTheDialogTellsNothing) {
    const ScreenReader reader;
    IAccessible* held = nullptr;
    HRESULT before = E_FAIL;
    dialog.atIdle = [&] {
        if (held == nullptr) {
            // In the dialogs' thread, without a proxy between.
            held = reader.ObjectOf(GetDlgItem(static_cast<HWND>(dialog.Window()), slider));
            BSTR value = nullptr;
            before = held != nullptr ? held->get_accValue(WholeItem(), &value) : E_FAIL;
            SysFreeString(value);
            dialog.Close(7);
        }
    };
    EXPECT_EQ(dialog.Run(), 7);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(before, S_OK);
    EXPECT_EQ(accessibility::ObjectCount(), 1);
    BSTR name = nullptr;
    EXPECT_TRUE(FAILED(held->get_accName(WholeItem(), &name)));
    EXPECT_EQ(name, nullptr);
    VARIANT state{};
    EXPECT_TRUE(FAILED(held->get_accState(WholeItem(), &state)));
    IDispatch* parent = nullptr;
    EXPECT_TRUE(FAILED(held->get_accParent(&parent)));
    EXPECT_TRUE(FAILED(held->accDoDefaultAction(WholeItem())));
    held->Release();
}

TEST_F(AccessTest, CallsOfOtherThreadsAreRefused) {
    const ScreenReader reader;
    HRESULT result = S_OK;
    dialog.atIdle = [&] {
        IAccessible* const held =
            reader.ObjectOf(GetDlgItem(static_cast<HWND>(dialog.Window()), slider));
        std::thread([&] {
            BSTR name = nullptr;
            result = held != nullptr ? held->get_accValue(WholeItem(), &name) : S_OK;
        }).join();
        if (held != nullptr) {
            held->Release();
        }
        dialog.Close(7);
    };
    dialog.Run();
    EXPECT_EQ(result, RPC_E_WRONG_THREAD);
}

HMODULE WINAPI LoadNothing(LPCWSTR) {
    return nullptr;
}

TEST_F(AccessTest, WithoutTheSystemsLibrariesTheDialogsWorkAllTheSame) {
    ImportExchange imports(GetModuleHandleA(nullptr));
    ASSERT_TRUE(imports.Exchange("LoadLibraryW", reinterpret_cast<void*>(&LoadNothing)));
    Run([](Script& script, const ScreenReader& reader) {
        // The system's own object.
        EXPECT_NE(reader.Hear(script.Item(slider)).role, ROLE_SYSTEM_SLIDER);
        script.Click(script.Middle(slider));
        script.WaitFor("hit 14");
        EXPECT_EQ(accessibility::ObjectCount(), 0);
    });
}

TEST_F(AccessTest, TextsAreReadOutWithoutTheirMarks) {
    EXPECT_EQ(SpokenText("&Size:"), "Size");
    EXPECT_EQ(SpokenText("black && &white"), "black & white");
    EXPECT_EQ(SpokenText("&Waveform:\t\t\t"), "Waveform");
    EXPECT_EQ(SpokenText("Lines..."), "Lines...");
    EXPECT_EQ(SpokenText("end&"), "end&");
    EXPECT_EQ(MnemonicIn("black && &white"), 'w');
    EXPECT_EQ(MnemonicIn("a && b"), '\0');
    EXPECT_EQ(MnemonicIn("end&"), '\0');
    EXPECT_EQ(SpokenWord("upRight"), "Up right");
    EXPECT_EQ(SpokenWord(""), "");
    EXPECT_EQ(FirstSentence("Move Tool.  [V]"), "Move Tool");
    EXPECT_EQ(KeyInHint("Move Tool.  [V]"), 'V');
    EXPECT_EQ(KeyInHint("Fill Tool.  [K]     Double-click to access settings."), 'K');
    EXPECT_EQ(KeyInHint("Set the Foreground color."), '\0');
    EXPECT_EQ(KeyInHint("["), '\0');
    EXPECT_EQ(KeyInHint("[V"), '\0');
    EXPECT_TRUE(IsLabel("&Size:"));
    EXPECT_FALSE(IsLabel(":"));
    EXPECT_FALSE(IsLabel("%"));
    EXPECT_EQ(ColorText(MakeColor24(1, 20, 255)), "red 1, green 20, blue 255");
}

}  // namespace
