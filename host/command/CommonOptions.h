// The command line options that all programs of the host know.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/picture/Picture.h"
#include "host/picture/Selection.h"
#include "host/record/HostSettings.h"

namespace CLI {
class App;
}

namespace host {

/// A command line that makes no sense. The text is one line.
class CommandLineError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct CommonOptions {
    std::filesystem::path image;
    std::vector<std::filesystem::path> filters;
    /// Empty: the whole picture.
    std::optional<hostapi::VRect> selection;
    /// A picture whose grey values select; may be empty.
    std::filesystem::path mask;
    /// Set: an ellipse with this feather, in pixels, inside the selection.
    std::optional<double> ellipseFeather;
    HostSettings settings;
};

/// Adds the options to a CLI11 program and reads them when that has found the line sound.
class CommonOptionReader {
  public:
    /// `app` must live as long as this object.
    explicit CommonOptionReader(CLI::App& app);
    ~CommonOptionReader();
    /// After app.parse(). Throws CommandLineError.
    CommonOptions Read() const;

  private:
    struct Texts;
    std::unique_ptr<Texts> texts;
};

/// Parses, and turns --help, --version and errors into what this returns and throws: the text to
/// print, or nothing to go on; CommandLineError. `arguments` in UTF-8, without the program's name.
std::string ParseCommandLine(CLI::App& app, const std::vector<std::string>& arguments);

/// The selection that the options ask for. Throws SelectionError, PictureError.
Selection SelectionFrom(const CommonOptions& options, const Picture& picture);

}  // namespace host
