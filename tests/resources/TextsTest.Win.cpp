// Texts, items, menus and keys are those that the program relies on.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <map>
#include <set>

#include "tests/resources/OpenedDialog.Win.h"
#include "tests/resources/Tables.h"

namespace {

constexpr int editorWindow = 16001;
constexpr int firstItemOfAlertText = 3;

std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (wchar_t c : text) {
        narrow += c < 128 ? static_cast<char>(c) : '?';
    }
    return narrow;
}

/// Without the mark of a mnemonic; a doubled one stands for the character.
std::wstring WithoutMnemonic(const std::wstring& text) {
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'&') {
            plain += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == L'&') {
            plain += L"&&";
            ++i;
        }
    }
    return plain;
}

std::wstring PlainText(const Control& control) {
    std::wstring text = WithoutMnemonic(control.text);
    while (control.IsPopup() && !text.empty() && text.back() == L'\t') {
        text.pop_back();
    }
    return text;
}

bool IsButton(const Control& control, std::initializer_list<DWORD> types) {
    return control.className == L"Button" &&
           std::find(types.begin(), types.end(), control.Type()) != types.end();
}

bool IsStatic(const Control& control, std::initializer_list<DWORD> types) {
    return control.className == L"Static" &&
           std::find(types.begin(), types.end(), control.Type()) != types.end();
}

bool Is(const Control& control, Kind kind) {
    const std::wstring& name = control.className;
    switch (kind) {
        case Kind::button:
            return IsButton(control, {BS_PUSHBUTTON, BS_DEFPUSHBUTTON});
        case Kind::checkBox:
            // Not the kind that checks itself: the dialogs do.
            return IsButton(control, {BS_CHECKBOX});
        case Kind::radioButton:
            return IsButton(control, {BS_RADIOBUTTON});
        case Kind::groupBox:
            return IsButton(control, {BS_GROUPBOX});
        case Kind::field:
            return name == L"Edit";
        case Kind::text:
            return IsStatic(control, {SS_LEFT, SS_RIGHT, SS_LEFTNOWORDWRAP});
        case Kind::line:
            return IsStatic(control, {SS_ETCHEDHORZ});
        case Kind::bitmap:
            return IsStatic(control, {SS_BITMAP}) && (control.style & SS_NOTIFY) != 0;
        case Kind::icon:
            return IsStatic(control, {SS_ICON});
        case Kind::scrollBar:
            return name == L"ScrollBar";
        case Kind::tab:
            return name == L"SysTabControl32";
        case Kind::palette:
            return name == L"tToolPalette";
        case Kind::popup:
            return name == L"tPopupMenu";
        case Kind::livePopup:
            return name == L"tRealtimeMenu";
        case Kind::slider:
            return name == L"tLinearSlider";
        case Kind::userItem:
            return name == L"tUserItem";
        case Kind::pictureButton:
            return name == L"tBitmapButton";
    }
    return false;
}

/// The dialogs that are more than an alert.
std::set<int> DialogsWithTitles() {
    std::set<int> ids;
    for (const ExpectedItem& item : expectedItems) {
        ids.insert(item.dialog);
    }
    return ids;
}

/// The entries below `menu` as the tables have them, submenus after their names.
void Collect(HMENU menu, std::vector<std::pair<int, std::wstring>>& entries) {
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        wchar_t text[128];
        const int length =
            GetMenuStringW(menu, static_cast<UINT>(position), text, 128, MF_BYPOSITION);
        const HMENU popup = GetSubMenu(menu, position);
        entries.emplace_back(
            popup != nullptr ? -1 : static_cast<int>(GetMenuItemID(menu, position)),
            WithoutMnemonic({text, static_cast<std::size_t>(std::max(length, 0))}));
        if (popup != nullptr) {
            Collect(popup, entries);
        }
    }
}

class LoadedMenu {
  public:
    explicit LoadedMenu(int id)
        : menu(LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id))) {}
    LoadedMenu(const LoadedMenu&) = delete;
    LoadedMenu& operator=(const LoadedMenu&) = delete;
    ~LoadedMenu() { DestroyMenu(menu); }

    HMENU Handle() const { return menu; }
    std::vector<std::pair<int, std::wstring>> Entries() const {
        std::vector<std::pair<int, std::wstring>> entries;
        Collect(menu, entries);
        return entries;
    }

  private:
    HMENU menu;
};

