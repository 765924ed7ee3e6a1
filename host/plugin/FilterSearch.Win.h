// Where the window's program looks for filters.
#pragma once

#include <filesystem>
#include <vector>

#include "host/plugin/PluginFile.Win.h"

namespace host {

/// The filters in files beside the program, in its folder "Filters", and in `named`, in this order.
FilterList FindFilters(const std::vector<std::filesystem::path>& named);

}  // namespace host
