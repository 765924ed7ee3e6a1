// The controls of each operation's dialog and the fields of its record that they show. The limits
// are those of the fields.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "paint/Catalog.h"
#include "resources/Ids.h"

struct Limits {
    int low;
    int high;
};

/// A number: in an edit field, on a slider, on a dial; 0 for those that there are not.
struct NumberRow {
    short dialog;
    std::string_view field;
    short item;
    short slider;
    short dial = 0;
    /// The field shows `stored * factor + offset`.
    int factor = 1;
    int offset = 0;

    double Stored(int shown) const { return static_cast<double>(shown - offset) / factor; }
};

struct BoxRow {
    short dialog;
    std::string_view field;
    short item;
};

struct RadioRow {
    short dialog;
    std::string_view field;
    int value;
    short item;
    /// A picture that acts as the button; 0 for none.
    short picture = 0;
};

/// The record has the entry's position.
struct PopupRow {
    short dialog;
    std::string_view field;
    short item;
};

struct SwatchRow {
    short dialog;
    std::string_view field;
    short item;
    /// A colour dialog that is cancelled takes an applied result back, too.
    bool cancelCounts;
};

/// A label whose mnemonic leads to another item than the next tab stop.
struct LabelRow {
    short dialog;
    short label;
    short item;
};

/// A picture that stands beside a control and does nothing.
struct PictureRow {
    short dialog;
    std::string_view field;
    short item;
};

extern const std::span<const NumberRow> numberRows;
extern const std::span<const BoxRow> boxRows;
extern const std::span<const RadioRow> radioRows;
extern const std::span<const PopupRow> popupRows;
extern const std::span<const SwatchRow> swatchRows;
extern const std::span<const PictureRow> pictureRows;
extern const std::span<const LabelRow> labelRows;

/// The rows of one dialog.
template <typename Row>
std::vector<Row> RowsOf(std::span<const Row> table, short dialog) {
    std::vector<Row> rows;
    for (const Row& row : table) {
        if (row.dialog == dialog) {
            rows.push_back(row);
        }
    }
    return rows;
}

/// Fails an assertion if the row has no such field.
const Field& FieldNamed(const CatalogRow& row, std::string_view name);
Limits ShownLimits(const NumberRow& number, const Field& field);
