#include "editor/HelpReadout.h"

#include <utility>

namespace {

/// An item's string is this and its number.
constexpr short itemTextBase = 16000;

}  // namespace

short HelpReadout::Follow(short item, short hint) {
    const bool newItem = std::exchange(lastItem, item) != item;
    const bool newHint = std::exchange(lastHint, hint) != hint;
    if (hint != noHint && (newItem || newHint)) {
        return hint;
    }
    return newItem ? static_cast<short>(itemTextBase + item) : short{0};
}
