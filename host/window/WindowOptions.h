// The window's command line.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/command/CommonOptions.h"

namespace host {

struct WindowOptions {
    CommonOptions common;
    /// For scripts that drive the window; may be empty. What the status bar says is written to this
    /// file too, a line each, and so is that a menu, "(menu)", or a dialog, "(dialog TITLE)", waits
    /// for input, and what the user is told in a box, "(error) TEXT".
    std::filesystem::path statusFile;
};

struct ParsedWindowOptions {
    WindowOptions options;
    /// Not empty after --help and --version: show it and end with status 0.
    std::string text;
};

/// `arguments` in UTF-8, without the program's name. The picture may stand alone or after --image.
/// Throws CommandLineError.
ParsedWindowOptions ParseWindowOptions(const std::vector<std::string>& arguments);

}  // namespace host
