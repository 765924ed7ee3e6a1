// The batch program's command line.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/HostSettings.h"

namespace host {

/// A command line that makes no sense. The text is one line.
class CommandLineError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct BatchOptions {
    /// If set, the program only lists the filters of this file or folder.
    std::filesystem::path list;
    std::filesystem::path image;
    std::filesystem::path filter;
    /// Which of several filters in the file; empty for the first.
    std::string filterName;
    /// Empty: the result isn't written.
    std::filesystem::path out;
    /// Empty: the whole picture.
    std::optional<hostapi::VRect> selection;
    /// A picture whose grey values select; may be empty.
    std::filesystem::path mask;
    /// Set: an ellipse with this feather, in pixels, inside the selection.
    std::optional<double> ellipseFeather;
    int times = 1;
    /// The executions after the first, or the only one, are without the dialog.
    bool repeat = false;
    bool about = false;
    /// Set: nothing but this selector is called.
    std::optional<std::int16_t> selector;
    bool json = false;
    HostSettings settings;
};

struct ParsedCommandLine {
    BatchOptions options;
    /// Not empty after --help and --version: print it and end with status 0.
    std::string text;
};

/// `arguments` in UTF-8, without the program's name. Throws CommandLineError.
ParsedCommandLine ParseBatchOptions(const std::vector<std::string>& arguments);

}  // namespace host
