// Reads any bytes as a preference file; for libFuzzer.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "files/PreferenceFile.h"
#include "files/PreferenceFormat.h"
#include "recipe/presets/PresetListing.h"
#include "tests/fuzz/Require.h"

namespace {

/// False for a file that cannot be understood whole.
bool ReadAll(std::string_view bytes, Preferences& preferences) {
    const auto read = [&bytes](void* buffer, std::int32_t count) {
        const auto size = static_cast<std::size_t>(count);
        if (bytes.size() < size) {
            throw std::int16_t{preferenceShortRead};
        }
        std::memcpy(buffer, bytes.data(), size);
        bytes.remove_prefix(size);
    };
    try {
        ReadPreferences(read, preferences);
        return true;
    } catch (std::int16_t fault) {
        Require(fault == preferenceShortRead || fault == preferenceBadHead);
        return false;
    }
}

std::string Written(const Preferences& preferences) {
    std::string bytes;
    WritePreferences(
        [&bytes](const void* buffer, std::int32_t count) {
            bytes.append(static_cast<const char*>(buffer), static_cast<std::size_t>(count));
        },
        preferences);
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Preferences preferences;
    const bool isWhole = ReadAll(bytes, preferences);
    // Half a file is written out, too: what was read of it stays in the editor.
    const std::string written = Written(preferences);
    Require(!isWhole || written.size() <= bytes.size());
    Preferences again;
    Require(ReadAll(written, again));
    Require(Written(again) == written);
    Require(!recipe::ListingOf(again).empty());
    return 0;
}
