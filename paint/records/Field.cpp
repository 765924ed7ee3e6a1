#include "paint/records/Field.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

template <typename Type>
double Read(const void* address) {
    Type value;
    std::memcpy(&value, address, sizeof value);
    return static_cast<double>(value);
}

template <typename Type>
void Write(void* address, double value) {
    constexpr double lowest = std::numeric_limits<Type>::lowest();
    constexpr double highest = std::numeric_limits<Type>::max();
    const auto kept = static_cast<Type>(value != value ? 0 : std::clamp(value, lowest, highest));
    std::memcpy(address, &kept, sizeof kept);
}

void* AddressIn(const Field& field, void* record) {
    return const_cast<void*>(field.address(record));
}

}  // namespace

double ReadNumber(const Field& field, const void* record) {
    const void* address = field.address(record);
    switch (field.type) {
        case FieldType::uint8:
            return Read<std::uint8_t>(address);
        case FieldType::int16:
            return Read<std::int16_t>(address);
        case FieldType::uint16:
            return Read<std::uint16_t>(address);
        case FieldType::int32:
            return Read<std::int32_t>(address);
        case FieldType::real:
            return Read<double>(address);
        case FieldType::color:
            break;
    }
    FailAssertion("Field / a colour is no number");
}

void WriteNumber(const Field& field, void* record, double value) {
    void* address = AddressIn(field, record);
    switch (field.type) {
        case FieldType::uint8:
            return Write<std::uint8_t>(address, value);
        case FieldType::int16:
            return Write<std::int16_t>(address, value);
        case FieldType::uint16:
            return Write<std::uint16_t>(address, value);
        case FieldType::int32:
            return Write<std::int32_t>(address, value);
        case FieldType::real:
            std::memcpy(address, &value, sizeof value);
            return;
        case FieldType::color:
            break;
    }
    FailAssertion("Field / a colour is no number");
}

RGBColor16 ReadColor(const Field& field, const void* record) {
    Assert(field.type == FieldType::color, "Field / a number is no colour");
    RGBColor16 color;
    std::memcpy(&color, field.address(record), sizeof color);
    return color;
}

void WriteColor(const Field& field, void* record, const RGBColor16& color) {
    Assert(field.type == FieldType::color, "Field / a number is no colour");
    std::memcpy(AddressIn(field, record), &color, sizeof color);
}

bool IsInRange(const Field& field, double value) {
    if (!field.words.empty()) {
        return std::ranges::any_of(
            field.words, [value](const FieldWord& choice) { return choice.value == value; });
    }
    return value >= field.low && value <= field.high;
}

double NearestInRange(const Field& field, double value) {
    if (!(value > field.low)) {
        return field.low;
    }
    double nearest = field.low;
    for (const FieldWord& choice : field.words) {
        if (std::abs(choice.value - value) < std::abs(nearest - value)) {
            nearest = choice.value;
        }
    }
    return field.words.empty() ? std::min(value, field.high) : nearest;
}

bool IsInRange(std::span<const Field> fields, const void* record) {
    return std::ranges::all_of(fields, [record](const Field& field) {
        return field.type == FieldType::color || IsInRange(field, ReadNumber(field, record));
    });
}

void PutInRange(std::span<const Field> fields, void* record) {
    for (const Field& field : fields) {
        if (field.type != FieldType::color) {
            WriteNumber(field, record, NearestInRange(field, ReadNumber(field, record)));
        }
    }
}
