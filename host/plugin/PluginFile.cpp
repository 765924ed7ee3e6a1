#include "host/plugin/PluginFile.h"

#include <algorithm>
#include <set>

namespace host {

namespace {

using hostapi::FourCharacters;

constexpr std::uint32_t vendor = FourCharacters('8', 'B', 'I', 'M');
constexpr std::uint32_t filterKind = FourCharacters('8', 'B', 'F', 'M');

/// Reads numbers and runs of bytes from the front; throws instead of leaving the resource.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::uint8_t> newBytes) : bytes(newBytes) {}

    std::span<const std::uint8_t> Take(std::size_t count) {
        if (count > bytes.size()) {
            throw PluginError("the PIPL resource ends too early");
        }
        auto taken = bytes.first(count);
        bytes = bytes.subspan(count);
        return taken;
    }
    std::uint32_t Number(std::size_t width) {
        std::uint32_t number = 0;
        std::size_t shift = 0;
        for (std::uint8_t byte : Take(width)) {
            number |= std::uint32_t{byte} << shift;
            shift += 8;
        }
        return number;
    }

  private:
    std::span<const std::uint8_t> bytes;
};

std::string PascalString(std::span<const std::uint8_t> data) {
    ByteReader reader(data);
    const auto text = reader.Take(reader.Number(1));
    return {text.begin(), text.end()};
}

std::string ZeroTerminated(std::span<const std::uint8_t> data) {
    const auto end = std::find(data.begin(), data.end(), std::uint8_t{0});
    if (end == data.end() || end == data.begin()) {
        throw PluginError("the PIPL resource has an entry's name without an end or a start");
    }
    return {data.begin(), end};
}

Matte ReadMatte(std::uint32_t value) {
    if (value > static_cast<std::uint32_t>(Matte::white)) {
        throw PluginError("the PIPL resource has an unknown value in its filter case table");
    }
    return static_cast<Matte>(value);
}

std::array<FilterCase, 7> ReadCases(std::span<const std::uint8_t> data) {
    ByteReader reader(data);
    std::array<FilterCase, 7> cases;
    for (FilterCase& filterCase : cases) {
        filterCase.input = ReadMatte(reader.Number(1));
        filterCase.output = ReadMatte(reader.Number(1));
        filterCase.flags1 = static_cast<std::uint8_t>(reader.Number(1));
        filterCase.flags2 = static_cast<std::uint8_t>(reader.Number(1));
    }
    return cases;
}

void RequireFilter(std::span<const std::uint8_t> data) {
    if (ByteReader(data).Number(4) != filterKind) {
        throw PluginError("the plug-in is no filter");
    }
}

void ReadProperty(FilterDescription& description, std::uint32_t key,
                  std::span<const std::uint8_t> data) {
    switch (key) {
        case FourCharacters('k', 'i', 'n', 'd'):
            return RequireFilter(data);
        case FourCharacters('n', 'a', 'm', 'e'):
            description.name = PascalString(data);
            return;
        case FourCharacters('c', 'a', 't', 'g'):
            description.category = PascalString(data);
            return;
        case FourCharacters('v', 'e', 'r', 's'):
            description.version = ByteReader(data).Number(4);
            return;
        case FourCharacters('w', 'x', '8', '6'):
            description.entry32 = ZeroTerminated(data);
            return;
        case FourCharacters('8', '6', '6', '4'):
            description.entry64 = ZeroTerminated(data);
            return;
        case FourCharacters('m', 'o', 'd', 'e'):
            description.modes = static_cast<std::uint8_t>(ByteReader(data).Number(1));
            return;
        case FourCharacters('f', 'i', 'c', 'i'):
            description.cases = ReadCases(data);
            return;
        default:
            // Other properties are for other hosts.
            return;
    }
}

void RequireComplete(const FilterDescription& description, const std::set<std::uint32_t>& keys) {
    if (keys.count(FourCharacters('k', 'i', 'n', 'd')) == 0) {
        throw PluginError("the PIPL resource has no kind");
    }
    if (description.name.empty()) {
        throw PluginError("the PIPL resource has no name");
    }
    if (description.entry32.empty() && description.entry64.empty()) {
        throw PluginError("the PIPL resource names no code");
    }
}

}  // namespace

FilterDescription ParsePipl(std::span<const std::uint8_t> bytes) {
    ByteReader reader(bytes);
    if (reader.Number(2) != 1 || reader.Number(4) != 0) {
        throw PluginError("the PIPL resource has an unknown version");
    }
    const std::uint32_t count = reader.Number(4);
    FilterDescription description;
    std::set<std::uint32_t> keys;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t propertyVendor = reader.Number(4);
        const std::uint32_t key = reader.Number(4);
        reader.Number(4);  // The property's id, 0.
        const std::uint32_t length = reader.Number(4);
        if (length % 4 != 0) {
            throw PluginError("the PIPL resource has a property whose length isn't padded");
        }
        const auto data = reader.Take(length);
        if (propertyVendor != vendor) {
            continue;
        }
        if (!keys.insert(key).second) {
            throw PluginError("the PIPL resource has a property twice");
        }
        ReadProperty(description, key, data);
    }
    RequireComplete(description, keys);
    return description;
}

const std::string& FilterDescription::Entry() const {
    return hostapi::is64Bit ? entry64 : entry32;
}

bool FilterDescription::Handles(std::int16_t filterCase) const {
    if ((modes & modeRGB) == 0 || filterCase < 1 || filterCase > 7) {
        return false;
    }
    if (!cases) {
        return filterCase <= 2;
    }
    const FilterCase& row = (*cases)[static_cast<std::size_t>(filterCase - 1)];
    return row.input != Matte::cannotFilter && row.output != Matte::cannotFilter;
}

std::string FilterDescription::ModeNames() const {
    struct Mode {
        ModeFlag flag;
        const char* name;
    };
    constexpr Mode known[] = {{modeBitmap, "bitmap"},   {modeGrey, "grey"},
                              {modeIndexed, "indexed"}, {modeRGB, "RGB"},
                              {modeCMYK, "CMYK"},       {modeHSL, "HSL"},
                              {modeHSB, "HSB"},         {modeMultichannel, "multichannel"}};
    std::string names;
    for (const Mode& mode : known) {
        if ((modes & mode.flag) != 0) {
            names += (names.empty() ? "" : ", ") + std::string(mode.name);
        }
    }
    return names;
}

std::array<Matte, 7> FilterDescription::InputMattes() const {
    std::array<Matte, 7> mattes;
    mattes.fill(Matte::straight);
    if (cases) {
        std::transform(cases->begin(), cases->end(), mattes.begin(),
                       [](const FilterCase& row) { return row.input; });
    }
    return mattes;
}

}  // namespace host
