// The window's command line.
#pragma once

#include <string>
#include <vector>

#include "host/CommonOptions.h"

namespace host {

struct ParsedWindowOptions {
    CommonOptions options;
    /// Not empty after --help and --version: show it and end with status 0.
    std::string text;
};

/// `arguments` in UTF-8, without the program's name. The picture may stand alone or behind --image.
/// Throws CommandLineError.
ParsedWindowOptions ParseWindowOptions(const std::vector<std::string>& arguments);

}  // namespace host
