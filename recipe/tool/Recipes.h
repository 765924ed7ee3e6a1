// Checks and runs the recipes of a command line.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "recipe/language/RecipeParser.h"

namespace recipe {

enum ExitStatus : int {
    exitDone = 0,
    /// A run failed; nothing half-written is left.
    exitFailed = 1,
    /// A recipe or the command line is wrong; nothing was run.
    exitRejected = 2,
};

/// The name that stands for standard input.
constexpr std::string_view standardInputName = "-";

struct Settings {
    /// File names, UTF-8.
    std::vector<std::string> recipes;
    /// Empty for the current folder.
    std::string outputFolder;
    Replacements replacements;
    /// Recipes that run at the same time, 1 or more.
    int jobs = 1;
    bool quiet = false;
};

/// Checks all recipes, then runs them: a single one in this process, several in one process each,
/// since the core's state is global. Writes one line to standard error for each recipe that is
/// invalid or fails. Returns an ExitStatus.
int RunRecipes(const Settings& settings);

}  // namespace recipe
