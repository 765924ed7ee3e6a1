// The process's command line.
#pragma once

#include <string>
#include <vector>

namespace host {

/// In UTF-8, without the program's name.
std::vector<std::string> ProgramArguments();

}  // namespace host
