#include "framework/alerts/AlertText.h"

namespace {

constexpr std::size_t maximalLength = 255;

using LeadByteTest = bool (*)(unsigned char);

/// 2 for a double-byte character, unless its second byte is missing.
std::size_t CharacterLength(const char* at, LeadByteTest isLeadByte) {
    return isLeadByte(static_cast<unsigned char>(*at)) && at[1] != '\0' ? 2 : 1;
}

/// Whole characters only, also of the inserted texts: half a character would spoil the last one.
void CutToMaximalLength(std::string& text, LeadByteTest isLeadByte) {
    std::size_t length = 0;
    while (length < text.size()) {
        const std::size_t next = length + CharacterLength(text.c_str() + length, isLeadByte);
        if (next > maximalLength) {
            break;
        }
        length = next;
    }
    text.resize(length);
}

}  // namespace

std::string SubstituteTexts(const char* text, const AlertTexts& texts, LeadByteTest isLeadByte) {
    std::string result;
    for (const char* at = text; *at != '\0';) {
        if (*at == '^' && at[1] >= '0' && at[1] <= '3') {
            const char* const inserted = texts[static_cast<std::size_t>(at[1] - '0')];
            result += inserted != nullptr ? inserted : "";
            at += 2;
        } else {
            const std::size_t length = CharacterLength(at, isLeadByte);
            result.append(at, length);
            at += length;
        }
    }
    CutToMaximalLength(result, isLeadByte);
    return result;
}
