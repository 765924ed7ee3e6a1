// The bytes of the preference file: the records just as they stand in memory, little-endian, in one
// fixed order. The head: "VELK", the version, flag, colours and last used records. Then the seven
// preset lists: a count, one above the number of entries, and each entry's name (256 bytes) and
// record. Then the places of the dialogs. There is no table of contents and no checksum, and what
// follows the end is left over from an earlier file and means nothing, with one exception: a mark
// there ("VELR"), a resolution in dots an inch and the editor's place once more say for which
// resolution that place is. They are written from the first time on that this is another one than
// 96, and count only beside the same place: an older program leaves them when it writes another.
#pragma once

#include <cstdint>
#include <functional>

#include "files/Preferences.h"

/// Fills the block with the file's next bytes, or throws a std::int16_t.
using PreferenceReader = std::function<void(void* buffer, std::int32_t count)>;
/// Takes the file's next bytes, or throws a std::int16_t.
using PreferenceWriter = std::function<void(const void* buffer, std::int32_t count)>;

/// The size of a file without presets.
constexpr std::int32_t smallestPreferenceSize = 383;

/// Reads up to the launch flag and returns it. Throws preferenceBadHead for another kind or version
/// of file, and what `read` throws.
std::uint8_t ReadPreferenceHead(const PreferenceReader& read);

/// Reads the whole file. Presets are appended to those already in the lists. Throws
/// preferenceBadHead, preferenceNoMemory and what `read` throws; what was read up to there stays.
void ReadPreferences(const PreferenceReader& read, Preferences& preferences);

void WritePreferences(const PreferenceWriter& write, const Preferences& preferences);
