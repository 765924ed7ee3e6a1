// The registry: one key of the product, with the path as one value. It stands under the machine's
// root, or, for a user who may not write there, under the user's.
#include <windows.h>

#include <shlobj.h>

#include <cstring>
#include <string>

#include "base/AnsiPath.Win.h"
#include "files/PreferencePlace.h"
#include "resources/Strings.h"

namespace {

constexpr char valueName[] = "PreferenceFile";

/// In the module that this code is linked into.
const char placeInThisModule = '\0';

HKEY KeyOf(void* store) {
    return static_cast<HKEY>(store);
}

PreferenceStore Open(PreferenceOwner owner) {
    HKEY key = nullptr;
    char noClass[] = "";
    const LSTATUS status =
        RegCreateKeyExA(owner == PreferenceOwner::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER,
                        StringText(stringProductKey), 0, noClass, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return {status == ERROR_SUCCESS ? key : nullptr, status == ERROR_ACCESS_DENIED};
}

bool ReadPath(void* store, char* path, std::size_t capacity) {
    DWORD type = REG_NONE;
    auto length = static_cast<DWORD>(capacity - 1);
    const LSTATUS status = RegQueryValueExA(KeyOf(store), valueName, nullptr, &type,
                                            reinterpret_cast<BYTE*>(path), &length);
    if (status != ERROR_SUCCESS || type != REG_SZ) {
        return false;
    }
    path[length] = '\0';
    return true;
}

bool ReadMachinePath(char* path, std::size_t capacity) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, StringText(stringProductKey), 0, KEY_QUERY_VALUE, &key) !=
        ERROR_SUCCESS) {
        return false;
    }
    const bool isRead = ReadPath(key, path, capacity);
    RegCloseKey(key);
    return isRead;
}

/// The value ends without a zero.
bool WritePath(void* store, const char* path) {
    return RegSetValueExA(KeyOf(store), valueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(path),
                          static_cast<DWORD>(std::strlen(path))) == ERROR_SUCCESS;
}

bool Close(void* store) {
    return RegCloseKey(KeyOf(store)) == ERROR_SUCCESS;
}

/// False for an empty path, and for one that is too long.
bool CopyPath(const std::string& from, char* path, std::size_t capacity) {
    if (from.empty() || from.size() >= capacity) {
        return false;
    }
    from.copy(path, from.size());
    path[from.size()] = '\0';
    return true;
}

bool ModulePath(char* path, std::size_t capacity) {
    HMODULE module = nullptr;
    return GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                  GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                              &placeInThisModule, &module) != FALSE &&
           CopyPath(AnsiPathOf(module), path, capacity);
}

bool UserFolder(char* path, std::size_t capacity) {
    wchar_t data[MAX_PATH];
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr,
                                SHGFP_TYPE_CURRENT, data))) {
        return false;
    }
    const std::wstring folder = std::wstring(data) + L"\\Zandermolite";
    const bool exists = CreateDirectoryW(folder.c_str(), nullptr) != FALSE ||
                        GetLastError() == ERROR_ALREADY_EXISTS;
    const std::string narrowed = exists ? AnsiPath(folder) : "";
    return !narrowed.empty() && CopyPath(narrowed + '\\', path, capacity);
}

}  // namespace

PreferencePlaceServices preferencePlace = {Open,  ReadMachinePath, ReadPath,  WritePath,
                                           Close, ModulePath,      UserFolder};
