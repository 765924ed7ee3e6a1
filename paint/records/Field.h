// The description of a parameter record's fields. A table of these stands beside each record, for
// recipes, presets, dialogs, guards and tests. Defaults are the record's own initialisers.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
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

enum class FieldType : std::uint8_t { integer, real, color };

struct Field {
    /// The member's name.
    const char* name;
    FieldType type;
    /// The range that the dialogs give, both ends included. Without meaning for a colour.
    double low;
    double high;
    /// All values of a choice, ascending; no other is in range. Empty for a number.
    std::span<const FieldWord> words;
    /// Returns where the field stands in a record of the table's type.
    const void* (*address)(const void* record);
    /// ReadNumber and WriteNumber call these. Null for a colour.
    double (*read)(const void* record);
    void (*write)(void* record, double value);
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

/// Whether the value of a number or choice is one that the dialogs give.
bool IsInRange(const Field& field, double value);
/// Clamps a number of the record to its range. NaN becomes the lowest.
void PutInRange(const Field& field, void* record);

/// The words of a switch.
inline constexpr FieldWord offAndOn[] = {{"off", 0}, {"on", 1}};

namespace fields {

template <typename Type>
Type Kept(double value) {
    using Limits = std::numeric_limits<Type>;
    if constexpr (Limits::is_integer) {
        value = value != value ? 0 : std::clamp<double>(value, Limits::min(), Limits::max());
    }
    return static_cast<Type>(value);
}

template <auto member, typename Record, typename Type>
constexpr Field Make(const char* name, Type Record::*, double low, double high,
                     std::span<const FieldWord> words) {
    Field field{name, FieldType::color, low, high, words, nullptr, nullptr, nullptr};
    field.address = [](const void* record) -> const void* {
        return &(static_cast<const Record*>(record)->*member);
    };
    if constexpr (!std::is_same_v<Type, RGBColor16>) {
        field.type = std::is_floating_point_v<Type> ? FieldType::real : FieldType::integer;
        field.read = [](const void* record) -> double {
            return static_cast<const Record*>(record)->*member;
        };
        field.write = [](void* record, double value) {
            static_cast<Record*>(record)->*member = Kept<Type>(value);
        };
    }
    return field;
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
