// The settings that the editor remembers between runs, and the functions that keep them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "hostapi/HostTypes.h"
#include "paint/Catalog.h"
#include "paint/records/EffectParams.h"
#include "paint/records/FilterParams.h"
#include "paint/records/LinesParams.h"
#include "raster/SimpleLink.h"

/// The dialogs whose places are remembered, in the file's order.
enum PlacedDialog : std::size_t {
    placedTexture,
    placedEdit,
    placedCreater,
    placedBlur,
    placedSharpen,
    placedNoise,
    placedSaturation,
    placedBrightContr,
    placedAddColor,
    placedMosaic,
    placedCombine,
    placedTile,
    placedLines,
    placedShapes,
    placedDrops,
    placedDeviders,
    placedWaves,
    placedTwirls,
    placedSkew,
    placedClone,
    placedFill,
    placedBrush,
    placedDialogCount,
};

/// The places of all dialogs but the editor, shared by the instances of a class for as long as the
/// plug-in is loaded; the editor's element stays unused. Client areas in screen coordinates; a
/// right value of 0 means that the dialog was never placed.
extern std::array<hostapi::Rect, placedDialogCount> dialogPlaces;

/// A new record holds the defaults, empty lists and no place for the editor.
struct Preferences {
    /// 0: straight to the editor; else the New dialog opens at launch.
    std::uint8_t launchFlag = 1;
    RGBColor16 foreground = black16;
    RGBColor16 background = white16;

    // The last used settings.
    BlurParams blur;
    SharpenParams sharpen;
    NoiseParams noise;
    SaturationParams saturation;
    BrightContrParams brightContr;
    AddColorParams addColor;
    MosaicParams mosaic;
    LinesParams lines;
    DropsParams drops;
    DividersParams dividers;
    WavesParams waves;
    TwirlsParams twirls;
    SkewParams skew;
    ShapesParams shapes;

    /// By PresetEffect; each entry is a whole record of the effect's type.
    std::array<SimpleLink, presetEffectCount> presets;

    /// The editor's own place, size included.
    hostapi::Rect editorPlace{};
    /// The resolution of the screen that `editorPlace` was for, in dots an inch. Above 0.
    std::int16_t placeResolution = 96;
    /// The file says so; one that does not counts as 96.
    bool hasPlaceResolution = false;

    // Not kept: it starts anew in every run.
    CombineParams combine;
};

/// Returns the last used record of the operation with this id, of the type that the catalogue has
/// for it. An id without one fails an assertion.
void* LastUsedRecord(Preferences& preferences, std::int16_t id);
const void* LastUsedRecord(const Preferences& preferences, std::int16_t id);

/// Whether the New dialog opens at launch. Also true without a file or with one that cannot be
/// understood. Raises what OpenPreferenceFile raises.
bool ReadLaunchFlag();

/// Reads the file into the record and `dialogPlaces`. False when there was nothing to read, or not
/// all of it could be: the caller then calls SetDefaultPreferences. A file that is no preference
/// file, or ends too early, costs alert 16104 and is deleted; what was read up to there stays,
/// presets and places for good. Raises what OpenPreferenceFile raises.
bool LoadPreferences(Preferences& preferences);

/// Puts the defaults into everything but the presets and the places. The colours inside the
/// Dividers record and the unused bytes of the Shapes record stay as they are.
void SetDefaultPreferences(Preferences& preferences);

/// Writes the record and `dialogPlaces`. When the system refuses, alert 16103, and the file is
/// deleted: half of it is of no use. Raises what OpenPreferenceFile raises.
bool SavePreferences(const Preferences& preferences);
