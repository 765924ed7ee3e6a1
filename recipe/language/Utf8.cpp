#include "recipe/language/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace recipe {

namespace {

/// The first byte of characters of `length` bytes has the bits `lead` under `mask`; code points
/// below `lowest` have a shorter encoding.
struct Form {
    std::uint8_t mask;
    std::uint8_t lead;
    std::size_t length;
    std::uint32_t lowest;
};

constexpr Form forms[] = {
    {0x80, 0x00, 1, 0x0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

constexpr bool IsCharacter(std::uint32_t code) {
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

/// Bytes of the well-formed character that the text begins with; 0 if it begins with none.
std::size_t FirstCharacter(std::string_view text) {
    const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    for (const Form& form : forms) {
        if ((byteAt(0) & form.mask) != form.lead || text.size() < form.length) {
            continue;
        }
        std::uint32_t code = byteAt(0) & ~std::uint32_t{form.mask};
        for (std::size_t i = 1; i < form.length; ++i) {
            if ((byteAt(i) & 0xC0) != 0x80) {
                return 0;
            }
            code = code << 6 | (byteAt(i) & 0x3F);
        }
        return code >= form.lowest && IsCharacter(code) ? form.length : 0;
    }
    return 0;
}

}  // namespace

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = FirstCharacter(bytes);
        if (length == 0) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

}  // namespace recipe
