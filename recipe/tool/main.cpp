// zandermolite-recipe: makes textures from recipes, without an image editor.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "recipe/language/Wording.h"
#include "recipe/presets/PresetListing.h"
#include "recipe/tool/Recipes.h"
#include "recipe/tool/System.h"

namespace {

using recipe::Settings;

struct CommandLine {
    Settings settings;
    /// The file to list; empty to run recipes.
    std::string preferenceFile;
};

/// Adds the replacement of a text NAME=VALUE. Throws CLI::ValidationError.
void AddReplacement(const std::string& assignment, recipe::Replacements& replacements) {
    const std::size_t sign = assignment.find('=');
    const std::string name = assignment.substr(0, sign);
    if (sign == std::string::npos || !recipe::IsReplacementName(name)) {
        throw CLI::ValidationError("--set",
                                   recipe::Quoted(assignment) + " is not of the form name=value");
    }
    if (!replacements.emplace(name, assignment.substr(sign + 1)).second) {
        throw CLI::ValidationError("--set", recipe::Quoted(name) + " is set twice");
    }
}

void CheckRecipeNames(const std::vector<std::string>& names) {
    if (std::ranges::count(names, recipe::standardInputName) > 1) {
        throw CLI::ValidationError("RECIPE", "standard input can be read once only");
    }
}

/// Throws CLI::ParseError, also for --help and --version.
CommandLine ReadCommandLine(CLI::App& app, std::vector<std::string> arguments) {
    CommandLine commandLine;
    Settings& settings = commandLine.settings;
    std::vector<std::string> assignments;
    app.set_version_flag("--version", "zandermolite-recipe " ZANDERMOLITE_VERSION);
    // A path that begins with a slash is no option, on any system.
    app.allow_windows_style_options(false);
    CLI::Option* const recipes =
        app.add_option("RECIPE", settings.recipes, "Recipe files to run; - is standard input")
            ->type_name("FILE");
    app.add_option("--out-dir", settings.outputFolder,
                   "Folder for the files that recipes write (default: the current one)")
        ->type_name("DIR");
    app.add_option("--set", assignments, "Put VALUE in the place of ${NAME}; may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    app.add_option("--jobs", settings.jobs, "Recipes to run at the same time (default: 1)")
        ->type_name("N")
        ->check(CLI::Range(1, 256));
    app.add_flag("--quiet", settings.quiet, "Show no progress bar");
    app.add_option("--list-presets", commandLine.preferenceFile,
                   "Print what a preference file of the plug-in holds, and run nothing")
        ->type_name("FILE")
        ->excludes(recipes);

    std::ranges::reverse(arguments);  // the form that the library asks for
    app.parse(std::move(arguments));
    for (const std::string& assignment : assignments) {
        AddReplacement(assignment, settings.replacements);
    }
    if (settings.recipes.empty() && commandLine.preferenceFile.empty()) {
        throw CLI::RequiredError("RECIPE");
    }
    CheckRecipeNames(settings.recipes);
    return commandLine;
}

int Main(int argc, char** argv) {
    CLI::App app("Makes seamless textures from recipes: text files with one operation a line.",
                 "zandermolite-recipe");
    CommandLine commandLine;
    try {
        commandLine = ReadCommandLine(app, recipe::CommandLineArguments(argc, argv));
    } catch (const CLI::Success& helpOrVersion) {
        return app.exit(helpOrVersion);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "zandermolite-recipe: %s\n", error.what());
        return recipe::exitRejected;
    }
    if (!commandLine.preferenceFile.empty()) {
        recipe::ListPresets(commandLine.preferenceFile);
        return recipe::exitDone;
    }
    return recipe::RunRecipes(commandLine.settings);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Main(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zandermolite-recipe: %s\n", error.what());
        return recipe::exitFailed;
    }
}
