// The text slots of alerts.
#pragma once

#include <array>
#include <string>

/// The texts for ^0 to ^3; null ones remove their marker.
using AlertTexts = std::array<const char*, 4>;

/// `text` with its markers replaced; any other "^" stays. Walked byte by byte, and a double-byte
/// character, whose first byte `isLeadByte` knows, is kept whole. At most 255 bytes, cut between
/// two characters.
std::string SubstituteTexts(const char* text, const AlertTexts& texts,
                            bool (*isLeadByte)(unsigned char));
