#include "paint/Catalog.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "base/FatalError.h"
#include "paint/EffectRun.h"
#include "resources/Ids.h"

namespace {

bool RunSkewBetweenPixels(PaintClass& pic, const SkewParams& params) {
    return RunSkew(pic, params);
}

void RunFlip(PaintClass& pic, const FlipParams& params) {
    pic.Flip(params.mode);
}

/// Whether a step that returns nothing ran shows in the texture's mark alone. Brings an earlier
/// mark back at the end, after an assertion too.
class MarkOfRun {
  public:
    explicit MarkOfRun(PaintClass& texture)
        : pic(texture), before(std::exchange(texture.changed, false)) {}
    MarkOfRun(const MarkOfRun&) = delete;
    MarkOfRun& operator=(const MarkOfRun&) = delete;
    ~MarkOfRun() { pic.changed = pic.changed || before; }

    bool IsThere() const { return pic.changed; }

  private:
    PaintClass& pic;
    bool before;
};

template <auto step, typename Record>
bool RunStep(PaintClass& pic, const void* record) {
    const auto& params = *static_cast<const Record*>(record);
    if constexpr (std::is_same_v<decltype(step(pic, params)), bool>) {
        return step(pic, params);
    } else {
        const MarkOfRun mark(pic);
        step(pic, params);
        return mark.IsThere();
    }
}

template <typename Record>
constexpr Record defaultRecord{};

template <auto step, typename Result, typename Record>
constexpr CatalogRow MakeRow(Result (*)(PaintClass&, const Record&), const char* name,
                             OperationKind kind, std::int16_t id, PresetEffect presets) {
    static_assert(sizeof(Record) <= AnyRecord::capacity);
    return {name,
            kind,
            id,
            presets,
            sizeof(Record),
            &defaultRecord<Record>,
            FieldsOf<Record>(),
            RunStep<step, Record>};
}

template <auto step>
constexpr CatalogRow Effect(const char* name, std::int16_t id, PresetEffect presets) {
    return MakeRow<step>(step, name, OperationKind::effect, id, presets);
}

template <auto step>
constexpr CatalogRow Filter(const char* name, std::int16_t id) {
    return MakeRow<step>(step, name, OperationKind::filter, id, presetEffectCount);
}

constexpr CatalogRow rows[] = {
    Effect<RunLines>("lines", linesDialog, presetLines),
    Effect<RunShapes>("shapes", shapesDialog, presetShapes),
    Effect<RunDrops>("drops", dropsDialog, presetDrops),
    Effect<RunDividers>("dividers", devidersDialog, presetDividers),
    Effect<RunWaves>("waves", wavesDialog, presetWaves),
    Effect<RunTwirls>("twirls", twirlsDialog, presetTwirls),
    Effect<RunSkewBetweenPixels>("skew", skewDialog, presetSkew),
    Filter<RunBlur>("blur", blurDialog),
    Filter<RunSharpen>("sharpen", sharpenDialog),
    Filter<RunNoise>("noise", noiseDialog),
    Filter<RunSaturation>("saturation", saturationDialog),
    Filter<RunBrightnessContrast>("brightnessContrast", brightContrDialog),
    Filter<RunMosaic>("mosaic", mosaicDialog),
    Filter<RunAddColor>("addColor", addColorDialog),
    Filter<RunFlip>("flip", 0),
};

}  // namespace

std::span<const CatalogRow> Catalog() {
    return rows;
}

const CatalogRow& CatalogRowOf(std::int16_t id) {
    const auto* const row = std::ranges::find(rows, id, &CatalogRow::id);
    Assert(row != std::end(rows), "Catalog / no operation has this id");
    return *row;
}

const CatalogRow& CatalogRowNamed(std::string_view name) {
    const auto* const row =
        std::ranges::find_if(rows, [name](const CatalogRow& each) { return name == each.name; });
    Assert(row != std::end(rows), "Catalog / no operation has this name");
    return *row;
}

AnyRecord::AnyRecord(const CatalogRow& row) : bytes{} {
    std::memcpy(bytes, row.defaults, row.recordSize);
}
