#include "recipe/formats/FilePlaces.h"

#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/picture/Picture.h"

namespace recipe {

namespace fs = std::filesystem;

FilePlaces::FilePlaces(fs::path recipeFolderPath, fs::path outputFolderPath)
    : recipeFolder(std::move(recipeFolderPath)), outputFolder(std::move(outputFolderPath)) {}

fs::path FilePlaces::FindInput(const std::string& name) const {
    const fs::path path = host::PathFromUtf8(name);
    // operator/ drops the folder before an absolute path.
    for (const fs::path& candidate : {path, recipeFolder / path}) {
        std::error_code notThere;
        if (fs::exists(candidate, notThere)) {
            return candidate;
        }
    }
    throw std::runtime_error("there is no file " + QuotedName(path));
}

fs::path FilePlaces::Output(const std::string& name) const {
    const fs::path path = host::PathFromUtf8(name);
    if (path.is_absolute() || outputFolder.empty()) {
        return path;
    }
    std::error_code error;
    fs::create_directories(outputFolder, error);
    if (error) {
        throw std::runtime_error("the folder " + QuotedName(outputFolder) +
                                 " cannot be made: " + error.message());
    }
    return outputFolder / path;
}

std::string QuotedName(const fs::path& file) {
    std::string quoted(1, '\'');
    quoted += host::Utf8Name(file);
    quoted += '\'';
    return quoted;
}

}  // namespace recipe
