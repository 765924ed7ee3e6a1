#include "host/command/BatchOptions.h"

#include <CLI/CLI.hpp>

#include "host/command/Version.h"
#include "host/picture/Picture.h"

namespace host {

namespace {

const char* const footer =
    "Exit status: 0 the filter ran, nothing was found; 2 a picture or filter that cannot be used, "
    "or "
    "a command line that makes no sense; 3 the filter answered a result other than 0; 4 the host "
    "caught the filter at a fault; 5 the filter crashed.\n"
    "OUT is written only if the result is 0.";

void RequireComplete(const BatchOptions& options) {
    if (!options.list.empty()) {
        return;
    }
    if (options.common.filters.empty()) {
        throw CommandLineError("--filter is missing");
    }
    if (options.common.filters.size() > 1) {
        throw CommandLineError("--filter is there more than once");
    }
    if (options.common.image.empty() && !options.about && !options.selector) {
        throw CommandLineError("--image is missing");
    }
}

std::vector<DialogPress> Presses(const std::vector<std::string>& texts) {
    std::vector<DialogPress> presses;
    try {
        for (const std::string& text : texts) {
            presses.push_back(ParsePress(text));
        }
    } catch (const std::invalid_argument& error) {
        throw CommandLineError(std::string("--press: ") + error.what());
    }
    return presses;
}

}  // namespace

ParsedCommandLine ParseBatchOptions(const std::vector<std::string>& arguments) {
    CLI::App app("Runs a filter plug-in on a picture, as an image editor would.",
                 "zandermolite-run");
    app.footer(footer);
    app.set_version_flag("--version", "zandermolite-run " + std::string(versionText));
    BatchOptions options;
    std::string out, list;
    std::vector<std::string> presses;
    const CommonOptionReader common(app);
    app.add_option("--name", options.filterName,
                   "The filter's name, if the file holds several (default: the first)");
    app.add_option("--out", out, "Where the result goes, as PNG (default: nowhere)")
        ->type_name("FILE");
    app.add_option("--times", options.times, "How often the filter runs, each time on the result")
        ->check(CLI::Range(1, 100000));
    app.add_flag("--repeat", options.repeat,
                 "The runs after the first, or the only one, are without the filter's dialog");
    auto* about = app.add_flag("--about", options.about, "Only show the filter's About box");
    app.add_option("--selector", options.selector, "Only call this selector")->excludes(about);
    app.add_option("--list", list, "Only list the filters of this file or folder")
        ->type_name("FILE");
    app.add_option("--press", presses,
                   "Press the button with this control id in the filter's dialog with this title "
                   "(may be given more than once: in this order)")
        ->type_name("TITLE:ITEM");
    app.add_flag("--json", options.json, "Print JSON in place of the lines");

    const std::string text = ParseCommandLine(app, arguments);
    if (!text.empty()) {
        return {{}, text};
    }
    options.common = common.Read();
    options.out = PathFromUtf8(out);
    options.list = PathFromUtf8(list);
    options.presses = Presses(presses);
    RequireComplete(options);
    return {options, {}};
}

}  // namespace host
