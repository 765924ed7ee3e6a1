// Which items of the window's menu can be chosen, and what they say.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>

#include "host/window/Document.h"
#include "host/window/SelectionDrag.h"

namespace host {

struct MenuState {
    /// Null without a picture.
    const Document* document;
    SelectionShape shape;
    std::size_t filterCount;
    /// The name of the filter that can be repeated, if there is one.
    std::optional<std::string> lastFilter;
};

/// `menu` is the window's. Called before it opens.
void UpdateMenu(HMENU menu, const MenuState& state);

}  // namespace host
