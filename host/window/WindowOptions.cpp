#include "host/window/WindowOptions.h"

#include <CLI/CLI.hpp>

#include "host/command/Version.h"
#include "host/picture/Picture.h"

namespace host {

ParsedWindowOptions ParseWindowOptions(const std::vector<std::string>& arguments) {
    CLI::App app("Opens a picture and runs filter plug-ins on it.", "zandermolite-host");
    app.set_version_flag("--version", "zandermolite-host " + std::string(versionText));
    WindowOptions options;
    std::string picture, statusFile;
    app.add_option("PICTURE", picture, "The picture; as --image");
    app.add_option("--status-file", statusFile,
                   "Write what the status bar says, and what waits for input, into a file")
        ->type_name("FILE");
    const CommonOptionReader common(app);

    const std::string text = ParseCommandLine(app, arguments);
    if (!text.empty()) {
        return {{}, text};
    }
    options.common = common.Read();
    options.statusFile = PathFromUtf8(statusFile);
    if (!picture.empty() && !options.common.image.empty()) {
        throw CommandLineError("--image: there is a picture without it, too");
    }
    if (!picture.empty()) {
        options.common.image = PathFromUtf8(picture);
    }
    return {options, {}};
}

}  // namespace host
