#include "host/command/Arguments.Win.h"

#include <windows.h>

#include <shellapi.h>

#include "host/picture/Picture.h"

namespace host {

std::vector<std::string> ProgramArguments() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(Utf8Name(std::filesystem::path(words[i])));
    }
    LocalFree(words);
    return arguments;
}

std::filesystem::path ProgramFolder() {
    constexpr std::size_t longestPath = 32768;
    std::wstring file(longestPath, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    file.resize(length);
    return std::filesystem::path(file).parent_path();
}

}  // namespace host
