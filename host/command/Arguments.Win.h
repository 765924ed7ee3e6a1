// The process's command line, and where its program is.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// In UTF-8, without the program's name.
std::vector<std::string> ProgramArguments();

/// The folder that the program is in.
std::filesystem::path ProgramFolder();

}  // namespace host
