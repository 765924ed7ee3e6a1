// The settings of the paint tools that have a dialog, and the tables of their fields. No file keeps
// them.
#pragma once

#include "paint/records/Field.h"

struct BrushSettings {
    /// The diameter in pixels.
    std::int16_t size = 11;
};
inline constexpr Field brushFields[] = {
    fields::Number<&BrushSettings::size>("size", 2, 20),
};
template <>
constexpr std::span<const Field> FieldsOf<BrushSettings>() {
    return brushFields;
}

struct StampSettings {
    /// The diameter in pixels.
    std::int16_t size = 16;
    // From the brush to the source in texture pixels, to the right and down; both 0 for no source.
    // The range is the dialog's: the mouse and recipes may go farther.
    std::int16_t offsetH = 0;
    std::int16_t offsetV = 0;
};
inline constexpr Field stampFields[] = {
    fields::Number<&StampSettings::size>("size", 1, 20),
    fields::Number<&StampSettings::offsetH>("offsetH", -1000, 1000),
    fields::Number<&StampSettings::offsetV>("offsetV", -1000, 1000),
};
template <>
constexpr std::span<const Field> FieldsOf<StampSettings>() {
    return stampFields;
}

struct FillSettings {
    /// How far a colour may be from that of the start.
    std::int16_t tolerance = 25;
    /// 1 softens the contour.
    std::int16_t antiAlias = 1;
};
inline constexpr Field fillFields[] = {
    fields::Number<&FillSettings::tolerance>("tolerance", 0, 100),
    fields::Number<&FillSettings::antiAlias>("antiAlias", 0, 1),
};
template <>
constexpr std::span<const Field> FieldsOf<FillSettings>() {
    return fillFields;
}
