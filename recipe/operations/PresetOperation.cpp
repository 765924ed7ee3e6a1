#include "recipe/operations/PresetOperation.h"

#include <stdexcept>
#include <string>

#include "base/NameCompare.h"
#include "recipe/language/Wording.h"
#include "recipe/operations/RecordOperations.h"
#include "recipe/presets/PreferenceReading.h"
#include "recipe/tool/Session.h"
#include "resources/Strings.h"

namespace recipe {

namespace {

/// Number of the first preset of that name, counted from 1 and compared as the editor does; 0 if
/// there is none.
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
    const CatalogRow& effect = CatalogRowNamed(arguments.Get<std::string>("effect"));
    Preferences preferences;
    ReadPreferenceFile(session.Places().FindInput(file), preferences);
    if (NamesAreEqual(name.c_str(), StringText(stringLastUsed))) {
        RunRecord(session, effect, LastUsedRecord(preferences, effect.id));
        return;
    }
    const SimpleLink& presets = preferences.presets[effect.presets];
    void* record = nullptr;
    if (!presets.DataAt(IndexOfPreset(presets, name), &record)) {
        throw std::runtime_error("there is no preset " + Quoted(name) + " for " + effect.name +
                                 " in " + Quoted(file));
    }
    RunRecord(session, effect, record);
}

}  // namespace

OperationDefinition PresetOperation() {
    Word names;
    for (const CatalogRow& row : Catalog()) {
        if (row.presets != presetEffectCount) {
            names.choices.push_back(row.name);
        }
    }
    return {"preset",
            TextureUse::changes,
            {{"file", FileName{}}, {"effect", names}, {"name", Text{}}},
            RunPreset};
}

}  // namespace recipe
