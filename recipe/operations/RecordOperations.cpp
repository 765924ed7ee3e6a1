#include "recipe/operations/RecordOperations.h"

#include <cstdint>
#include <cstring>

#include "paint/EffectRun.h"
#include "recipe/operations/Colors.h"
#include "recipe/operations/MemoryCheck.h"
#include "recipe/tool/Session.h"
#include "resources/Ids.h"

namespace recipe {

namespace {

void SetField(const Field& field, void* record, const Arguments& arguments) {
    if (field.type == FieldType::color) {
        WriteColor(field, record, ColorOf(arguments, field.name));
    } else if (field.type == FieldType::real) {
        WriteNumber(field, record, arguments.Get<double>(field.name));
    } else {
        WriteNumber(field, record, static_cast<double>(arguments.Get<std::int64_t>(field.name)));
    }
}

AnyRecord RecordOf(const CatalogRow& row, const Arguments& arguments) {
    AnyRecord record(row);
    for (const Field& field : row.fields) {
        SetField(field, record.Data(), arguments);
    }
    return record;
}

OperationDefinition DefinitionOf(const CatalogRow& row) {
    OperationDefinition definition{
        row.name, TextureUse::changes, {}, [&row](Session& session, const Arguments& arguments) {
            RunRecord(session, row, RecordOf(row, arguments).Data());
        }};
    for (const Field& field : row.fields) {
        const KeyDefinition key = KeyOf(field, row.defaults);
        definition.keys.push_back(key);
    }
    return definition;
}

/// The key of Skew that is no field of its record and has no control: whether it reads the nearest
/// pixels.
OperationDefinition SkewDefinition(const CatalogRow& row) {
    OperationDefinition definition = DefinitionOf(row);
    const KeyDefinition nearest{"nearest", Choice{offAndOn}, Defaults(0)};
    definition.keys.push_back(nearest);
    definition.run = [](Session& session, const Arguments& arguments) {
        const SkewParams params{.direction = arguments.Number<std::int32_t>("direction")};
        CheckMemory(RunSkew(session.Texture(), params, arguments.Number<int>("nearest") != 0));
    };
    return definition;
}

}  // namespace

KeyDefinition KeyOf(const Field& field, const void* defaults) {
    if (field.type == FieldType::color) {
        return {field.name, ColorTriple{}, ColorValue(ReadColor(field, defaults))};
    }
    const double standard = ReadNumber(field, defaults);
    if (field.type == FieldType::real) {
        return {field.name, Real{field.low, field.high}, Value(standard)};
    }
    const WhenMissing whenMissing = Defaults(static_cast<std::int64_t>(standard));
    if (!field.words.empty()) {
        return {field.name, Choice{field.words}, whenMissing};
    }
    return {field.name,
            Whole{static_cast<std::int64_t>(field.low), static_cast<std::int64_t>(field.high)},
            whenMissing};
}

std::vector<OperationDefinition> RecordOperations() {
    std::vector<OperationDefinition> definitions;
    for (const CatalogRow& row : Catalog()) {
        definitions.push_back(row.id == skewDialog ? SkewDefinition(row) : DefinitionOf(row));
    }
    return definitions;
}

void RunRecord(Session& session, const CatalogRow& row, const void* record) {
    if (row.id != devidersDialog) {
        CheckMemory(row.run(session.Texture(), record));
        return;
    }
    DividersParams colored = *static_cast<const DividersParams*>(record);
    colored.foreground = session.foreground;
    colored.background = session.background;
    CheckMemory(row.run(session.Texture(), &colored));
}

}  // namespace recipe
