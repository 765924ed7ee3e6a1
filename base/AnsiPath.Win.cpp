#include "base/AnsiPath.Win.h"

#include <vector>

namespace {

/// In characters. The longest path that any of the plug-in's files may have.
constexpr DWORD capacity = 1024;

/// Empty if a character is missing in the code page.
std::string Narrowed(const std::wstring& path) {
    const bool isUnicode = GetACP() == CP_UTF8;
    // Two bytes a character in the double-byte code pages, and three in Unicode's.
    std::vector<char> bytes(path.size() * 3 + 1);
    BOOL isMissing = FALSE;
    const int length = WideCharToMultiByte(
        CP_ACP, isUnicode ? 0 : WC_NO_BEST_FIT_CHARS, path.c_str(), static_cast<int>(path.size()),
        bytes.data(), static_cast<int>(bytes.size()), nullptr, isUnicode ? nullptr : &isMissing);
    return isMissing ? std::string() : std::string(bytes.data(), static_cast<std::size_t>(length));
}

}  // namespace

std::string AnsiPath(const std::wstring& path) {
    const std::string narrowed = Narrowed(path);
    if (!narrowed.empty()) {
        return narrowed;
    }
    wchar_t shortened[capacity];
    const DWORD length = GetShortPathNameW(path.c_str(), shortened, capacity);
    return length > 0 && length < capacity ? Narrowed(std::wstring(shortened, length)) : "";
}

std::string AnsiPathOf(HMODULE module) {
    wchar_t path[capacity];
    const DWORD length = GetModuleFileNameW(module, path, capacity);
    return length > 0 && length < capacity ? AnsiPath(std::wstring(path, length)) : "";
}
