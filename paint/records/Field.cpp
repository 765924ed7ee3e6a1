#include "paint/records/Field.h"

double ReadNumber(const Field& field, const void* record) {
    Assert(field.type != FieldType::color, "Field / a colour is no number");
    return field.read(record);
}

void WriteNumber(const Field& field, void* record, double value) {
    Assert(field.type != FieldType::color, "Field / a colour is no number");
    field.write(record, value);
}

RGBColor16 ReadColor(const Field& field, const void* record) {
    Assert(field.type == FieldType::color, "Field / a number is no colour");
    return *static_cast<const RGBColor16*>(field.address(record));
}

void WriteColor(const Field& field, void* record, const RGBColor16& color) {
    Assert(field.type == FieldType::color, "Field / a number is no colour");
    *static_cast<RGBColor16*>(const_cast<void*>(field.address(record))) = color;
}

bool IsInRange(const Field& field, double value) {
    return field.words.empty() ? value >= field.low && value <= field.high
                               : std::ranges::count(field.words, value, &FieldWord::value) > 0;
}

void PutInRange(const Field& field, void* record) {
    const double value = ReadNumber(field, record);
    WriteNumber(field, record, value > field.low ? std::min(value, field.high) : field.low);
}
