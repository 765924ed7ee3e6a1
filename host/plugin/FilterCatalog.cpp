#include "host/plugin/FilterCatalog.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace host {

namespace {

// The names are in whatever encoding the filter's author used; its upper half stays as it is.
bool ComesBefore(const std::string& a, const std::string& b) {
    auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [&](char x, char y) { return lower(x) < lower(y); });
}

bool IsSameFilter(const ListedFilter& a, const ListedFilter& b) {
    return a.file == b.file && a.description.name == b.description.name &&
           a.description.category == b.description.category;
}

}  // namespace

std::size_t FilterCatalog::Add(ListedFilter entry) {
    const auto known = std::find_if(entries.begin(), entries.end(), [&](const ListedFilter& other) {
        return IsSameFilter(entry, other);
    });
    if (known != entries.end()) {
        return static_cast<std::size_t>(known - entries.begin());
    }
    entries.push_back(std::move(entry));
    return entries.size() - 1;
}

std::vector<CatalogGroup> FilterCatalog::Groups() const {
    std::vector<CatalogGroup> groups;
    for (std::size_t position = 0; position < entries.size(); ++position) {
        const std::string& own = entries[position].description.category;
        const std::string category = own.empty() ? "Other" : own;
        auto group = std::find_if(groups.begin(), groups.end(), [&](const CatalogGroup& other) {
            return other.category == category;
        });
        if (group == groups.end()) {
            group = groups.insert(groups.end(), {category, {}});
        }
        group->entries.push_back(position);
    }
    std::stable_sort(groups.begin(), groups.end(), [](const auto& a, const auto& b) {
        return ComesBefore(a.category, b.category);
    });
    for (CatalogGroup& group : groups) {
        std::stable_sort(group.entries.begin(), group.entries.end(), [&](auto a, auto b) {
            return ComesBefore(entries[a].description.name, entries[b].description.name);
        });
    }
    return groups;
}

}  // namespace host
