#include "framework/controls/PopupSteps.h"

namespace {

constexpr int usualEntriesInColumn = 20;
/// The height that a menu takes of the screen beside its entries, in pixels.
constexpr int menuFrameHeight = 6;
constexpr int entryGap = 2;

struct Walk {
    int start;
    int step;
};

Walk WalkOf(PopupKey key, int selected, int count) {
    switch (key) {
        case PopupKey::previous:
            return {selected - 1, -1};
        case PopupKey::next:
            return {selected + 1, 1};
        case PopupKey::first:
            return {1, 1};
        case PopupKey::last:
            return {count, -1};
    }
    return {0, -1};
}

}  // namespace

int PopupEntryAfter(PopupKey key, int selected, int count,
                    const std::function<bool(int)>& isSelectable) {
    const Walk walk = WalkOf(key, selected, count);
    for (int entry = walk.start; entry >= 1 && entry <= count; entry += walk.step) {
        if (isSelectable(entry)) {
            return entry;
        }
    }
    return selected;
}

int PopupEntriesInColumn(int desktopHeight, int entryHeight) {
    if (entryHeight <= 0) {
        return usualEntriesInColumn;
    }
    const int entries = (desktopHeight - menuFrameHeight) / (entryHeight + entryGap);
    return entries > 0 ? entries : 1;
}

bool StartsPopupColumn(int entry, int entriesInColumn) {
    const int position = entry - 1;
    return position > 0 && position % entriesInColumn == 0;
}
