// The parameter records of the effects that have no header of their own, byte for byte as they
// stand in the preference file. A range is what the dialogs give; an operation must survive any
// bytes, since a preference file may be damaged.
#pragma once

#include <cstddef>
#include <cstdint>

#include "paint/Color.h"
#include "paint/records/Field.h"

enum ShapeKind : std::int32_t { shapeSquare = 1, shapeCircle = 2, shapeRing = 3 };

/// The value of `stacking` that lets earlier shapes lie on top. The dialog never stores it.
constexpr std::int16_t shapesStacked = 44;

struct ShapesParams {
    /// A ShapeKind.
    std::int32_t kind = shapeCircle;
    /// 0 to 100: the rounded edge in percent of the shape's smaller half size.
    std::int16_t bevel = 50;
    /// 0 to 100: the grain.
    std::int16_t material = 25;
    /// 0 to 100: percent of the old texture that shows through.
    std::int16_t transparency = 25;
    /// 0 to 100: the strength of the light.
    std::int16_t contrast = 25;
    /// -180 to 180: the turn of every shape, clockwise.
    std::int16_t angle = 60;
    std::int16_t unused14 = 0;
    /// 0.0 to 1.0: the shape's width and height as parts of its cell.
    double sizeX = 0.67;
    double sizeY = 0.67;
    /// 1 to 32: columns and rows of shapes.
    std::int16_t repeatX = 2;
    std::int16_t repeatY = 2;
    /// 0 to 100: random displacement and change of size.
    std::int16_t shiftX = 0;
    std::int16_t shiftY = 0;
    std::int16_t shiftSize = 0;
    /// 0 or 1 from the dialog, which both blend; shapesStacked stacks.
    std::int16_t stacking = 0;
    /// 0 or 1: every second row is shifted by half a cell.
    std::uint8_t halfShift = 1;
    std::uint8_t unused45[9] = {};
    RGBColor16 color{0x7FFF, 0x7FFF, 0x7FFF};
    // The record ends here, at byte 60.
};
constexpr std::size_t shapesRecordSize = 60;
static_assert(offsetof(ShapesParams, bevel) == 4 && offsetof(ShapesParams, angle) == 12);
static_assert(offsetof(ShapesParams, sizeX) == 16 && offsetof(ShapesParams, sizeY) == 24);
static_assert(offsetof(ShapesParams, repeatX) == 32 && offsetof(ShapesParams, shiftSize) == 40);
static_assert(offsetof(ShapesParams, stacking) == 42 && offsetof(ShapesParams, halfShift) == 44);
static_assert(offsetof(ShapesParams, color) == 54);
static_assert(sizeof(ShapesParams) >= shapesRecordSize);
inline constexpr FieldWord shapeKindWords[] = {
    {"square", shapeSquare}, {"circle", shapeCircle}, {"ring", shapeRing}};
/// The two values of the dialog mean the same.
inline constexpr FieldWord stackingWords[] = {{"blended", 0}, {"", 1}, {"stacked", shapesStacked}};
inline constexpr Field shapesFields[] = {
    fields::Choice<&ShapesParams::kind>("kind", shapeKindWords),
    fields::Number<&ShapesParams::bevel>("bevel", 0, 100),
    fields::Number<&ShapesParams::material>("material", 0, 100),
    fields::Number<&ShapesParams::transparency>("transparency", 0, 100),
    fields::Number<&ShapesParams::contrast>("contrast", 0, 100),
    fields::Number<&ShapesParams::angle>("angle", -180, 180),
    fields::Number<&ShapesParams::sizeX>("sizeX", 0, 1),
    fields::Number<&ShapesParams::sizeY>("sizeY", 0, 1),
    fields::Number<&ShapesParams::repeatX>("repeatX", 1, 32),
    fields::Number<&ShapesParams::repeatY>("repeatY", 1, 32),
    fields::Number<&ShapesParams::shiftX>("shiftX", 0, 100),
    fields::Number<&ShapesParams::shiftY>("shiftY", 0, 100),
    fields::Number<&ShapesParams::shiftSize>("shiftSize", 0, 100),
    fields::Choice<&ShapesParams::stacking>("stacking", stackingWords),
    fields::Choice<&ShapesParams::halfShift>("halfShift", offAndOn),
    fields::Color<&ShapesParams::color>("color"),
};
template <>
constexpr std::span<const Field> FieldsOf<ShapesParams>() {
    return shapesFields;
}

enum DropsCoveredBlur : std::int16_t { coveredBlurNone = 23, coveredBlurMost = 26 };
enum DropsCoveredTone : std::int16_t { coveredLighter = 27, coveredSame = 28, coveredDarker = 29 };

struct DropsParams {
    /// 0 to 100, all four.
    std::int16_t count = 50;
    std::int16_t size = 50;
    std::int16_t variation = 50;
    std::int16_t reflection = 25;
    /// 0 or 1: halves the dark side of the light.
    std::uint8_t emphasizeLight = 1;
    std::uint8_t unused9 = 0;
    /// 23 to 26.
    std::int16_t coveredBlur = coveredBlurNone;
    /// A DropsCoveredTone.
    std::int16_t coveredTone = coveredLighter;
};
static_assert(sizeof(DropsParams) == 14);
static_assert(offsetof(DropsParams, emphasizeLight) == 8);
static_assert(offsetof(DropsParams, coveredBlur) == 10 && offsetof(DropsParams, coveredTone) == 12);
inline constexpr FieldWord coveredBlurWords[] = {
    {"none", coveredBlurNone}, {"slight", 24}, {"medium", 25}, {"strong", coveredBlurMost}};
inline constexpr FieldWord coveredToneWords[] = {
    {"lighter", coveredLighter}, {"same", coveredSame}, {"darker", coveredDarker}};
