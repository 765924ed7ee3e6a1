// Without a registry the path is remembered as long as the program runs.
#include <unistd.h>

#include <string>

#include "files/PreferencePlace.h"

namespace {

std::string storedPath;

PreferenceStore Open(PreferenceOwner) {
    return {&storedPath, false};
}

/// The one store can be written to.
bool ReadMachinePath(char*, std::size_t) {
    return false;
}

bool CopyPath(const std::string& from, char* path, std::size_t capacity) {
    if (from.empty() || from.size() >= capacity) {
        return false;
    }
    from.copy(path, from.size());
    path[from.size()] = '\0';
    return true;
}

bool ReadPath(void* store, char* path, std::size_t capacity) {
    return CopyPath(*static_cast<const std::string*>(store), path, capacity);
}

bool WritePath(void* store, const char* path) {
    *static_cast<std::string*>(store) = path;
    return true;
}

bool Close(void*) {
    return true;
}

bool ModulePath(char* path, std::size_t capacity) {
    const ssize_t length = readlink("/proc/self/exe", path, capacity);
    if (length <= 0 || static_cast<std::size_t>(length) >= capacity) {
        return false;
    }
    path[length] = '\0';
    return true;
}

/// No program of this system runs from a folder of the administrator's and keeps settings.
bool UserFolder(char*, std::size_t) {
    return false;
}

}  // namespace

PreferencePlaceServices preferencePlace = {Open,  ReadMachinePath, ReadPath,  WritePath,
                                           Close, ModulePath,      UserFolder};
