// The catalog of filters as items of the window's menu.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>

#include "host/plugin/FilterCatalog.h"

namespace host {

/// Puts a submenu for each category into the Filter menu, and all filters into Help > About Filter,
/// in place of those put there before. `menuBar` is the window's.
void FillFilterMenus(HMENU menuBar, const FilterCatalog& catalog);

/// The filter that a menu command stands for, as a position in the catalog.
std::optional<std::size_t> FilterOfCommand(int command);
std::optional<std::size_t> FilterOfAboutCommand(int command);

/// The text of an item, with `&` and the keys after the tab as they shall appear.
void SetItemText(HMENU menu, UINT command, const std::wstring& text);

}  // namespace host
