// The preference file as bytes, for tests: typed out from its table, not taken from the code.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// "01 FF" to two bytes; blanks mean nothing.
inline std::string FromHex(const std::string& digits) {
    std::string bytes;
    std::string pair;
    for (const char digit : digits) {
        if (digit == ' ') {
            continue;
        }
        pair += digit;
        if (pair.size() == 2) {
            bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
            pair.clear();
        }
    }
    return bytes;
}

struct PreferenceRow {
    std::size_t offset;
    std::string bytes;
};

/// The fixed head with the defaults, row by row.
inline const std::vector<PreferenceRow>& DefaultHeadRows() {
    static const std::vector<PreferenceRow> rows = {
        {0, "VELK"},
        {4, FromHex("01 00")},                                      // version
        {6, FromHex("01")},                                         // launch flag
        {7, FromHex("0000 0000 0000")},                             // foreground
        {13, FromHex("FFFF FFFF FFFF")},                            // background
        {19, FromHex("1400 00 00 0100")},                           // Blur 20; 0; 1
        {25, FromHex("0100")},                                      // Sharpen 1
        {27, FromHex("3200 0000 01000000")},                        // Noise 50; 1
        {35, FromHex("3C00")},                                      // Saturation 60
        {37, FromHex("3200 3200")},                                 // Brightness 50, Contrast 50
        {41, FromHex("0A00 FF7F FF7F FF7F")},                       // Add Color 10; grey
        {49, FromHex("0100 0100")},                                 // Mosaic 1, 1
        {53, FromHex("3200 0900 0B00 2D00 FF7F FF7F FF7F")},        // Lines 50, 9, 11, 45; grey
        {67, FromHex("3200 3200 3200 1900 01 00 1700 1B00")},       // Drops
        {81, FromHex("3200 3200 01 01 01 00 0100 0300 0200")},      // Dividers
        {95, std::string(12, '\0')},                                // its colours
        {107, FromHex("0300 3200 0200 0300 3200 0200 0000 0100")},  // Waves
        {123, FromHex("3200 3200 3200")},                           // Twirls 50, 50, 50
        {129, FromHex("00000000")},                                 // Skew 0
        {133, FromHex("02000000 3200 1900 1900 1900 3C00 0000")},   // Shapes 2; 50, 25, 25, 25, 60
        {149, FromHex("713D0AD7A370E53F 713D0AD7A370E53F")},        // 0.67, 0.67
        {165, FromHex("0200 0200 0000 0000 0000 0000 01")},         // 2, 2, 0, 0, 0, 0; 1
        {178, std::string(9, '\0')},                                // unused
        {187, FromHex("FF7F FF7F FF7F")},                           // grey
    };
    return rows;
}

inline std::string DefaultHead() {
    std::string head;
    for (const PreferenceRow& row : DefaultHeadRows()) {
        head += row.bytes;
    }
    return head;
}

inline std::string WordBytes(int word) {
    return {static_cast<char>(word), static_cast<char>(word >> 8)};
}

/// A name's 256 bytes.
inline std::string NameBytes(const std::string& name) {
    return name + std::string(256 - name.size(), '\0');
}

constexpr std::size_t listsOffset = 193;
constexpr std::size_t placesSize = 22 * 8;

/// Seven empty lists.
inline std::string EmptyLists() {
    std::string lists;
    for (int i = 0; i < 7; ++i) {
        lists += WordBytes(1);
    }
    return lists;
}

/// The bytes that the first close of the editor leaves.
inline std::string FirstPreferenceFile() {
    return DefaultHead() + EmptyLists() + std::string(placesSize, '\0');
}
