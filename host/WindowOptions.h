// The window's command line.
#pragma once

#include <string>
#include <vector>

#include "host/CommonOptions.h"

namespace host {

struct WindowOptions {
    CommonOptions common;
    /// For scripts that drive the window: what the status bar says goes to the standard output too,
    /// a line each, and so does that a menu, "(menu)", or a dialog, "(dialog TITLE)", waits for
    /// input.
    bool printsStatus = false;
};

struct ParsedWindowOptions {
    WindowOptions options;
    /// Not empty after --help and --version: show it and end with status 0.
    std::string text;
};

/// `arguments` in UTF-8, without the program's name. The picture may stand alone or behind --image.
/// Throws CommandLineError.
ParsedWindowOptions ParseWindowOptions(const std::vector<std::string>& arguments);

}  // namespace host
