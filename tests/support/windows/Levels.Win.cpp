#include "tests/support/windows/Levels.Win.h"

#include <windows.h>

#include <tlhelp32.h>

#include <ostream>
#include <vector>

namespace {

// Numbers are given out from the lowest free one, so what lies beyond these is not in use. Those of
// windows, menus and icons are the session's, and other programs may have taken a few thousand: all
// of them count.
constexpr std::uintptr_t lastKernelHandle = 0x2000;
constexpr std::uintptr_t lastGdiObject = 0x1000;
constexpr std::uintptr_t lastUserObject = 0x10000;

/// From `first` in steps of `step`, those for which `exists` holds.
template <typename Exists>
int Count(std::uintptr_t first, std::uintptr_t last, std::uintptr_t step, Exists exists) {
    int count = 0;
    for (std::uintptr_t number = first; number < last; number += step) {
        count += exists(reinterpret_cast<void*>(number)) ? 1 : 0;
    }
    return count;
}

bool IsKernelHandle(void* number) {
    DWORD flags;
    return GetHandleInformation(number, &flags) != FALSE;
}

bool IsGdiObject(void* number) {
    return GetObjectType(number) != 0;
}

/// Whether the window is this process's: the numbers are the session's. The window procedure is
/// asked for first, since the system refuses that of another process at once, and takes longer to
/// say whose a window is.
bool IsOwnWindow(void* number) {
    const auto window = static_cast<HWND>(number);
    DWORD process = 0;
    return GetWindowLongPtrA(window, GWLP_WNDPROC) != 0 &&
           GetWindowThreadProcessId(window, &process) != 0 && process == GetCurrentProcessId();
}

bool IsIcon(void* number) {
    ICONINFO info;
    if (!GetIconInfo(static_cast<HICON>(number), &info)) {
        return false;
    }
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return true;
}

int CountThreads() {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    }
    CloseHandle(snapshot);
    return count;
}

int CountFreeSlots() {
    std::vector<DWORD> slots;
    for (DWORD slot = TlsAlloc(); slot != TLS_OUT_OF_INDEXES; slot = TlsAlloc()) {
        slots.push_back(slot);
    }
    for (const DWORD slot : slots) {
        TlsFree(slot);
    }
    return static_cast<int>(slots.size());
}

}  // namespace

void PrintTo(const Levels& levels, std::ostream* out) {
    *out << levels.kernelHandles << " kernel handles, " << levels.gdiObjects << " GDI objects, "
         << levels.windows << " windows, " << levels.menus << " menus, " << levels.icons
         << " icons, " << levels.threads << " threads, " << levels.freeSlots << " free slots";
}

Levels CountLevels() {
    constexpr std::uintptr_t firstUserObject = 0x20;
    const auto isMenu = [](void* number) { return IsMenu(static_cast<HMENU>(number)) != FALSE; };
    return {Count(4, lastKernelHandle, 4, IsKernelHandle),
            Count(1, lastGdiObject, 1, IsGdiObject),
            Count(firstUserObject, lastUserObject, 2, IsOwnWindow),
            Count(firstUserObject, lastUserObject, 2, isMenu),
            Count(firstUserObject, lastUserObject, 2, IsIcon),
            CountThreads(),
            CountFreeSlots()};
}
