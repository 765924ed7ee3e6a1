#include "framework/controls/SystemLibrary.Win.h"

#include <string>

HMODULE LoadSystemLibrary(const wchar_t* name) {
    wchar_t folder[MAX_PATH];
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) {
        return nullptr;
    }
    return LoadLibraryW((std::wstring(folder, length) + L'\\' + name).c_str());
}
