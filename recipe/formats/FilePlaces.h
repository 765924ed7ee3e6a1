// Finds the files that a recipe names.
#pragma once

#include <filesystem>
#include <string>

namespace recipe {

/// Names are UTF-8.
class FilePlaces {
  public:
    /// An empty `outputFolderPath` is the current folder.
    FilePlaces(std::filesystem::path recipeFolderPath, std::filesystem::path outputFolderPath);

    /// A relative name is looked for in the current folder, then beside the recipe. Throws
    /// std::runtime_error if there is nothing of that name.
    std::filesystem::path FindInput(const std::string& name) const;

    /// A relative name is in the output folder, which is made if it is not there. Throws
    /// std::runtime_error if that fails.
    std::filesystem::path Output(const std::string& name) const;

  private:
    std::filesystem::path recipeFolder;
    std::filesystem::path outputFolder;
};

/// A file's whole name in single quotes, for messages.
std::string QuotedName(const std::filesystem::path& file);

}  // namespace recipe
