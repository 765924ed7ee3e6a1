// Preference files of the plug-in, which the tool reads and never changes.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "files/Preferences.h"

namespace recipe {

/// Throws std::runtime_error in one line if there is no such file or it cannot be understood whole,
/// or std::bad_alloc. The places of the dialogs go to `dialogPlaces`.
void ReadPreferenceFile(const std::filesystem::path& file, Preferences& preferences);

/// A preset's name as UTF-8. The plug-in keeps names in the code page of its system: what is no
/// UTF-8 is taken for Windows' western one.
std::string PresetNameText(std::string_view name);

/// The names of entries in order, as PresetNameText.
std::vector<std::string> PresetNames(const SimpleLink& presets);

}  // namespace recipe
