#include <windows.h>

#include "base/LeadByte.Win.h"
#include "files/FileSystem.h"

namespace {

DWORD AccessFlags(FileAccess access) {
    switch (access) {
        case FileAccess::read:
            return GENERIC_READ;
        case FileAccess::write:
            return GENERIC_WRITE;
        case FileAccess::readAndWrite:
            break;
    }
    return GENERIC_READ | GENERIC_WRITE;
}

DWORD CreationOf(FileDisposition disposition) {
    switch (disposition) {
        case FileDisposition::existing:
            return OPEN_EXISTING;
        case FileDisposition::create:
            return CREATE_ALWAYS;
        case FileDisposition::openOrCreate:
            break;
    }
    return OPEN_ALWAYS;
}

void* Open(const char* path, FileAccess access, FileDisposition disposition) {
    constexpr DWORD noSharing = 0;
    const HANDLE handle = CreateFileA(path, AccessFlags(access), noSharing, nullptr,
                                      CreationOf(disposition), FILE_ATTRIBUTE_NORMAL, nullptr);
    return handle != INVALID_HANDLE_VALUE ? handle : nullptr;
}

bool Close(void* handle) {
    return CloseHandle(handle) != FALSE;
}

bool Remove(const char* path) {
    return DeleteFileA(path) != FALSE;
}

std::int64_t Size(void* handle) {
    LARGE_INTEGER size;
    return GetFileSizeEx(handle, &size) ? size.QuadPart : -1;
}

bool Seek(void* handle, std::int32_t position) {
    LARGE_INTEGER distance;
    distance.QuadPart = position;
    return SetFilePointerEx(handle, distance, nullptr, FILE_BEGIN) != FALSE;
}

bool SetEnd(void* handle) {
    return SetEndOfFile(handle) != FALSE;
}

bool Read(void* handle, void* buffer, std::int32_t count, std::int32_t* transferred) {
    DWORD done = 0;
    const BOOL succeeded = ReadFile(handle, buffer, static_cast<DWORD>(count), &done, nullptr);
    *transferred = static_cast<std::int32_t>(done);
    return succeeded != FALSE;
}

bool Write(void* handle, const void* buffer, std::int32_t count, std::int32_t* transferred) {
    DWORD done = 0;
    const BOOL succeeded = WriteFile(handle, buffer, static_cast<DWORD>(count), &done, nullptr);
    *transferred = static_cast<std::int32_t>(done);
    return succeeded != FALSE;
}

bool Flush(void* handle) {
    return FlushFileBuffers(handle) != FALSE;
}

int LastError() {
    return static_cast<int>(GetLastError());
}

bool WasDenied() {
    return GetLastError() == ERROR_ACCESS_DENIED;
}

bool WaitsForOthers() {
    const DWORD reason = GetLastError();
    if (reason != ERROR_SHARING_VIOLATION && reason != ERROR_LOCK_VIOLATION) {
        return false;
    }
    constexpr DWORD moment = 20;
    Sleep(moment);
    return true;
}

constexpr DWORD writableProtections =
    PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
constexpr DWORD readableProtections =
    writableProtections | PAGE_READONLY | PAGE_EXECUTE | PAGE_EXECUTE_READ;

/// Asks for each region of pages that the block touches. To try the memory out, as IsBadWritePtr
/// does, would take a stack's guard pages with it.
bool IsAccessible(const void* block, std::int32_t count, DWORD protections) {
    const char* at = static_cast<const char*>(block);
    const char* const end = at + count;
    while (at < end) {
        MEMORY_BASIC_INFORMATION region;
        if (VirtualQuery(at, &region, sizeof region) == 0 || region.State != MEM_COMMIT ||
            (region.Protect & protections) == 0 || (region.Protect & PAGE_GUARD) != 0) {
            return false;
        }
        at = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return true;
}

bool IsReadable(const void* block, std::int32_t count) {
    return IsAccessible(block, count, readableProtections);
}

bool IsWritable(void* block, std::int32_t count) {
    return IsAccessible(block, count, writableProtections);
}

}  // namespace

FileSystemServices fileSystem = {Open,      Close,          Remove,     Size,       Seek,
                                 SetEnd,    Read,           Write,      Flush,      LastError,
                                 WasDenied, WaitsForOthers, IsReadable, IsWritable, IsLeadByte};
