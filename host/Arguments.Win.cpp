#include "host/Arguments.Win.h"

#include <windows.h>

#include <shellapi.h>

#include <filesystem>

#include "host/Picture.h"

namespace host {

std::vector<std::string> ProgramArguments() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Utf8Name(std::filesystem::path(words[i])));
    LocalFree(words);
    return arguments;
}

}  // namespace host
