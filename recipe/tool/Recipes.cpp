#include "recipe/tool/Recipes.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

#include "host/picture/Picture.h"
#include "recipe/operations/Operations.h"
#include "recipe/tool/ProgressBar.h"
#include "recipe/tool/Session.h"
#include "recipe/tool/System.h"

namespace recipe {

namespace {

/// A recipe that has passed its check.
struct CheckedRecipe {
    std::string name;
    std::string text;
    std::vector<Operation> operations;
};

/// One line, also with control characters in the file's name.
std::string ErrorLine(const std::string& name, const RecipeError& error) {
    std::string line = name + ":" + std::to_string(error.line) + ": " + error.what();
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return line + "\n";
}

/// Writes in one piece, so that lines of processes that run at the same time do not mix.
void WriteError(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

/// Throws RecipeError if the text is longer than any recipe or cannot be read.
std::string ReadAll(std::FILE* stream) {
    constexpr std::size_t longest = std::size_t{16} << 20;
    std::string text;
    std::array<char, 65536> block;
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), stream)) > 0) {
        text.append(block.data(), count);
        if (text.size() > longest) {
            throw RecipeError(1, "the recipe is longer than 16 MB");
        }
    }
    if (std::ferror(stream) != 0) {
        throw RecipeError(1, "the recipe cannot be read");
    }
    return text;
}

std::string ReadRecipe(const std::string& name) {
    if (name == standardInputName) {
        MakeStandardInputBinary();
        return ReadAll(stdin);
    }
    const FileHandle file = OpenFile(host::PathFromUtf8(name), "rb");
    if (!file) {
        throw RecipeError(1, "the recipe cannot be opened");
    }
    return ReadAll(file.get());
}

std::optional<CheckedRecipe> CheckRecipe(const std::string& name, const Settings& settings) {
    try {
        std::string text = ReadRecipe(name);
        std::vector<Operation> operations =
            ParseRecipe(text, OperationTable(), settings.replacements);
        return CheckedRecipe{name, std::move(text), std::move(operations)};
    } catch (const RecipeError& error) {
        WriteError(ErrorLine(name, error));
        return std::nullopt;
    }
}

FilePlaces PlacesOf(const CheckedRecipe& recipe, const Settings& settings) {
    const std::filesystem::path folder = recipe.name == standardInputName
                                             ? std::filesystem::path()
                                             : host::PathFromUtf8(recipe.name).parent_path();
    return {folder, host::PathFromUtf8(settings.outputFolder)};
}

int RunHere(const CheckedRecipe& recipe, const Settings& settings) {
    ProgressBar bar(!settings.quiet && StandardErrorIsTerminal());
    try {
        Session session(PlacesOf(recipe, settings), [&](double share) { bar.Show(share); });
        session.Run(recipe.operations);
        return exitDone;
    } catch (const RecipeError& error) {
        bar.Clear();
        WriteError(ErrorLine(recipe.name, error));
        return exitFailed;
    }
}

/// Runs several recipes, each as a process of this program.
class Batch {
  public:
    Batch(const std::vector<CheckedRecipe>& checkedRecipes, const Settings& commonSettings)
        : recipes(checkedRecipes),
          settings(commonSettings),
          bar(!commonSettings.quiet && StandardErrorIsTerminal()) {}

    int Run() {
        const auto workers =
            std::min<std::size_t>(static_cast<std::size_t>(settings.jobs), recipes.size());
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < workers; ++i) {
            threads.emplace_back([this] { Work(); });
        }
        threads.clear();  // waits for all
        return status;
    }

  private:
    void Work() {
        for (std::size_t i = next++; i < recipes.size(); i = next++) {
            Finish(recipes[i], RunChild(recipes[i]));
        }
    }

    ChildResult RunChild(const CheckedRecipe& recipe) const {
        const bool fromInput = recipe.name == standardInputName;
        try {
            return RunProgram(ThisProgram(), ArgumentsFor(recipe), fromInput ? recipe.text : "");
        } catch (const std::exception& error) {
            return {exitFailed, ErrorLine(recipe.name, RecipeError(1, error.what()))};
        }
    }

    std::vector<std::string> ArgumentsFor(const CheckedRecipe& recipe) const {
        std::vector<std::string> arguments = {"--quiet"};
        if (!settings.outputFolder.empty()) {
            arguments.push_back("--out-dir=" + settings.outputFolder);
        }
        for (const auto& [name, value] : settings.replacements) {
            arguments.push_back("--set=" + name + "=" + value);
        }
        // Keeps a name that begins with a dash from being an option.
        arguments.insert(arguments.end(), {"--", recipe.name});
        return arguments;
    }

    void Finish(const CheckedRecipe& recipe, ChildResult result) {
        if (result.status < 0) {
            result.errors +=
                ErrorLine(recipe.name, RecipeError(1, "the process of this recipe broke off"));
        }
        const std::lock_guard lock(reporting);
        status = std::max(status, result.status < 0 ? exitFailed : result.status);
        bar.Clear();
        WriteError(result.errors);
        bar.Show(static_cast<double>(++finished) / static_cast<double>(recipes.size()));
    }

    const std::vector<CheckedRecipe>& recipes;
    const Settings& settings;
    std::atomic<std::size_t> next = 0;
    /// Guards the members below.
    std::mutex reporting;
    ProgressBar bar;
    std::size_t finished = 0;
    int status = exitDone;
};

}  // namespace

int RunRecipes(const Settings& settings) {
    std::vector<CheckedRecipe> checked;
    for (const std::string& name : settings.recipes) {
        if (std::optional<CheckedRecipe> recipe = CheckRecipe(name, settings)) {
            checked.push_back(std::move(*recipe));
        }
    }
    if (checked.size() < settings.recipes.size()) {
        return exitRejected;
    }
    return checked.size() == 1 ? RunHere(checked.front(), settings)
                               : Batch(checked, settings).Run();
}

}  // namespace recipe
