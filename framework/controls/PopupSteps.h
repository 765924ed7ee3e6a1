// Moving along the entries of a popup menu by keys, and its columns.
#pragma once

#include <functional>

enum class PopupKey { previous, next, first, last };

/// The 1-based entry that a key leads to from `selected`. Entries for which `isSelectable` does not
/// hold are passed over in the key's direction; if there is no other, the selection stays.
int PopupEntryAfter(PopupKey key, int selected, int count,
                    const std::function<bool(int)>& isSelectable);

/// How many entries fit one below the other. `entryHeight` 0 or less: it cannot be found.
int PopupEntriesInColumn(int desktopHeight, int entryHeight);

/// Whether the 1-based entry is the first of a column other than the first.
bool StartsPopupColumn(int entry, int entriesInColumn);
