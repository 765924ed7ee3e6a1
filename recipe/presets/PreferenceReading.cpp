#include "recipe/presets/PreferenceReading.h"

#include <cstdint>
#include <new>
#include <stdexcept>
#include <vector>

#include "files/PreferenceFile.h"
#include "files/PreferenceFormat.h"
#include "recipe/formats/FilePlaces.h"
#include "recipe/language/Utf8.h"
#include "recipe/tool/System.h"

namespace recipe {

namespace {

/// Windows-1252 from 0x80 to 0x9F; from 0xA0 on its codes are those of Unicode.
constexpr char16_t westernCharacters[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char16_t WesternCharacter(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return number >= 0x80 && number < 0xA0 ? westernCharacters[number - 0x80] : char16_t{number};
}

void AppendUtf8(std::string& text, char16_t character) {
    const auto tail = [character](int shift) {
        return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += {static_cast<char>(0xC0 | (character >> 6)), tail(0)};
    } else {
        text += {static_cast<char>(0xE0 | (character >> 12)), tail(6), tail(0)};
    }
}

[[noreturn]] void ThrowUnreadable(const std::filesystem::path& file, std::int16_t fault) {
    if (fault == preferenceNoMemory) {
        throw std::bad_alloc();
    }
    throw std::runtime_error(QuotedName(file) +
                             (fault == preferenceShortRead
                                  ? " ends before all of a preference file was read"
                                  : " is no preference file"));
}

}  // namespace

void ReadPreferenceFile(const std::filesystem::path& file, Preferences& preferences) {
    const FileHandle stream = OpenFile(file, "rb");
    if (!stream) {
        throw std::runtime_error(QuotedName(file) + " cannot be opened");
    }
    try {
        ReadPreferences(
            [&](void* buffer, std::int32_t count) {
                if (std::fread(buffer, static_cast<std::size_t>(count), 1, stream.get()) != 1) {
                    throw std::int16_t{preferenceShortRead};
                }
            },
            preferences);
    } catch (std::int16_t fault) {
        ThrowUnreadable(file, fault);
    }
}

std::string PresetNameText(std::string_view name) {
    if (IsUtf8(name)) {
        return std::string(name);
    }
    std::string text;
    for (const char byte : name) {
        AppendUtf8(text, WesternCharacter(byte));
    }
    return text;
}

std::vector<std::string> PresetNames(const SimpleLink& presets) {
    std::vector<std::string> names;
    char name[nameCapacity];
    for (short n = 1; presets.NameAt(n, name); ++n) {
        names.push_back(PresetNameText(name));
    }
    return names;
}

}  // namespace recipe
