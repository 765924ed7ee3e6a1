#include "framework/dialog/ItemRecord.h"

#include <cstring>

namespace {

/// ASCII alone: class names have no other letters.
constexpr char UpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

struct KindName {
    char first;
    /// 0 for any.
    char second;
    std::uint8_t kind;
};

constexpr KindName kindNames[] = {
    {'B', 'U', itemButton},
    {'C', 'O', itemCombo},
    {'E', 'D', itemEdit | itemText},
    {'S', 'C', itemScrollBar},
    {'S', 'T', itemText},
    {'S', 'Y', itemTab},
    // The button with a picture is one of the system's, for all that its name begins with a t.
    {'T', 'B', itemButton},
    {'T', '\0', itemCustom},
};

}  // namespace

std::uint8_t KindOfClass(const char* className) {
    const char* const underscore = std::strchr(className, '_');
    const char* const name = underscore != nullptr ? underscore + 1 : className;
    if (name[0] == '\0') {
        return itemUnknown;
    }
    const char first = UpperCase(name[0]);
    const char second = UpperCase(name[1]);
    for (const KindName& candidate : kindNames) {
        if (candidate.first == first && (candidate.second == '\0' || candidate.second == second)) {
            return candidate.kind;
        }
    }
    return itemUnknown;
}
