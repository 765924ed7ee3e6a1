// Filters in files: listing them and loading their code.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/plugin/PluginFile.h"

namespace host {

struct FilterList {
    /// In the order of the files' names.
    std::vector<ListedFilter> filters;
    /// One line for each file or resource that was passed over.
    std::vector<std::string> problems;
};

/// The filters of one file. It's only read, as a data file: no code of it runs, and it may be of
/// the other bitness. Throws PluginError if it can't be read or holds no filter.
std::vector<ListedFilter> ListFile(const std::filesystem::path& file);

/// The filters of all files *.8bf in a folder and the folders in it. Throws PluginError if the
/// folder can't be read.
FilterList ListFolder(const std::filesystem::path& folder);

/// A filter's code, ready to be called; freed with the object.
class LoadedFilter {
  public:
    /// Throws PluginError.
    explicit LoadedFilter(const ListedFilter& filter);
    ~LoadedFilter();
    LoadedFilter(const LoadedFilter&) = delete;
    LoadedFilter& operator=(const LoadedFilter&) = delete;

    EntryPoint Entry() const { return entry; }

  private:
    void* module;
    EntryPoint entry;
};

}  // namespace host
