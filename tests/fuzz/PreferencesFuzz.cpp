// Reads any bytes as a preference file; for libFuzzer.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fixtures/PreferencesInMemory.h"
#include "recipe/presets/PresetListing.h"
#include "tests/fuzz/Require.h"

namespace {

/// False for a file that cannot be understood whole.
bool ReadAll(std::string_view bytes, Preferences& preferences) {
    try {
        ReadFromBytes(bytes, preferences);
        return true;
    } catch (std::int16_t fault) {
        Require(fault == preferenceShortRead || fault == preferenceBadHead);
        return false;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Preferences preferences;
    const bool isWhole = ReadAll(bytes, preferences);
    // Half a file is written out, too: what was read of it stays in the editor.
    const std::string written = WrittenBytes(preferences);
    Require(!isWhole || written.size() <= bytes.size());
    Preferences again;
    Require(ReadAll(written, again));
    Require(WrittenBytes(again) == written);
    Require(!recipe::ListingOf(again).empty());
    return 0;
}
