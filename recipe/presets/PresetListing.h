// The contents of a preference file, as text for people.
#pragma once

#include <string>

#include "files/Preferences.h"

namespace recipe {

/// The settings as lines of a recipe with the presets' names as comments, then the dialogs' places.
std::string ListingOf(const Preferences& preferences);

/// Writes the listing of the file (a name in UTF-8) to standard output. Throws as
/// ReadPreferenceFile.
void ListPresets(const std::string& file);

}  // namespace recipe
