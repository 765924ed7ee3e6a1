// The help pages.
#pragma once

#include <cstdint>
#include <string>

/// Asks the system to open an address. Above 32 is success.
using AddressOpener = std::intptr_t (*)(const char* address);

/// Opens the pages for HelpCommand; tests put their own in its place.
extern AddressOpener openAddress;

/// Where the pages should be: the full path of the first one, beside the module. Empty when the
/// system does not tell the module's.
std::string HelpPagePath();

/// Whether there is a file at a path; tests put their own answer in its place.
using FileTest = bool (*)(const char* path);
extern FileTest isHelpThere;
