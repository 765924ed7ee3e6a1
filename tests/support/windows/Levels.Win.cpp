#include "tests/support/windows/Levels.Win.h"

#include <windows.h>

#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <stdexcept>
#include <vector>

namespace {

// Numbers are given out from the lowest free one, so what lies beyond these is not in use. Those of
// windows, menus and icons are the session's, and other programs may have taken a few thousand: all
// of them count.
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

using SystemReader = LONG(WINAPI*)(SYSTEM_INFORMATION_CLASS what, void* buffer, ULONG size,
                                   ULONG* needed);

/// In one question: to ask about each possible number takes hundred times as long.
int CountKernelHandles() {
    static const auto read = reinterpret_cast<SystemReader>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQuerySystemInformation")));
    constexpr LONG isTooSmall = static_cast<LONG>(0xC0000004);
    std::vector<std::max_align_t> buffer(0x1000);
    const auto ask = [&] {
        return read(SystemHandleInformation, buffer.data(),
                    static_cast<ULONG>(buffer.size() * sizeof buffer[0]), nullptr);
    };
    LONG status = ask();
    while (status == isTooSmall) {
        buffer.resize(2 * buffer.size());
        status = ask();
    }
    if (status != 0) {
        throw std::runtime_error("the system does not tell its handles");
    }
    const auto* const table = reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(buffer.data());
    return static_cast<int>(std::count_if(
        table->Handle, table->Handle + table->Count,
        [](const SYSTEM_HANDLE_ENTRY& entry) { return entry.OwnerPid == GetCurrentProcessId(); }));
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
    return {CountKernelHandles(),
            Count(1, lastGdiObject, 1, IsGdiObject),
            Count(firstUserObject, lastUserObject, 2, IsOwnWindow),
            Count(firstUserObject, lastUserObject, 2, isMenu),
            Count(firstUserObject, lastUserObject, 2, IsIcon),
            CountThreads(),
            CountFreeSlots()};
}
