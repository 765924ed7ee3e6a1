// The parameter records of the filters, byte for byte as they stand in the preference file.
#pragma once

#include <cstddef>
#include <cstdint>

#include "paint/Color.h"
#include "paint/records/Field.h"

struct BlurParams {
    /// 1 to 100.
    std::int16_t amount = 20;
    /// 0 or 1.
    std::uint8_t motion = 0;
    std::uint8_t unused3 = 0;
    /// 0 to 7: the way the trail goes, clockwise from the top.
    std::int16_t direction = 1;
};
static_assert(sizeof(BlurParams) == 6 && offsetof(BlurParams, direction) == 4);
inline constexpr FieldWord blurDirectionWords[] = {
    {"up", 0},   {"upRight", 1},  {"right", 2}, {"downRight", 3},
    {"down", 4}, {"downLeft", 5}, {"left", 6},  {"upLeft", 7}};
inline constexpr Field blurFields[] = {
    fields::Number<&BlurParams::amount>("amount", 1, 100),
    fields::Choice<&BlurParams::motion>("motion", offAndOn),
    fields::Choice<&BlurParams::direction>("direction", blurDirectionWords),
};
template <>
constexpr std::span<const Field> FieldsOf<BlurParams>() {
    return blurFields;
}

struct SharpenParams {
    /// 1 to 5.
    std::int16_t passes = 1;
};
static_assert(sizeof(SharpenParams) == 2);
inline constexpr Field sharpenFields[] = {
    fields::Number<&SharpenParams::passes>("passes", 1, 5),
};
template <>
constexpr std::span<const Field> FieldsOf<SharpenParams>() {
    return sharpenFields;
}

enum NoiseMode : std::int32_t { noiseGrey = 0, noiseColored = 1, noiseColorful = 2 };

struct NoiseParams {
    /// 1 to 100 percent.
    std::int16_t amount = 50;
    std::int16_t unused2 = 0;
    /// A NoiseMode.
    std::int32_t mode = noiseColored;
};
static_assert(sizeof(NoiseParams) == 8 && offsetof(NoiseParams, mode) == 4);
inline constexpr FieldWord noiseModeWords[] = {
    {"grey", noiseGrey}, {"colored", noiseColored}, {"colorful", noiseColorful}};
inline constexpr Field noiseFields[] = {
    fields::Number<&NoiseParams::amount>("amount", 1, 100),
    fields::Choice<&NoiseParams::mode>("mode", noiseModeWords),
};
template <>
constexpr std::span<const Field> FieldsOf<NoiseParams>() {
    return noiseFields;
}

struct SaturationParams {
    /// 0 to 100; shown less 50.
    std::int16_t saturation = 60;
};
static_assert(sizeof(SaturationParams) == 2);
inline constexpr Field saturationFields[] = {
    fields::Number<&SaturationParams::saturation>("saturation", 0, 100),
};
template <>
constexpr std::span<const Field> FieldsOf<SaturationParams>() {
    return saturationFields;
}

struct BrightContrParams {
    /// 0 to 100; shown less 50.
    std::int16_t brightness = 50;
    std::int16_t contrast = 50;
};
static_assert(sizeof(BrightContrParams) == 4);
inline constexpr Field brightContrFields[] = {
    fields::Number<&BrightContrParams::brightness>("brightness", 0, 100),
    fields::Number<&BrightContrParams::contrast>("contrast", 0, 100),
};
template <>
constexpr std::span<const Field> FieldsOf<BrightContrParams>() {
    return brightContrFields;
}

struct AddColorParams {
    /// 1 to 100 percent.
    std::int16_t opacity = 10;
    RGBColor16 color{0x7FFF, 0x7FFF, 0x7FFF};
};
static_assert(sizeof(AddColorParams) == 8 && offsetof(AddColorParams, color) == 2);
inline constexpr Field addColorFields[] = {
    fields::Number<&AddColorParams::opacity>("opacity", 1, 100),
    fields::Color<&AddColorParams::color>("color"),
};
template <>
constexpr std::span<const Field> FieldsOf<AddColorParams>() {
    return addColorFields;
}

struct MosaicParams {
    /// 1, or 3 to 9: the position of the popup's item, which is the block's size in pixels. The
    /// item labelled n makes blocks of n + 1; intended.
    std::int16_t horizontal = 1;
    std::int16_t vertical = 1;
};
static_assert(sizeof(MosaicParams) == 4);
inline constexpr FieldWord mosaicBlockWords[] = {{"none", 1}, {"", 3}, {"", 4}, {"", 5},
                                                 {"", 6},     {"", 7}, {"", 8}, {"", 9}};
inline constexpr Field mosaicFields[] = {
    fields::Choice<&MosaicParams::horizontal>("horizontal", mosaicBlockWords),
    fields::Choice<&MosaicParams::vertical>("vertical", mosaicBlockWords),
};
template <>
constexpr std::span<const Field> FieldsOf<MosaicParams>() {
    return mosaicFields;
}

/// The parameters of Combine. No file keeps them.
struct CombineParams {
    /// 1 blends, 2 prints the relief of the other texture on this one, 3 turns hues by its
    /// brightness.
    std::int16_t mode = 1;
    /// In percent.
    std::int16_t amount = 50;
};
inline constexpr Field combineFields[] = {
    fields::Number<&CombineParams::mode>("mode", 1, 3),
    fields::Number<&CombineParams::amount>("amount", 0, 100),
};
template <>
constexpr std::span<const Field> FieldsOf<CombineParams>() {
    return combineFields;
}

/// The parameters of Tile: numbers of copies. No file keeps them.
struct TileParams {
    std::int16_t horizontal = 2;
    std::int16_t vertical = 2;
};
inline constexpr Field tileFields[] = {
    fields::Number<&TileParams::horizontal>("horizontal", 1, 12),
    fields::Number<&TileParams::vertical>("vertical", 1, 12),
};
template <>
constexpr std::span<const Field> FieldsOf<TileParams>() {
    return tileFields;
}

/// The parameter of Flip. No dialog gives it, and no file keeps it.
struct FlipParams {
    /// 0 to 2.
    std::int16_t mode = 0;
};
inline constexpr FieldWord flipModeWords[] = {{"vertical", 0}, {"horizontal", 1}, {"both", 2}};
inline constexpr Field flipFields[] = {
    fields::Choice<&FlipParams::mode>("mode", flipModeWords),
};
template <>
constexpr std::span<const Field> FieldsOf<FlipParams>() {
    return flipFields;
}
