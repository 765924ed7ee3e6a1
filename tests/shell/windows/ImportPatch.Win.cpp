#include "tests/shell/windows/ImportPatch.Win.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<int> calls = 0;
int firstRefused = 0;
bool isRefusedAfter = false;

bool Refuses() {
    const int call = ++calls;
    return firstRefused != 0 && (isRefusedAfter ? call >= firstRefused : call == firstRefused);
}

/// A replacement that returns `failure` for refused calls.
template <auto function, auto failure>
struct Replacement;

template <typename Result, typename... Arguments, Result(WINAPI* function)(Arguments...),
          auto failure>
struct Replacement<function, failure> {
    static Result WINAPI Call(Arguments... arguments) {
        if (Refuses()) {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return Result(failure);
        }
        return function(arguments...);
    }
};

HANDLE WINAPI CreateFileOrNot(LPCSTR path, DWORD access, DWORD share,
                              LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                              HANDLE like) {
    if (Refuses()) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return INVALID_HANDLE_VALUE;
    }
    return CreateFileA(path, access, share, security, disposition, flags, like);
}

void* MallocOrNot(std::size_t size) {
    return Refuses() ? nullptr : std::malloc(size);
}

void* CallocOrNot(std::size_t count, std::size_t size) {
    return Refuses() ? nullptr : std::calloc(count, size);
}

void* ReallocOrNot(void* block, std::size_t size) {
    return Refuses() ? nullptr : std::realloc(block, size);
}

struct Hook {
    Refused kind;
    const char* name;
    void* replacement;
};

template <auto function, auto failure>
Hook HookOf(Refused kind, const char* name) {
    return {kind, name, reinterpret_cast<void*>(&Replacement<function, failure>::Call)};
}

const Hook hooks[] = {
    HookOf<&CreatePen, nullptr>(Refused::drawing, "CreatePen"),
    HookOf<&CreateSolidBrush, nullptr>(Refused::drawing, "CreateSolidBrush"),
    HookOf<&CreateRectRgn, nullptr>(Refused::drawing, "CreateRectRgn"),
    HookOf<&GetDC, nullptr>(Refused::drawing, "GetDC"),
    HookOf<&CreateCompatibleDC, nullptr>(Refused::drawing, "CreateCompatibleDC"),
    HookOf<&CreateCompatibleBitmap, nullptr>(Refused::drawing, "CreateCompatibleBitmap"),
    {Refused::memory, "malloc", reinterpret_cast<void*>(&MallocOrNot)},
    {Refused::memory, "calloc", reinterpret_cast<void*>(&CallocOrNot)},
    {Refused::memory, "realloc", reinterpret_cast<void*>(&ReallocOrNot)},
    {Refused::files, "CreateFileA", reinterpret_cast<void*>(&CreateFileOrNot)},
    HookOf<&ReadFile, FALSE>(Refused::files, "ReadFile"),
    HookOf<&WriteFile, FALSE>(Refused::files, "WriteFile"),
    HookOf<&GetFileSizeEx, FALSE>(Refused::files, "GetFileSizeEx"),
    HookOf<&RegCreateKeyExA, ERROR_NOT_ENOUGH_MEMORY>(Refused::registry, "RegCreateKeyExA"),
    HookOf<&RegQueryValueExA, ERROR_NOT_ENOUGH_MEMORY>(Refused::registry, "RegQueryValueExA"),
    HookOf<&RegSetValueExA, ERROR_NOT_ENOUGH_MEMORY>(Refused::registry, "RegSetValueExA"),
};

}  // namespace

ImportPatch::ImportPatch(HMODULE library, Refused kind, int first, bool andAllAfter)
    : imports(library) {
    calls = 0;
    firstRefused = first;
    isRefusedAfter = andAllAfter;
    for (const Hook& hook : hooks) {
        if (hook.kind == kind) {
            imports.Exchange(hook.name, hook.replacement);
        }
    }
}

ImportPatch::~ImportPatch() {
    firstRefused = 0;
}

int ImportPatch::Calls() {
    return calls;
}
