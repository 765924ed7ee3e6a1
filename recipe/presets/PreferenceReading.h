// Reads the plug-in's preference files.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "files/Preferences.h"

namespace recipe {

/// Throws std::bad_alloc, or std::runtime_error with a text of one line if the file is missing or
/// any part of it is invalid. The places of the dialogs are stored in `dialogPlaces`.
void ReadPreferenceFile(const std::filesystem::path& file, Preferences& preferences);

/// A preset's name as UTF-8. The plug-in stores names in the code page of its system; a name that
/// is not UTF-8 is read as Windows-1252.
std::string PresetNameText(std::string_view name);

/// The names of the entries in order, each as PresetNameText returns it.
std::vector<std::string> PresetNames(const SimpleLink& presets);

}  // namespace recipe
