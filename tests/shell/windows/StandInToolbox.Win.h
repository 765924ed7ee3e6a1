// The stand-in for the product family's shared library, as the tests use it.
#pragma once

#include <cstdint>

enum class ToolboxMode : int {
    /// The About service is there.
    offersAbout,
    /// Every service is refused.
    refuses,
    /// The service is granted, and null.
    grantsNull,
    /// The service's record has no procedure to show the box.
    lacksProcedure,
};

// Exported as SetToolboxMode, AboutCount and LastTag.
using SetToolboxModeProcedure = void(__cdecl*)(ToolboxMode mode);
/// How often the About box was shown.
using AboutCountProcedure = int(__cdecl*)();
/// The tag of the service that was looked up last.
using LastTagProcedure = std::uint32_t(__cdecl*)();
