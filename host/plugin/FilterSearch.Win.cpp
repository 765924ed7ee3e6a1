#include "host/plugin/FilterSearch.Win.h"

#include <system_error>

#include "host/command/Arguments.Win.h"

namespace host {

namespace fs = std::filesystem;

FilterList FindFilters(const std::vector<fs::path>& named) {
    FilterList found;
    auto addFile = [&](const fs::path& file) {
        try {
            for (const ListedFilter& filter : ListFile(file)) {
                found.filters.push_back(filter);
            }
        } catch (const PluginError& error) {
            found.problems.push_back(error.what());
        }
    };
    const fs::path folder = ProgramFolder();
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        if (entry.path().extension() == ".8bf") {
            addFile(entry.path());
        }
    }
    if (fs::is_directory(folder / "Filters", ignored)) {
        const FilterList own = ListFolder(folder / "Filters");
        found.filters.insert(found.filters.end(), own.filters.begin(), own.filters.end());
        found.problems.insert(found.problems.end(), own.problems.begin(), own.problems.end());
    }
    for (const fs::path& file : named) {
        addFile(file);
    }
    return found;
}

}  // namespace host