/// A popup control's menu: ids are the positions, separators counted.
void ExpectPopup(int id, const std::vector<std::wstring>& texts) {
    SCOPED_TRACE(id);
    const auto entries = LoadedMenu(id).Entries();
    ASSERT_EQ(entries.size(), texts.size() + 1);
    EXPECT_EQ(entries[0].first, -1);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(Narrow(entries[i + 1].second), Narrow(texts[i]));
        const int expected = texts[i].empty() ? 0 : static_cast<int>(i) + 1;
        EXPECT_EQ(entries[i + 1].first, expected) << Narrow(texts[i]);
    }
}

std::vector<ACCEL> LoadKeys(int id) {
    const HACCEL table = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id));
    std::vector<ACCEL> keys(static_cast<std::size_t>(CopyAcceleratorTableA(table, nullptr, 0)));
    CopyAcceleratorTableA(table, keys.data(), static_cast<int>(keys.size()));
    return keys;
}

TEST(ResourceTexts, EveryItemIsOfItsKindAndHasItsText) {
    for (const ExpectedItem& expected : expectedItems) {
        const OpenedDialog& dialog = Opened(expected.dialog);
        SCOPED_TRACE("item " + std::to_string(expected.item) + " of " +
                     std::to_string(expected.dialog));
        ASSERT_TRUE(dialog.IsOpen());
        const Control control = dialog.Item(expected.item);
        ASSERT_NE(control.window, nullptr);
        EXPECT_TRUE(Is(control, expected.kind)) << Narrow(control.className);
        if (expected.kind != Kind::bitmap && expected.kind != Kind::icon) {
            EXPECT_EQ(Narrow(PlainText(control)), Narrow(expected.text));
            EXPECT_EQ(PlainText(control), expected.text);
        }
    }
}

TEST(ResourceTexts, EveryDialogHasOkAndCancelFirst) {
    for (int id : DialogsWithTitles()) {
        SCOPED_TRACE(id);
        const OpenedDialog& dialog = Opened(id);
        EXPECT_TRUE(IsButton(dialog.Item(1), {BS_DEFPUSHBUTTON}));
        EXPECT_TRUE(IsButton(dialog.Item(2), {BS_PUSHBUTTON}));
        EXPECT_EQ(dialog.Item(1).text, id == 16001 ? L"Apply" : L"OK");
        EXPECT_EQ(dialog.Item(2).text, L"Cancel");
    }
}

TEST(ResourceTexts, EveryDialogHasItsTitle) {
    for (const ExpectedText& expected : expectedTitles) {
        const OpenedDialog& dialog = Opened(expected.id);
        ASSERT_TRUE(dialog.IsOpen()) << expected.id;
        EXPECT_EQ(Narrow(dialog.Title()), Narrow(expected.text)) << expected.id;
    }
}

TEST(ResourceTexts, ItemsAreNumberedWithoutAGapInTheOrderOfTheResource) {
    for (int id : DialogsWithTitles()) {
        std::vector<int> items;
        for (const Control& control : Opened(id).Controls()) {
            items.push_back(control.id);
        }
        if (id == editorWindow) {
            // The editor's stand as Tab comes to them, which is not by their numbers.
            std::sort(items.begin(), items.end());
        }
        int expected = 1;
        for (const int item : items) {
            EXPECT_EQ(item, expected++) << "in " << id;
        }
    }
}

TEST(ResourceTexts, AlertsSayWhatTheyShould) {
    for (const ExpectedText& expected : expectedAlerts) {
        SCOPED_TRACE(expected.id);
        const OpenedDialog& alert = Opened(expected.id);
        ASSERT_TRUE(alert.IsOpen());
        EXPECT_EQ(Narrow(alert.Item(firstItemOfAlertText).text), Narrow(expected.text));
        EXPECT_EQ(alert.Item(1).text, L"OK");
        const bool isQuestion = std::find(expectedQuestions.begin(), expectedQuestions.end(),
                                          expected.id) != expectedQuestions.end();
        EXPECT_EQ(alert.Item(2).text, isQuestion ? L"Cancel" : L"");
    }
}

TEST(ResourceTexts, Strings) {
    for (const ExpectedText& expected : expectedStrings) {
        wchar_t text[512];
        const int length =
            LoadStringW(GetModuleHandleA(nullptr), static_cast<UINT>(expected.id), text, 512);
        EXPECT_EQ(Narrow({text, static_cast<std::size_t>(length)}), Narrow(expected.text))
            << expected.id;
    }
}

TEST(ResourceTexts, MenuBar) {
    const auto entries = LoadedMenu(16001).Entries();
    ASSERT_EQ(entries.size(), expectedMenuBar.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(Narrow(entries[i].second), Narrow(expectedMenuBar[i].text));
        EXPECT_EQ(entries[i].first, expectedMenuBar[i].id) << Narrow(entries[i].second);
    }
}

