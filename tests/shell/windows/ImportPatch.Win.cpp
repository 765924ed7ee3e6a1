#include "tests/shell/windows/ImportPatch.Win.h"

#include <cstdio>
#include <cstdlib>

#include "tests/shell/windows/Refusals.h"

namespace {

bool Refuses(Refused kind) {
    if (!Refusals::Takes(kind)) {
        return false;
    }
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return true;
}

/// A replacement that returns `failure` for refused calls.
template <Refused kind, auto function, auto failure>
struct Replacement;

template <Refused kind, typename Result, typename... Arguments,
          Result(WINAPI* function)(Arguments...), auto failure>
struct Replacement<kind, function, failure> {
    static Result WINAPI Call(Arguments... arguments) {
        return Refuses(kind) ? Result(failure) : function(arguments...);
    }
};

HANDLE WINAPI CreateFileOrNot(LPCSTR path, DWORD access, DWORD share,
                              LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                              HANDLE like) {
    return Refuses(Refused::files)
               ? INVALID_HANDLE_VALUE
               : CreateFileA(path, access, share, security, disposition, flags, like);
}

// A handle that fails to close is closed all the same: the product can do no more about it.

BOOL WINAPI CloseHandleOrNot(HANDLE handle) {
    const bool refuses = Refuses(Refused::files);
    return CloseHandle(handle) && !refuses;
}

LSTATUS WINAPI CloseKeyOrNot(HKEY key) {
    const bool refuses = Refuses(Refused::registry);
    const LSTATUS status = RegCloseKey(key);
    return refuses ? ERROR_NOT_ENOUGH_MEMORY : status;
}

int CloseFileOrNot(std::FILE* file) {
    const bool refuses = Refuses(Refused::files);
    const int status = std::fclose(file);
    return refuses ? EOF : status;
}

std::FILE* OpenFileOrNot(const char* path, const char* mode) {
    return Refuses(Refused::files) ? nullptr : std::fopen(path, mode);
}

std::FILE* TemporaryFileOrNot() {
    return Refuses(Refused::files) ? nullptr : std::tmpfile();
}

std::size_t ReadFileOrNot(void* buffer, std::size_t size, std::size_t count, std::FILE* file) {
    return Refuses(Refused::files) ? 0 : std::fread(buffer, size, count, file);
}

std::size_t WriteFileOrNot(const void* buffer, std::size_t size, std::size_t count,
                           std::FILE* file) {
    return Refuses(Refused::files) ? 0 : std::fwrite(buffer, size, count, file);
}

void* MallocOrNot(std::size_t size) {
    return Refuses(Refused::memory) ? nullptr : std::malloc(size);
}

void* CallocOrNot(std::size_t count, std::size_t size) {
    return Refuses(Refused::memory) ? nullptr : std::calloc(count, size);
}

void* ReallocOrNot(void* block, std::size_t size) {
    return Refuses(Refused::memory) ? nullptr : std::realloc(block, size);
}

struct Hook {
    const char* name;
    void* replacement;
};

template <typename Function>
Hook HookOf(const char* name, Function* replacement) {
    return {name, reinterpret_cast<void*>(replacement)};
}

template <Refused kind, auto function, auto failure>
Hook HookOf(const char* name) {
    return HookOf(name, &Replacement<kind, function, failure>::Call);
}

const Hook hooks[] = {
    HookOf<Refused::drawing, &CreatePen, nullptr>("CreatePen"),
    HookOf<Refused::drawing, &CreateSolidBrush, nullptr>("CreateSolidBrush"),
    HookOf<Refused::drawing, &CreateRectRgn, nullptr>("CreateRectRgn"),
    HookOf<Refused::drawing, &GetDC, nullptr>("GetDC"),
    HookOf<Refused::drawing, &CreateCompatibleDC, nullptr>("CreateCompatibleDC"),
    HookOf<Refused::drawing, &CreateCompatibleBitmap, nullptr>("CreateCompatibleBitmap"),
    HookOf<Refused::drawing, &LoadImageA, nullptr>("LoadImageA"),
    HookOf("malloc", MallocOrNot),
    HookOf("calloc", CallocOrNot),
    HookOf("realloc", ReallocOrNot),
    HookOf<Refused::memory, &GlobalAlloc, nullptr>("GlobalAlloc"),
    HookOf("CreateFileA", CreateFileOrNot),
    HookOf<Refused::files, &ReadFile, FALSE>("ReadFile"),
    HookOf<Refused::files, &WriteFile, FALSE>("WriteFile"),
    HookOf<Refused::files, &GetFileSizeEx, FALSE>("GetFileSizeEx"),
    HookOf<Refused::files, &SetFilePointerEx, FALSE>("SetFilePointerEx"),
    HookOf<Refused::files, &SetEndOfFile, FALSE>("SetEndOfFile"),
    HookOf<Refused::files, &FlushFileBuffers, FALSE>("FlushFileBuffers"),
    HookOf<Refused::files, &DeleteFileA, FALSE>("DeleteFileA"),
    HookOf<Refused::files, &GetTempPathA, 0>("GetTempPathA"),
    HookOf("CloseHandle", CloseHandleOrNot),
    HookOf("fopen", OpenFileOrNot),
    HookOf("tmpfile", TemporaryFileOrNot),
    HookOf("fread", ReadFileOrNot),
    HookOf("fwrite", WriteFileOrNot),
    HookOf("fclose", CloseFileOrNot),
    HookOf<Refused::registry, &RegCreateKeyExA, ERROR_NOT_ENOUGH_MEMORY>("RegCreateKeyExA"),
    HookOf<Refused::registry, &RegOpenKeyExA, ERROR_NOT_ENOUGH_MEMORY>("RegOpenKeyExA"),
    HookOf<Refused::registry, &RegQueryValueExA, ERROR_NOT_ENOUGH_MEMORY>("RegQueryValueExA"),
    HookOf<Refused::registry, &RegSetValueExA, ERROR_NOT_ENOUGH_MEMORY>("RegSetValueExA"),
    HookOf("RegCloseKey", CloseKeyOrNot),
};

}  // namespace

ImportPatch::ImportPatch(HMODULE library) : imports(library) {
    for (const Hook& hook : hooks) {
        imports.Exchange(hook.name, hook.replacement);
    }
}
