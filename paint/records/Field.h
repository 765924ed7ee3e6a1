// The description of a parameter record's fields. A table of these stands beside each record; the
// recipe language, the listing of presets, the limits of dialog controls and the tests read it.
// Defaults are not in it: they are the record's own initialisers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "base/FatalError.h"
#include "paint/Color.h"

/// A value of a field that is a choice, and its name.
struct FieldWord {
    /// "" for a value that has no name.
    const char* word;
    int value;
};

enum class FieldType : std::uint8_t { uint8, int16, uint16, int32, real, color };

struct Field {
    /// The member's name.
    const char* name;
    FieldType type;
    /// Returns the address of the field in a record of the table's type.
    const void* (*address)(const void* record);
    /// The range that the dialogs give, both ends included. Without meaning for a colour.
    double low;
    double high;
    /// For a choice, all its values in ascending order: of those from `low` to `high` only these
    /// are in range. Empty for a number.
    std::span<const FieldWord> words;
};

/// Returns the table of a record. Each record's header specialises it.
template <typename Record>
std::span<const Field> FieldsOf();

/// Reads any field but a colour. Every value is exact as a double.
double ReadNumber(const Field& field, const void* record);
/// Writes any field but a colour. An integer field takes the integer part, kept to what its type
/// holds; NaN counts as 0.
void WriteNumber(const Field& field, void* record, double value);
RGBColor16 ReadColor(const Field& field, const void* record);
void WriteColor(const Field& field, void* record, const RGBColor16& color);

/// Whether the value is one that the dialogs give.
bool IsInRange(const Field& field, double value);
/// Returns the value in range that lies nearest, the lower one of two. NaN becomes the lowest.
double NearestInRange(const Field& field, double value);

/// Whether every field of the record is in range. A colour always is.
bool IsInRange(std::span<const Field> fields, const void* record);
/// Moves every field of the record into its range.
void PutInRange(std::span<const Field> fields, void* record);

// The parts of the tables.

/// The words of a switch.
inline constexpr FieldWord offAndOn[] = {{"off", 0}, {"on", 1}};

namespace fields {

template <typename Type>
constexpr FieldType typeOf = std::is_same_v<Type, std::uint8_t>    ? FieldType::uint8
                             : std::is_same_v<Type, std::int16_t>  ? FieldType::int16
                             : std::is_same_v<Type, std::uint16_t> ? FieldType::uint16
                             : std::is_same_v<Type, std::int32_t>  ? FieldType::int32
                             : std::is_same_v<Type, double>        ? FieldType::real
                                                                   : FieldType::color;

template <auto member, typename Record, typename Type>
constexpr Field Make(const char* name, Type Record::*, double low, double high,
                     std::span<const FieldWord> words) {
    static_assert(typeOf<Type> != FieldType::color || std::is_same_v<Type, RGBColor16>);
    return {name,
            typeOf<Type>,
            [](const void* record) -> const void* {
                return &(static_cast<const Record*>(record)->*member);
            },
            low,
            high,
            words};
}

template <auto member>
constexpr Field Number(const char* name, double low, double high) {
    return Make<member>(name, member, low, high, {});
}

/// `words` is in ascending order and not empty.
template <auto member>
constexpr Field Choice(const char* name, std::span<const FieldWord> words) {
    return Make<member>(name, member, words.front().value, words.back().value, words);
}

template <auto member>
constexpr Field Color(const char* name) {
    return Make<member>(name, member, 0, 0, {});
}

}  // namespace fields

/// Returns the description of a member, which has to be one that the record's table lists:
/// `FieldFor(&DropsParams::count)`.
template <typename Record, typename Type>
const Field& FieldFor(Type Record::*member) {
    const Record record{};
    for (const Field& field : FieldsOf<Record>()) {
        if (field.address(&record) == &(record.*member)) {
            return field;
        }
    }
    FailAssertion("Field / a member that the table of its record does not list");
}