TEST(ResourceTexts, PopupMenus) {
    for (int id : {16354, 16404, 16454, 16504, 16554, 16604, 16654}) {
        ExpectPopup(id, {L"Last Used", L"", L"no presets yet"});
        const LoadedMenu menu(id);
        EXPECT_NE(GetMenuState(GetSubMenu(menu.Handle(), 0), 2, MF_BYPOSITION) & MF_GRAYED, 0u);
    }
    for (int id : {16163, 16213}) {
        ExpectPopup(id, {L"Pixels", L"Inch", L"cm"});
    }
    for (int id : {16256, 16257}) {
        ExpectPopup(id, {L"None", L"", L"2", L"3", L"4", L"5", L"6", L"7", L"8"});
    }
    EXPECT_EQ(Narrow(LoadedMenu(16256).Entries()[0].second), "Mosaic H");
    EXPECT_EQ(Narrow(LoadedMenu(16257).Entries()[0].second), "Mosaic V");
    for (int id : {16508, 16517}) {
        ExpectPopup(id, {L"None", L"", L"Sine", L"Sawtooth", L"Square", L"", L"Random"});
    }
    ExpectPopup(16304, {L"Blend this texture with", L"Structure this texture with",
                        L"Color this texture with"});
    ExpectPopup(16608, {L"Square", L"Circle", L"Ring"});
}

TEST(ResourceTexts, PopupControlsFindTheirMenus) {
    for (int id : DialogsWithTitles()) {
        for (const Control& control : Opened(id).Controls()) {
            if (control.IsPopup()) {
                EXPECT_NE(LoadedMenu(id + control.id).Handle(), nullptr) << id + control.id;
            }
        }
    }
}

TEST(ResourceTexts, EditorKeys) {
    const std::vector<ACCEL> keys = LoadKeys(16001);
    ASSERT_EQ(keys.size(), expectedKeys.size());
    for (const ExpectedKey& expected : expectedKeys) {
        const auto found = std::find_if(keys.begin(), keys.end(), [&](const ACCEL& key) {
            return key.cmd == expected.command;
        });
        ASSERT_NE(found, keys.end()) << expected.command;
        EXPECT_EQ(found->key, expected.key) << expected.command;
        EXPECT_EQ(found->fVirt & ~FNOINVERT & 0x7F, FVIRTKEY | FCONTROL) << expected.command;
    }
}

TEST(ResourceTexts, KeysOfOtherDialogsAreTheEditCommands) {
    const std::pair<char, int> expected[] = {
        {'Z', 18201}, {'X', 18204}, {'C', 18205}, {'V', 18206}, {'A', 18209}};
    const std::vector<ACCEL> keys = LoadKeys(18000);
    ASSERT_EQ(keys.size(), std::size(expected));
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(keys[i].key, expected[i].first);
        EXPECT_EQ(keys[i].cmd, expected[i].second);
    }
}

/// Lower-case letters after the marks; 0 for a text without one.
wchar_t Mnemonic(const std::wstring& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == L'&') {
            if (text[i + 1] != L'&') {
                return static_cast<wchar_t>(std::tolower(text[i + 1]));
            }
            ++i;
        }
    }
    return 0;
}

TEST(ResourceTexts, MnemonicsOfADialogAreUnique) {
    for (int id : DialogResources()) {
        std::map<wchar_t, int> owners;
        for (const Control& control : Opened(id).Controls()) {
            const wchar_t mnemonic = Mnemonic(control.text);
            if (mnemonic != 0) {
                const auto [owner, isNew] = owners.emplace(mnemonic, control.id);
                EXPECT_TRUE(isNew)
                    << "items " << owner->second << " and " << control.id << " of " << id;
            }
        }
    }
}

void ExpectUniqueMnemonics(HMENU menu) {
    std::map<wchar_t, int> owners;
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        wchar_t text[128] = L"";
        GetMenuStringW(menu, static_cast<UINT>(position), text, 128, MF_BYPOSITION);
        const wchar_t mnemonic = Mnemonic(text);
        if (mnemonic != 0) {
            EXPECT_TRUE(owners.emplace(mnemonic, position).second) << Narrow(text);
        }
        if (const HMENU popup = GetSubMenu(menu, position)) {
            ExpectUniqueMnemonics(popup);
        }
    }
}

TEST(ResourceTexts, MnemonicsOfAMenuAreUnique) {
    ExpectUniqueMnemonics(LoadedMenu(16001).Handle());
}

}  // namespace
