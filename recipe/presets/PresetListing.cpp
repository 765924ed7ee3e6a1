#include "recipe/presets/PresetListing.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "host/picture/Picture.h"
#include "recipe/presets/PreferenceReading.h"
#include "resources/Strings.h"

namespace recipe {

namespace {

/// The class of each dialog, in the order of PlacedDialog.
constexpr const char* dialogNames[placedDialogCount] = {
    "TextureDialog",  "EditDialog",       "CreaterDialog",     "BlurDialog",     "SharpenDialog",
    "NoiseDialog",    "SaturationDialog", "BrightContrDialog", "AddColorDialog", "MosaicDialog",
    "CombineDialog",  "TileDialog",       "LinesDialog",       "ShapesDialog",   "DropsDialog",
    "DevidersDialog", "WavesDialog",      "TwirlsDialog",      "SkewDialog",     "CloneDialog",
    "FillDialog",     "BrushDialog",
};

/// One operation of a recipe, key by key.
class RecipeLine {
  public:
    explicit RecipeLine(const char* operation) : text(operation) {}

    RecipeLine& Key(const char* key, int value) { return Put(key, std::to_string(value)); }
    RecipeLine& Key(const char* key, double value) {
        char digits[32];
        const auto end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
        return Put(key, std::string(digits, end));
    }
    RecipeLine& Key(const char* key, const RGBColor16& color) {
        return Put(key, Hexadecimal(color.red) + "," + Hexadecimal(color.green) + "," +
                            Hexadecimal(color.blue));
    }
    std::string Text() const { return text; }

  private:
    static std::string Hexadecimal(std::uint16_t number) {
        char digits[8];
        std::snprintf(digits, sizeof digits, "0x%04X", number);
        return digits;
    }
    RecipeLine& Put(const char* key, const std::string& value) {
        text += std::string(" ") + key + "=" + value;
        return *this;
    }

    std::string text;
};

std::string LineOf(const CatalogRow& row, const void* record) {
    RecipeLine line(row.name);
    for (const Field& field : row.fields) {
        if (field.type == FieldType::color) {
            line.Key(field.name, ReadColor(field, record));
        } else if (field.type == FieldType::real) {
            line.Key(field.name, ReadNumber(field, record));
        } else {
            line.Key(field.name, static_cast<int>(ReadNumber(field, record)));
        }
    }
    return line.Text();
}

/// The name with `?` for control characters, which would break the listing's lines.
std::string Printable(std::string name) {
    std::ranges::replace_if(
        name, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }, '?');
    return name;
}

/// The last used settings of an operation, and its presets.
std::string LinesOf(const CatalogRow& row, const Preferences& preferences) {
    const std::string lastUsed = LineOf(row, LastUsedRecord(preferences, row.id));
    if (row.presets == presetEffectCount) {
        return lastUsed + "\n";
    }
    std::string text = lastUsed + "  # " + StringText(stringLastUsed) + "\n";
    const SimpleLink& presets = preferences.presets[row.presets];
    const std::vector<std::string> names = PresetNames(presets);
    for (std::size_t i = 0; i < names.size(); ++i) {
        void* record = nullptr;
        presets.DataAt(static_cast<short>(i + 1), &record);
        text += LineOf(row, record) + "  # " + Printable(names[i]) + "\n";
    }
    return text;
}

std::string PlaceOf(PlacedDialog dialog, const hostapi::Rect& place) {
    if (place.right == 0) {
        return {};
    }
    return std::string("# ") + dialogNames[dialog] + " at " + std::to_string(place.left) + "," +
           std::to_string(place.top) + "," + std::to_string(place.right) + "," +
           std::to_string(place.bottom) + "\n";
}

std::string PlacesOf(const Preferences& preferences) {
    std::string text = PlaceOf(placedTexture, preferences.editorPlace);
    for (std::size_t i = placedTexture + 1; i < placedDialogCount; ++i) {
        text += PlaceOf(static_cast<PlacedDialog>(i), dialogPlaces[i]);
    }
    return text;
}

}  // namespace

std::string ListingOf(const Preferences& preferences) {
    std::string text = std::string("# New dialog at launch: ") +
                       (preferences.launchFlag != 0 ? "yes" : "no") + "\n" +
                       RecipeLine("colors")
                           .Key("foreground", preferences.foreground)
                           .Key("background", preferences.background)
                           .Text() +
                       "\n";
    for (const CatalogRow& row : Catalog()) {
        // Settings without a dialog are not remembered.
        if (row.id != 0) {
            text += LinesOf(row, preferences);
        }
    }
    return text + PlacesOf(preferences);
}

void ListPresets(const std::string& file) {
    Preferences preferences;
    ReadPreferenceFile(host::PathFromUtf8(file), preferences);
    const std::string listing = ListingOf(preferences);
    std::fwrite(listing.data(), 1, listing.size(), stdout);
}

}  // namespace recipe
