// The PIPL resource: a filter file's description of itself.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/record/FilterHost.h"

namespace host {

/// A filter that cannot be listed or loaded. The text is one line.
class PluginError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// One row of the filter case table.
struct FilterCase {
    Matte input = Matte::cannotFilter;
    Matte output = Matte::cannotFilter;
    std::uint8_t flags1 = 0;
    std::uint8_t flags2 = 0;
    bool operator==(const FilterCase&) const = default;
};

/// Image modes in the first flag byte.
enum ModeFlag : std::uint8_t {
    modeBitmap = 0x80,
    modeGrey = 0x40,
    modeIndexed = 0x20,
    modeRGB = 0x10,
    modeCMYK = 0x08,
    modeHSL = 0x04,
    modeHSB = 0x02,
    modeMultichannel = 0x01,
};

struct FilterDescription {
    std::string name;
    std::string category;
    /// The interface's version, its major number in the high 16 bits.
    std::uint32_t version = 0;
    /// The entry's name in the code for this bitness; empty if there is no such code.
    std::string entry32;
    std::string entry64;
    /// Bits of ModeFlag.
    std::uint8_t modes = 0;
    /// Absent in filters that know flat images only.
    std::optional<std::array<FilterCase, 7>> cases;

    /// For this process.
    const std::string& Entry() const;
    /// Whether the filter takes RGB pictures in the filter case, 1 to 7.
    bool Handles(std::int16_t filterCase) const;
    /// "RGB, CMYK".
    std::string ModeNames() const;
    /// The input handling of each case, for FilterHost::SetMattes().
    std::array<Matte, 7> InputMattes() const;
};

/// A filter and the file that it was found in.
struct ListedFilter {
    std::filesystem::path file;
    FilterDescription description;
};

/// Reads a PIPL resource's bytes. Strict: every length is a multiple of 4 and inside the resource,
/// no property comes twice, and a name, a kind and code of either bitness are there. Throws
/// PluginError.
FilterDescription ParsePipl(std::span<const std::uint8_t> bytes);

}  // namespace host
