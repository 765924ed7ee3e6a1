// The operations that work on a texture with a record of settings, one row each. The editor, the
// recipe language, the listing of presets and the tests of the laws walk it, so that a new
// operation is a record with its table of fields, a run step and a row here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "paint/PaintClass.h"
#include "paint/records/Field.h"

enum class OperationKind { effect, filter };

/// The preset lists, in the preference file's order.
enum PresetEffect : std::size_t {
    presetLines,
    presetDrops,
    presetDividers,
    presetWaves,
    presetTwirls,
    presetSkew,
    presetShapes,
    presetEffectCount,
};

struct CatalogRow {
    /// In the recipe language.
    const char* name;
    OperationKind kind;
    /// The resource id of its dialog; 0 for an operation without one.
    std::int16_t id;
    /// The list of its presets; presetEffectCount for none.
    PresetEffect presets;
    /// In memory, in bytes.
    std::size_t recordSize;
    /// A record with the default settings.
    const void* defaults;
    std::span<const Field> fields;
    /// The editor's run step. `record` is of the row's type. False without memory for it.
    bool (*run)(PaintClass& pic, const void* record);
};

/// All rows: the effects, then the filters.
std::span<const CatalogRow> Catalog();

/// Returns the row of the operation whose dialog has this id. An id without a row fails an
/// assertion.
const CatalogRow& CatalogRowOf(std::int16_t id);
const CatalogRow& CatalogRowNamed(std::string_view name);

/// Holds a record of any row; it starts with the defaults.
class AnyRecord {
  public:
    static constexpr std::size_t capacity = 64;

    explicit AnyRecord(const CatalogRow& row);

    void* Data() { return bytes; }
    const void* Data() const { return bytes; }

  private:
    alignas(std::max_align_t) std::byte bytes[capacity];
};
