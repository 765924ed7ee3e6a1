// A screen reader may hold an object of the product longer than the host keeps the product loaded.
// The code of that object stays then.
#include <objbase.h>
#include <oleacc.h>

#include "fixtures/WindowAccess.Win.h"
#include "host/command/DialogUser.Win.h"
#include "tests/shell/windows/Libraries.Win.h"
#include "tests/support/OwnPreferences.Win.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/windows/ImportTable.Win.h"

namespace {

/// Counts pins, each of which is a mere reference here: the process goes on without the product.
int pins = 0;
HMODULE pinned = nullptr;

BOOL WINAPI PinForNow(DWORD flags, LPCSTR name, HMODULE* module) {
    const bool isPin = (flags & GET_MODULE_HANDLE_EX_FLAG_PIN) != 0;
    const BOOL result = GetModuleHandleExA(
        flags & ~static_cast<DWORD>(GET_MODULE_HANDLE_EX_FLAG_PIN), name, module);
    if (isPin && result != FALSE) {
        ++pins;
        pinned = *module;
    }
    return result;
}

IAccessible* held = nullptr;

/// In the dialogs' thread, without a proxy between.
void CALLBACK HoldAnObject(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = FindDialog(GetCurrentThreadId(), [](HWND) { return true; });
    const HWND units = dialog != nullptr ? GetDlgItem(dialog, SizeItems::units) : nullptr;
    if (held == nullptr && units != nullptr &&
        AccessibleObjectFromWindow(units, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   reinterpret_cast<void**>(&held)) == S_OK) {
        KillTimer(nullptr, timer);
        PostMessageA(GetDlgItem(dialog, SizeItems::cancel), BM_CLICK, 0, 0);
    }
}

/// Runs the product and cancels its first dialog. Returns whether an object of it is held.
bool RunAndHold(const LoadedPlugin& plugin) {
    held = nullptr;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, HoldAnObject);
    host::FilterHost filterHost;
    host::Picture picture = host::MakePicture(40, 30, 3, 100);
    const host::RunReport report =
        filterHost.Run(plugin.Entry(), picture, host::SelectRectangle({2, 3, 12, 13}));
    KillTimer(nullptr, timer);
    EXPECT_EQ(report.result, -128);
    return held != nullptr;
}

bool IsLoaded(HMODULE module) {
    HMODULE found = nullptr;
    return GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT |
                                  GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                              reinterpret_cast<LPCSTR>(module), &found) != FALSE;
}

TEST(PinnedModuleTest, StaysAsLongAsAScreenReaderHoldsAnObject) {
    const ScratchFolder folder;
    const OwnPreferences preferences(folder.Path());
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    pins = 0;
    HMODULE module = nullptr;
    {
        const LoadedPlugin plugin;
        module = plugin.Module();
        ImportExchange imports(module);
        ASSERT_TRUE(imports.Exchange("GetModuleHandleExA", reinterpret_cast<void*>(&PinForNow)));
        ASSERT_TRUE(RunAndHold(plugin));
    }
    EXPECT_EQ(pins, 1);
    EXPECT_EQ(pinned, module);
    ASSERT_TRUE(IsLoaded(module));
    VARIANT self{};
    self.vt = VT_I4;
    BSTR name = nullptr;
    EXPECT_TRUE(FAILED(held->get_accName(self, &name))) << "the dialog is gone";
    held->Release();
    FreeLibrary(module);
    EXPECT_FALSE(IsLoaded(module));
    CoUninitialize();
}

TEST(PinnedModuleTest, GoesWithTheHostWhenNobodyHoldsOne) {
    const ScratchFolder folder;
    const OwnPreferences preferences(folder.Path());
    pins = 0;
    HMODULE module = nullptr;
    {
        const LoadedPlugin plugin;
        module = plugin.Module();
        ImportExchange imports(module);
        ASSERT_TRUE(imports.Exchange("GetModuleHandleExA", reinterpret_cast<void*>(&PinForNow)));
        host::FilterHost filterHost;
        host::Picture picture = host::MakePicture(40, 30, 3, 100);
        host::DialogUser user({{"New", SizeItems::cancel}});
        filterHost.Run(plugin.Entry(), picture, host::SelectRectangle({2, 3, 12, 13}));
        EXPECT_EQ(user.Finish(), std::nullopt);
    }
    EXPECT_EQ(pins, 0);
    EXPECT_FALSE(IsLoaded(module));
}

}  // namespace