inline constexpr Field dropsFields[] = {
    fields::Number<&DropsParams::count>("count", 0, 100),
    fields::Number<&DropsParams::size>("size", 0, 100),
    fields::Number<&DropsParams::variation>("variation", 0, 100),
    fields::Number<&DropsParams::reflection>("reflection", 0, 100),
    fields::Choice<&DropsParams::emphasizeLight>("emphasizeLight", offAndOn),
    fields::Choice<&DropsParams::coveredBlur>("coveredBlur", coveredBlurWords),
    fields::Choice<&DropsParams::coveredTone>("coveredTone", coveredToneWords),
};
template <>
constexpr std::span<const Field> FieldsOf<DropsParams>() {
    return dropsFields;
}

struct DividersParams {
    /// 1 to 100: the density.
    std::int16_t lines = 50;
    /// 0 to 100: percent of vertical lines.
    std::int16_t direction = 50;
    /// 0 or 1.
    std::uint8_t randomColors = 1;
    std::uint8_t antiAliased = 1;
    std::uint8_t transparent = 1;
    std::uint8_t unused7 = 0;
    /// 1 to 20 pixels.
    std::int16_t lineWidth = 1;
    /// 0 to 100 percent.
    std::int16_t widthVariation = 3;
    /// 1 to 20 pixels.
    std::int16_t minimalGap = 2;
    /// The editor's colours, taken over whenever the dialog is read. No defaults.
    RGBColor16 foreground{};
    RGBColor16 background{};
};
static_assert(sizeof(DividersParams) == 26);
static_assert(offsetof(DividersParams, randomColors) == 4 &&
              offsetof(DividersParams, lineWidth) == 8);
static_assert(offsetof(DividersParams, foreground) == 14);
// The two colours are not among the fields: they are the editor's, and no choice of the record.
inline constexpr Field dividersFields[] = {
    fields::Number<&DividersParams::lines>("lines", 1, 100),
    fields::Number<&DividersParams::direction>("direction", 0, 100),
    fields::Choice<&DividersParams::randomColors>("randomColors", offAndOn),
    fields::Choice<&DividersParams::antiAliased>("antiAliased", offAndOn),
    fields::Choice<&DividersParams::transparent>("transparent", offAndOn),
    fields::Number<&DividersParams::lineWidth>("lineWidth", 1, 20),
    fields::Number<&DividersParams::widthVariation>("widthVariation", 0, 100),
    fields::Number<&DividersParams::minimalGap>("minimalGap", 1, 20),
};
template <>
constexpr std::span<const Field> FieldsOf<DividersParams>() {
    return dividersFields;
}

/// Item numbers of the waveform popups, whose separators count.
enum Waveform : std::int16_t {
    waveNone = 1,
    waveSine = 3,
    waveSawtooth = 4,
    waveSquare = 5,
    waveRandom = 7,
};

struct WavesParams {
    /// A Waveform.
    std::int16_t formX = waveSine;
    /// 1 to 100: the amplitude, of which 100 moves a pixel by an eighth of the tile.
    std::int16_t heightX = 50;
    /// 1 to 20 periods over the tile.
    std::int16_t countX = 2;
    std::int16_t formY = waveSine;
    std::int16_t heightY = 50;
    std::int16_t countY = 2;
    std::int16_t unused12 = 0;
    /// 1 reads between pixels, anything else the nearest pixel.
    std::int16_t interpolate = 1;
};
static_assert(sizeof(WavesParams) == 16 && offsetof(WavesParams, interpolate) == 14);
inline constexpr FieldWord waveformWords[] = {{"none", waveNone},
                                              {"sine", waveSine},
                                              {"sawtooth", waveSawtooth},
                                              {"square", waveSquare},
                                              {"random", waveRandom}};
inline constexpr Field wavesFields[] = {
    fields::Choice<&WavesParams::formX>("formX", waveformWords),
    fields::Number<&WavesParams::heightX>("heightX", 1, 100),
    fields::Number<&WavesParams::countX>("countX", 1, 20),
    fields::Choice<&WavesParams::formY>("formY", waveformWords),
    fields::Number<&WavesParams::heightY>("heightY", 1, 100),
    fields::Number<&WavesParams::countY>("countY", 1, 20),
    fields::Choice<&WavesParams::interpolate>("interpolate", offAndOn),
};
template <>
constexpr std::span<const Field> FieldsOf<WavesParams>() {
    return wavesFields;
}

struct TwirlsParams {
    /// 1 to 100, all three.
    std::int16_t quantity = 50;
    std::int16_t size = 50;
    std::int16_t intensity = 50;
};
static_assert(sizeof(TwirlsParams) == 6);
inline constexpr Field twirlsFields[] = {
    fields::Number<&TwirlsParams::quantity>("quantity", 1, 100),
    fields::Number<&TwirlsParams::size>("size", 1, 100),
    fields::Number<&TwirlsParams::intensity>("intensity", 1, 100),
};
template <>
constexpr std::span<const Field> FieldsOf<TwirlsParams>() {
    return twirlsFields;
}

struct SkewParams {
    /// 0 to 3.
    std::int32_t direction = 0;
};
static_assert(sizeof(SkewParams) == 4);
/// Which way the rows or columns slide, the farther the larger their number.
inline constexpr FieldWord skewDirectionWords[] = {
    {"rowsRight", 0}, {"rowsLeft", 1}, {"columnsDown", 2}, {"columnsUp", 3}};
inline constexpr Field skewFields[] = {
    fields::Choice<&SkewParams::direction>("direction", skewDirectionWords),
};
template <>
constexpr std::span<const Field> FieldsOf<SkewParams>() {
    return skewFields;
}
