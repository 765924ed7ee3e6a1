// The records that operations of the catalogue are measured with beside their defaults.
#pragma once

#include <vector>

#include "paint/Catalog.h"

/// The variant that costs most. An operation without one costs the same with every record.
inline constexpr const char* worstCase = "worst case";

struct MeasuredRecord {
    struct Setting {
        const char* field;
        double value;
    };

    /// The operation's name in the catalogue.
    const char* operation;
    const char* variant;
    /// The differences from the defaults.
    std::vector<Setting> settings;
    /// The tile's.
    short height = 512;
    short width = 512;
};

/// All of them. A name that the catalogue or the table of fields does not have fails an assertion.
const std::vector<MeasuredRecord>& MeasuredRecords();

AnyRecord RecordOf(const MeasuredRecord& measured);
/// Returns the record of the worst case, or the defaults.
AnyRecord WorstRecordOf(const CatalogRow& row);
