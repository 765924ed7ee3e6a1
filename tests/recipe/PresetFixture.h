// A preference file with presets, for tests.
#pragma once

#include <cstdint>
#include <string>

#include "files/PreferenceFormat.h"

inline std::string BytesOfPreferences(const Preferences& preferences) {
    std::string bytes;
    WritePreferences(
        [&](const void* buffer, std::int32_t count) {
            bytes.append(static_cast<const char*>(buffer), static_cast<std::size_t>(count));
        },
        preferences);
    return bytes;
}

template <typename Record>
void AddPreset(Preferences& preferences, PresetEffect effect, const char* name,
               const Record& record) {
    preferences.presets[effect].Append(new Record(record), name);
}
