// A dialog comes to a screen of another resolution while it is open.
#include <atomic>
#include <cstring>

#include "framework/drawing/ScreenScale.Win.h"
#include "tests/framework/windows/ControlsTest.Win.h"
#include "tests/support/windows/ImportTable.Win.h"

namespace {

/// The resolution that the system tells of every window; 0 for the truth.
std::atomic<int> toldResolution = 0;
HWND leftAsItIs = nullptr;

// The exchanged functions of the system, which this program's own calls do not reach meanwhile.
decltype(&GetProcAddress) systemsProcAddress = nullptr;
decltype(&GetDeviceCaps) systemsDeviceCaps = nullptr;

/// How often a window's resolution was asked for.
std::atomic<int> questions = 0;

UINT WINAPI ToldDpiForWindow(HWND) {
    ++questions;
    return toldResolution != 0 ? static_cast<UINT>(toldResolution) : 96;
}

int WINAPI ToldDeviceCaps(HDC context, int index) {
    return toldResolution != 0 && index == LOGPIXELSX ? toldResolution.load()
                                                      : systemsDeviceCaps(context, index);
}

BOOL WINAPI NoteBehavior(HWND dialog, int mask, int values) {
    constexpr int disableAll = 1;
    leftAsItIs = mask == disableAll && values == disableAll ? dialog : nullptr;
    return TRUE;
}

FARPROC WINAPI FindTold(HMODULE library, LPCSTR name) {
    const auto of = [](auto* function) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
    };
    if (std::strcmp(name, "GetDpiForWindow") == 0) {
        return of(&ToldDpiForWindow);
    }
    return std::strcmp(name, "SetDialogDpiChangeBehavior") == 0 ? of(&NoteBehavior)
                                                                : systemsProcAddress(library, name);
}

template <typename Function>
Function SystemsOwn(const char* library, const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name)));
}

class ResolutionChangeTest : public ControlsTest {
  protected:
    ResolutionChangeTest() : imports(GetModuleHandleA(nullptr)) {
        toldResolution = 0;
        questions = 0;
        leftAsItIs = nullptr;
        systemsProcAddress =
            SystemsOwn<decltype(&GetProcAddress)>("kernel32.dll", "GetProcAddress");
        systemsDeviceCaps = SystemsOwn<decltype(&GetDeviceCaps)>("gdi32.dll", "GetDeviceCaps");
        EXPECT_TRUE(imports.Exchange("GetProcAddress", reinterpret_cast<void*>(&FindTold)));
        EXPECT_TRUE(imports.Exchange("GetDeviceCaps", reinterpret_cast<void*>(&ToldDeviceCaps)));
    }
    ~ResolutionChangeTest() override { toldResolution = 0; }

    ImportExchange imports;
};

TEST_F(ResolutionChangeTest, ADialogKeepsTheScaleThatItWasLaidOutBy) {
    Run([&](Script& script) {
        std::vector<host::Picture> before;
        const short items[] = {palette, popup, slider, padLock, dial, bitmapButton};
        for (const short item : items) {
            before.push_back(script.Shot(item));
        }
        toldResolution = 192;
        EXPECT_EQ(ScaleOf(script.Dialog()).resolution, 96);
        EXPECT_EQ(ScaleOf(script.Item(slider)).resolution, 96);
        EXPECT_EQ(dialog.Scale().resolution, 96);
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_TRUE(script.Shot(items[i]) == before[i]) << items[i];
        }
        EXPECT_EQ(ScaleOf(GetDesktopWindow()).resolution, 192) << "whatever opens there";
    });
}

TEST_F(ResolutionChangeTest, AllControlsOfADialogThatOpensAskTheSystemOnce) {
    Run([&](Script&) { EXPECT_EQ(questions, 1); });
    Run([&](Script& script) {
        EXPECT_EQ(questions, 2) << "each dialog has its own";
        EXPECT_EQ(ScaleOf(script.Dialog()).resolution, 96);
    });
}

TEST_F(ResolutionChangeTest, TheSystemDoesNotLayADialogOutAnew) {
    Run([&](Script& script) { EXPECT_EQ(leftAsItIs, script.Dialog()); });
}

}  // namespace
