// The batch program's command line.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/command/CommonOptions.h"
#include "host/command/DialogPress.h"

namespace host {

struct BatchOptions {
    /// With exactly one filter, unless something is listed.
    CommonOptions common;
    /// If set, the program only lists the filters of this file or folder.
    std::filesystem::path list;
    /// Which of several filters in the file; empty for the first.
    std::string filterName;
    /// Empty: the result isn't written.
    std::filesystem::path out;
    int times = 1;
    /// The executions after the first, or the only one, are without the dialog.
    bool repeat = false;
    bool about = false;
    /// Set: nothing but this selector is called.
    std::optional<std::int16_t> selector;
    bool json = false;
    /// Presses in the filter's dialogs, in order, in place of a user's.
    std::vector<DialogPress> presses;
};

struct ParsedCommandLine {
    BatchOptions options;
    /// Not empty after --help and --version: print it and end with status 0.
    std::string text;
};

/// `arguments` in UTF-8, without the program's name. Throws CommandLineError.
ParsedCommandLine ParseBatchOptions(const std::vector<std::string>& arguments);

}  // namespace host
