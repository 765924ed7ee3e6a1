#include "host/plugin/PluginFile.Win.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <system_error>

namespace host {

namespace {

namespace fs = std::filesystem;

// Without a full path the loader would look in other folders, too.
fs::path FullPath(const fs::path& file) {
    std::error_code error;
    return fs::absolute(file, error);
}

/// A module mapped for its resources alone.
class DataModule {
  public:
    explicit DataModule(const fs::path& file)
        : module(LoadLibraryExW(FullPath(file).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
        if (module == nullptr) {
            throw PluginError(Utf8Name(file) + ": not a plug-in, or it cannot be opened");
        }
    }
    ~DataModule() { FreeLibrary(module); }
    DataModule(const DataModule&) = delete;
    DataModule& operator=(const DataModule&) = delete;

    std::span<const std::uint8_t> Resource(LPCWSTR type, LPCWSTR name) const {
        HRSRC found = FindResourceW(module, name, type);
        HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
        const void* bytes = loaded == nullptr ? nullptr : LockResource(loaded);
        if (bytes == nullptr) {
            return {};
        }
        return {static_cast<const std::uint8_t*>(bytes), SizeofResource(module, found)};
    }
    HMODULE Get() const { return module; }

  private:
    HMODULE module;
};

/// A resource's name: a number or a text.
struct ResourceName {
    WORD number;
    std::wstring text;

    LPCWSTR Get() const { return text.empty() ? MAKEINTRESOURCEW(number) : text.c_str(); }
};

BOOL CALLBACK CollectName(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR target) {
    auto* names = reinterpret_cast<std::vector<ResourceName>*>(target);
    if (IS_INTRESOURCE(name)) {
        names->push_back({LOWORD(reinterpret_cast<ULONG_PTR>(name)), {}});
    } else {
        names->push_back({0, name});
    }
    return TRUE;
}

bool IsPluginName(const fs::path& file) {
    std::wstring extension = file.extension().wstring();
    CharLowerW(extension.data());
    return extension == L".8bf";
}

}  // namespace

std::vector<ListedFilter> ListFile(const fs::path& file) {
    const DataModule module(file);
    std::vector<ResourceName> names;
    EnumResourceNamesW(module.Get(), L"PIPL", CollectName, reinterpret_cast<LONG_PTR>(&names));
    if (names.empty()) {
        throw PluginError(Utf8Name(file) + ": has no PIPL resource");
    }
    std::vector<ListedFilter> filters;
    for (const ResourceName& name : names) {
        try {
            filters.push_back({file, ParsePipl(module.Resource(L"PIPL", name.Get()))});
        } catch (const PluginError& error) {
            throw PluginError(Utf8Name(file) + ": " + error.what());
        }
    }
    return filters;
}

FilterList ListFolder(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::recursive_directory_iterator
             entry(folder, fs::directory_options::skip_permission_denied, error),
         end;
         !error && entry != end; entry.increment(error)) {
        if (IsPluginName(entry->path())) {
            files.push_back(entry->path());
        }
    }
    if (error) {
        throw PluginError(Utf8Name(folder) + ": the folder cannot be read");
    }
    std::sort(files.begin(), files.end());
    FilterList list;
    for (const fs::path& file : files) {
        try {
            auto filters = ListFile(file);
            list.filters.insert(list.filters.end(), filters.begin(), filters.end());
        } catch (const PluginError& problem) {
            list.problems.push_back(problem.what());
        }
    }
    return list;
}

LoadedFilter::LoadedFilter(const ListedFilter& filter) : module(nullptr), entry(nullptr) {
    const std::string file = Utf8Name(filter.file);
    const std::string& name = filter.description.Entry();
    if (name.empty()) {
        throw PluginError(file + ": has no code for a " + (hostapi::is64Bit ? "64" : "32") +
                          "-bit host");
    }
    HMODULE loaded =
        LoadLibraryExW(FullPath(filter.file).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (loaded == nullptr) {
        throw PluginError(file + ": the code cannot be loaded (error " +
                          std::to_string(GetLastError()) + ")");
    }
    const FARPROC found = GetProcAddress(loaded, name.c_str());
    if (found == nullptr) {
        FreeLibrary(loaded);
        throw PluginError(file + ": exports no " + name);
    }
    module = loaded;
    std::memcpy(&entry, &found, sizeof(entry));
}

LoadedFilter::~LoadedFilter() {
    FreeLibrary(static_cast<HMODULE>(module));
}

}  // namespace host
