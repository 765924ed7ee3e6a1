// Controls without the system's themes.
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"
#include "tests/support/windows/ImportTable.Win.h"

namespace {

using ThemeCall = std::pair<HWND, std::wstring>;

std::vector<ThemeCall> themeCalls;
bool refusesEmptyNames = false;
FARPROC(WINAPI* systemsSearch)(HMODULE module, LPCSTR name) = nullptr;

HRESULT WINAPI NoteTheme(HWND control, LPCWSTR application, LPCWSTR classes) {
    EXPECT_EQ(std::wstring(application), classes);
    themeCalls.emplace_back(control, application);
    return refusesEmptyNames && application[0] == L'\0' ? E_INVALIDARG : S_OK;
}

FARPROC WINAPI FindOrStandIn(HMODULE module, LPCSTR name) {
    if (HIWORD(name) != 0 && std::strcmp(name, "SetWindowTheme") == 0) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&NoteTheme));
    }
    return systemsSearch(module, name);
}

/// The system's theme library is one that notes the calls.
class ThemesTest : public DialogTest {
  protected:
    ThemesTest() : imports(GetModuleHandleA(nullptr)) {
        themeCalls.clear();
        refusesEmptyNames = false;
        systemsSearch = GetProcAddress;
        EXPECT_TRUE(imports.Exchange("GetProcAddress", reinterpret_cast<void*>(&FindOrStandIn)));
    }

    /// Opens a dialog. Returns its controls in the order of their items.
    static std::vector<HWND> Open() {
        TestDialog dialog(small);
        std::vector<HWND> controls;
        RunWithScript(dialog, [&](Script& script) {
            for (int item = 1; script.Item(item) != nullptr; ++item) {
                controls.push_back(script.Item(item));
            }
        });
        return controls;
    }

  private:
    ImportExchange imports;
};

TEST_F(ThemesTest, AreSwitchedOffForEachControl) {
    std::vector<ThemeCall> expected;
    for (const HWND control : Open()) {
        expected.emplace_back(control, L"");
    }
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(themeCalls, expected);
}

TEST_F(ThemesTest, ASystemThatRefusesEmptyNamesGetsBlanks) {
    refusesEmptyNames = true;
    std::vector<ThemeCall> expected;
    for (const HWND control : Open()) {
        expected.emplace_back(control, L"");
        expected.emplace_back(control, L" ");
    }
    EXPECT_EQ(themeCalls, expected);
}

}  // namespace
