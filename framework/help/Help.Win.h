// The help pages.
#pragma once

#include <cstdint>

/// Asks the system to open an address. Above 32 is success.
using AddressOpener = std::intptr_t (*)(const char* address);

/// Opens the pages for HelpCommand; tests put their own in its place.
extern AddressOpener openAddress;
