// How a scroll bar's position follows its notifications.
#pragma once

#include "framework/dialog/ItemRecord.h"

/// Codes of scroll notifications.
enum ScrollCode : int {
    scrollLineBack = 0,
    scrollLineOn = 1,
    scrollPageBack = 2,
    scrollPageOn = 3,
    /// The thumb was let go.
    scrollThumbEnd = 4,
    /// The thumb is being dragged.
    scrollThumb = 5,
    scrollEnd = 8,
};

/// Whether the notification ends a drag, or what counts as one: arrows and shafts held down.
bool EndsScrolling(int code);

/// The new position, within the item's limits. `position` is the present one, `thumb` that of the
/// thumb. Unknown codes change nothing.
int ScrolledTo(const ItemRecord& record, int code, int position, int thumb);
