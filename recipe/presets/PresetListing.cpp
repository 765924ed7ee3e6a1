#include "recipe/presets/PresetListing.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "host/picture/Picture.h"
#include "recipe/presets/PreferenceReading.h"
#include "resources/Strings.h"

namespace recipe {

namespace {

/// The class of each dialog, as PlacedDialog counts them.
constexpr const char* dialogNames[placedDialogCount] = {
    "TextureDialog",  "EditDialog",       "CreaterDialog",     "BlurDialog",     "SharpenDialog",
    "NoiseDialog",    "SaturationDialog", "BrightContrDialog", "AddColorDialog", "MosaicDialog",
    "CombineDialog",  "TileDialog",       "LinesDialog",       "ShapesDialog",   "DropsDialog",
    "DevidersDialog", "WavesDialog",      "TwirlsDialog",      "SkewDialog",     "CloneDialog",
    "FillDialog",     "BrushDialog",
};

/// One operation of a recipe, key by key.
class Line {
  public:
    explicit Line(const char* operation) : text(operation) {}

    Line& Key(const char* key, int value) { return Put(key, std::to_string(value)); }
    Line& Key(const char* key, double value) {
        char digits[32];
        const auto end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
        return Put(key, std::string(digits, end));
    }
    Line& Key(const char* key, const RGBColor16& color) {
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
    Line& Put(const char* key, const std::string& value) {
        text += std::string(" ") + key + "=" + value;
        return *this;
    }

    std::string text;
};

std::string LineOf(const BlurParams& blur) {
    return Line("blur")
        .Key("amount", blur.amount)
        .Key("motion", blur.motion)
        .Key("direction", blur.direction)
        .Text();
}

std::string LineOf(const AddColorParams& addColor) {
    return Line("addColor").Key("opacity", addColor.opacity).Key("color", addColor.color).Text();
}

std::string LineOf(const LinesParams& lines) {
    return Line("lines")
        .Key("precision", lines.precision)
        .Key("appearance", lines.appearance)
        .Key("colorMode", lines.colorMode)
        .Key("angle", lines.angle)
        .Key("color", lines.color)
        .Text();
}

std::string LineOf(const ShapesParams& shapes) {
    return Line("shapes")
        .Key("kind", shapes.kind)
        .Key("bevel", shapes.bevel)
        .Key("material", shapes.material)
        .Key("transparency", shapes.transparency)
        .Key("contrast", shapes.contrast)
        .Key("angle", shapes.angle)
        .Key("sizeX", shapes.sizeX)
        .Key("sizeY", shapes.sizeY)
        .Key("repeatX", shapes.repeatX)
        .Key("repeatY", shapes.repeatY)
        .Key("shiftX", shapes.shiftX)
        .Key("shiftY", shapes.shiftY)
        .Key("shiftSize", shapes.shiftSize)
        .Key("stacking", shapes.stacking)
        .Key("halfShift", shapes.halfShift)
        .Key("color", shapes.color)
        .Text();
}

std::string LineOf(const DropsParams& drops) {
    return Line("drops")
        .Key("count", drops.count)
        .Key("size", drops.size)
        .Key("variation", drops.variation)
        .Key("reflection", drops.reflection)
        .Key("emphasizeLight", drops.emphasizeLight)
        .Key("coveredBlur", drops.coveredBlur)
        .Key("coveredTone", drops.coveredTone)
        .Text();
}

std::string LineOf(const DividersParams& dividers) {
    return Line("dividers")
        .Key("lines", dividers.lines)
        .Key("direction", dividers.direction)
        .Key("randomColors", dividers.randomColors)
        .Key("antiAliased", dividers.antiAliased)
        .Key("transparent", dividers.transparent)
        .Key("lineWidth", dividers.lineWidth)
        .Key("widthVariation", dividers.widthVariation)
        .Key("minimalGap", dividers.minimalGap)
        .Text();
}

std::string LineOf(const WavesParams& waves) {
    return Line("waves")
        .Key("formX", waves.formX)
        .Key("heightX", waves.heightX)
        .Key("countX", waves.countX)
        .Key("formY", waves.formY)
        .Key("heightY", waves.heightY)
        .Key("countY", waves.countY)
        .Key("interpolate", waves.interpolate)
        .Text();
}

std::string LineOf(const TwirlsParams& twirls) {
    return Line("twirls")
        .Key("quantity", twirls.quantity)
        .Key("size", twirls.size)
        .Key("intensity", twirls.intensity)
        .Text();
}

std::string LineOf(const SkewParams& skew) {
    return Line("skew").Key("direction", skew.direction).Text();
}

/// A name may hold anything at all; the listing stays one of lines.
std::string Printable(std::string name) {
    std::ranges::replace_if(
        name, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }, '?');
    return name;
}

std::string FiltersOf(const Preferences& preferences) {
    const Line lines[] = {
        Line("sharpen").Key("passes", preferences.sharpen.passes),
        Line("noise").Key("amount", preferences.noise.amount).Key("mode", preferences.noise.mode),
        Line("saturation").Key("saturation", preferences.saturation.saturation),
        Line("brightnessContrast")
            .Key("brightness", preferences.brightContr.brightness)
            .Key("contrast", preferences.brightContr.contrast),
        Line("mosaic")
            .Key("horizontal", preferences.mosaic.horizontal)
            .Key("vertical", preferences.mosaic.vertical),
    };
    std::string text = LineOf(preferences.blur) + "\n";
    for (const Line& line : lines) {
        text += line.Text() + "\n";
    }
    return text + LineOf(preferences.addColor) + "\n";
}

template <typename Record>
std::string EffectOf(const Record& lastUsed, const SimpleLink& presets) {
    std::string text = LineOf(lastUsed) + "  # " + StringText(stringLastUsed) + "\n";
    const std::vector<std::string> names = PresetNames(presets);
    for (std::size_t i = 0; i < names.size(); ++i) {
        void* record = nullptr;
        presets.DataAt(static_cast<short>(i + 1), &record);
        text += LineOf(*static_cast<const Record*>(record)) + "  # " + Printable(names[i]) + "\n";
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
    const auto& presets = preferences.presets;
    return std::string("# New dialog at launch: ") + (preferences.launchFlag != 0 ? "yes" : "no") +
           "\n" +
           Line("colors")
               .Key("foreground", preferences.foreground)
               .Key("background", preferences.background)
               .Text() +
           "\n" + EffectOf(preferences.lines, presets[presetLines]) +
           EffectOf(preferences.shapes, presets[presetShapes]) +
           EffectOf(preferences.drops, presets[presetDrops]) +
           EffectOf(preferences.dividers, presets[presetDividers]) +
           EffectOf(preferences.waves, presets[presetWaves]) +
           EffectOf(preferences.twirls, presets[presetTwirls]) +
           EffectOf(preferences.skew, presets[presetSkew]) + FiltersOf(preferences) +
           PlacesOf(preferences);
}

void ListPresets(const std::string& file) {
    Preferences preferences;
    ReadPreferenceFile(host::PathFromUtf8(file), preferences);
    const std::string listing = ListingOf(preferences);
    std::fwrite(listing.data(), 1, listing.size(), stdout);
}

}  // namespace recipe
