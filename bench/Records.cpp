#include "bench/Records.h"

#include <algorithm>
#include <string_view>

#include "base/FatalError.h"
#include "paint/records/EffectParams.h"
#include "paint/records/FilterParams.h"
#include "paint/records/LinesParams.h"

namespace {

const Field& FieldNamed(const CatalogRow& row, std::string_view name) {
    const auto field =
        std::ranges::find_if(row.fields, [name](const Field& each) { return each.name == name; });
    Assert(field != row.fields.end(), "Records / no field has this name");
    return *field;
}

}  // namespace

const std::vector<MeasuredRecord>& MeasuredRecords() {
    static const std::vector<MeasuredRecord> records = {
        // Every stroke drifts as far as it can, and is softened.
        {"lines", worstCase, {{"precision", 1}, {"colorMode", linesAverage}}},
        // 2 by 2 shapes that overlap all their neighbours.
        {"shapes",
         worstCase,
         {{"kind", shapeSquare}, {"sizeX", 1}, {"sizeY", 1}, {"shiftSize", 100}}},
        {"shapes", "32 by 32", {{"repeatX", 32}, {"repeatY", 32}}},
        // Shapes thinner than a pixel, in each of which hundreds of rows have one.
        {"shapes",
         "thin, 1 by 512",
         {{"repeatX", 32}, {"sizeX", 0.13}, {"sizeY", 1}, {"shiftX", 100}, {"angle", -180}},
         512,
         1},
        {"drops", worstCase, {{"count", 100}, {"size", 100}, {"coveredBlur", coveredBlurMost}}},
        {"dividers", worstCase, {{"lines", 100}, {"minimalGap", 1}}},
        {"waves", worstCase, {{"heightX", 100}, {"countX", 20}, {"heightY", 100}, {"countY", 20}}},
        {"twirls", worstCase, {{"quantity", 100}, {"size", 100}, {"intensity", 100}}},
        {"skew", worstCase, {{"direction", 2}}},
        // A square tile would make all shifts whole numbers; on this one hardly any is.
        {"skew", "rows, 512 by 511", {}, 511},
        {"skew", "columns, 512 by 511", {{"direction", 2}}, 511},
        {"blur", worstCase, {{"amount", 100}}},
        {"blur", "motion", {{"motion", 1}}},
        {"blur", "motion, worst case", {{"motion", 1}, {"amount", 100}}},
        {"noise", worstCase, {{"amount", 100}, {"mode", noiseGrey}}},
        {"mosaic", "3 by 3", {{"horizontal", 3}, {"vertical", 3}}},
        {"mosaic", "9 by 9", {{"horizontal", 9}, {"vertical", 9}}},
        {"flip", worstCase, {{"mode", 2}}},
    };
    return records;
}

AnyRecord RecordOf(const MeasuredRecord& measured) {
    const CatalogRow& row = CatalogRowNamed(measured.operation);
    AnyRecord record(row);
    for (const MeasuredRecord::Setting& setting : measured.settings) {
        WriteNumber(FieldNamed(row, setting.field), record.Data(), setting.value);
    }
    return record;
}

AnyRecord WorstRecordOf(const CatalogRow& row) {
    for (const MeasuredRecord& measured : MeasuredRecords()) {
        if (std::string_view(measured.operation) == row.name &&
            std::string_view(measured.variant) == worstCase) {
            return RecordOf(measured);
        }
    }
    return AnyRecord(row);
}
