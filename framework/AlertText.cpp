#include "framework/AlertText.h"

namespace {

constexpr std::size_t maximalLength = 255;

}  // namespace

std::string SubstituteTexts(const char* text, const AlertTexts& texts,
                            bool (*isLeadByte)(unsigned char)) {
    std::string result;
    for (const char* at = text; *at != '\0'; ++at) {
        if (isLeadByte(static_cast<unsigned char>(*at)) && at[1] != '\0') {
            // Both bytes or none: half a character would spoil the rest.
            if (result.size() + 2 > maximalLength) {
                break;
            }
            result.append(at, 2);
            ++at;
        } else if (*at == '^' && at[1] >= '0' && at[1] <= '3') {
            const char* const inserted = texts[static_cast<std::size_t>(at[1] - '0')];
            result += inserted != nullptr ? inserted : "";
            ++at;
        } else {
            result += *at;
        }
    }
    if (result.size() > maximalLength) {
        result.resize(maximalLength);
    }
    return result;
}
