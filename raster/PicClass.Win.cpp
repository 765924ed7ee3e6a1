#include <windows.h>

#include "raster/PicStorage.h"

namespace {

/// A file in the temporary folder that the system removes when it is closed.
FilePointer OpenInTemporaryFolder() {
    char folder[MAX_PATH + 1];
    char name[MAX_PATH];
    const DWORD length = GetTempPathA(sizeof folder, folder);
    if (length < 1 || length >= sizeof folder || GetTempFileNameA(folder, "zan", 0, name) == 0) {
        return nullptr;
    }
    FilePointer file(std::fopen(name, "w+bTD"));
    if (!file) {
        DeleteFileA(name);
    }
    return file;
}

}  // namespace

FilePointer OpenAnonymousFile() {
    // The run-time library's tmpfile wants to write to the root of the drive, which ordinary users
    // may not: then the temporary folder serves.
    FilePointer file(std::tmpfile());
    return file ? std::move(file) : OpenInTemporaryFolder();
}
