#include "recipe/language/Wording.h"

#include <cstddef>

namespace recipe {

namespace {

/// The bytes of one character that follow its first are 10xxxxxx.
bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string Quoted(std::string_view text) {
    constexpr std::size_t longest = 60;
    const bool cut = text.size() > longest;
    std::size_t length = cut ? longest : text.size();
    while (cut && length > 0 && ContinuesCharacter(text[length])) {
        --length;
    }
    std::string quoted(1, '\'');
    quoted += text.substr(0, length);
    quoted += cut ? "...'" : "'";
    return quoted;
}

std::string ListOf(const std::vector<std::string>& items) {
    std::string list;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const bool last = i + 1 == items.size();
        list += (i == 0 ? "" : last ? " or " : ", ") + items[i];
    }
    return list;
}

}  // namespace recipe
