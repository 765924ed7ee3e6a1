#include "editor/HelpReadout.h"

#include <utility>

#include "resources/Ids.h"

short HelpReadout::Follow(short item, short hint) {
    const bool newItem = std::exchange(lastItem, item) != item;
    const bool newHint = std::exchange(lastHint, hint) != hint;
    if (hint != noHint && (newItem || newHint)) {
        return hint;
    }
    return newItem ? static_cast<short>(stringItemHelp + item) : short{0};
}
