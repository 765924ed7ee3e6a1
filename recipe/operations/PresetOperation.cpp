#include "recipe/operations/PresetOperation.h"

#include <stdexcept>
#include <string>

#include "base/NameCompare.h"
#include "recipe/language/Wording.h"
#include "recipe/operations/EffectOperations.h"
#include "recipe/presets/PreferenceReading.h"
#include "recipe/tool/Session.h"
#include "resources/Strings.h"

namespace recipe {

namespace {

/// An effect that has presets: where its records are, and how one is run.
struct PresetEffectRow {
    std::string_view name;
    PresetEffect list;
    void (*runLastUsed)(Session& session, const Preferences& preferences);
    void (*runRecord)(Session& session, const void* record);
};

template <typename Record, Record Preferences::*lastUsed>
constexpr PresetEffectRow Row(std::string_view name, PresetEffect list) {
    return {name, list,
            [](Session& session, const Preferences& preferences) {
                RunEffect(session, preferences.*lastUsed);
            },
            [](Session& session, const void* record) {
                RunEffect(session, *static_cast<const Record*>(record));
            }};
}

constexpr PresetEffectRow effects[] = {
    Row<LinesParams, &Preferences::lines>("lines", presetLines),
    Row<ShapesParams, &Preferences::shapes>("shapes", presetShapes),
    Row<DropsParams, &Preferences::drops>("drops", presetDrops),
    Row<DividersParams, &Preferences::dividers>("dividers", presetDividers),
    Row<WavesParams, &Preferences::waves>("waves", presetWaves),
    Row<TwirlsParams, &Preferences::twirls>("twirls", presetTwirls),
    Row<SkewParams, &Preferences::skew>("skew", presetSkew),
};

const PresetEffectRow& EffectNamed(std::string_view name) {
    for (const PresetEffectRow& effect : effects) {
        if (effect.name == name) {
            return effect;
        }
    }
    throw std::logic_error("the parser lets no other effect through");
}

/// The first of that name, as the editor compares names; counted from 1. 0 if there is none.
short IndexOfPreset(const SimpleLink& presets, const std::string& name) {
    const std::vector<std::string> names = PresetNames(presets);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (NamesAreEqual(names[i].c_str(), name.c_str())) {
            return static_cast<short>(i + 1);
        }
    }
    return 0;
}

void RunPreset(Session& session, const Arguments& arguments) {
    const auto& file = arguments.Get<std::string>("file");
    const auto& name = arguments.Get<std::string>("name");
    const PresetEffectRow& effect = EffectNamed(arguments.Get<std::string>("effect"));
    Preferences preferences;
    ReadPreferenceFile(session.Places().FindInput(file), preferences);
    if (NamesAreEqual(name.c_str(), StringText(stringLastUsed))) {
        effect.runLastUsed(session, preferences);
        return;
    }
    const SimpleLink& presets = preferences.presets[effect.list];
    void* record = nullptr;
    if (!presets.DataAt(IndexOfPreset(presets, name), &record)) {
        throw std::runtime_error("there is no preset " + Quoted(name) + " for " +
                                 std::string(effect.name) + " in " + Quoted(file));
    }
    effect.runRecord(session, record);
}

}  // namespace

OperationDefinition PresetOperation() {
    Word names;
    for (const PresetEffectRow& effect : effects) {
        names.choices.push_back(effect.name);
    }
    return {"preset",
            TextureUse::changes,
            {{"file", FileName{}}, {"effect", names}, {"name", Text{}}},
            RunPreset};
}

}  // namespace recipe
