// The filters that a window offers, in the order of its menu.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/plugin/PluginFile.h"

namespace host {

/// One category with its filters, by their positions in the catalog.
struct CatalogGroup {
    std::string category;
    std::vector<std::size_t> entries;
};

/// An entry keeps its position, so that it can stand for the filter in menu commands.
class FilterCatalog {
  public:
    /// Returns the entry's position. The same name and category in the same file comes in only
    /// once.
    std::size_t Add(ListedFilter entry);
    std::size_t Count() const { return entries.size(); }
    bool IsEmpty() const { return entries.empty(); }
    const ListedFilter& At(std::size_t position) const { return entries.at(position); }
    /// Categories and, in each, filters by name, without regard to case. A filter without a
    /// category stands under "Other".
    std::vector<CatalogGroup> Groups() const;

  private:
    std::vector<ListedFilter> entries;
};

}  // namespace host
