#include "editor/Operations.h"

#include <algorithm>
#include <array>

#include "dialogs/BlurDialog.h"
#include "dialogs/LinesDialog.h"
#include "paint/EffectRun.h"
#include "resources/Ids.h"

namespace {

using Items = TextureItems;

/// A row's dialog over one field of the preferences.
template <typename Dialog, auto field>
std::unique_ptr<ApplyDialog> Make(const ApplyContext& context, Preferences& preferences) {
    return std::make_unique<Dialog>(context, preferences.*field);
}

/// A run step that takes the texture and the record.
template <auto step, auto field>
void Run(PaintClass& pic, const Preferences& preferences) {
    step(pic, preferences.*field);
}

void RunSkewBetweenPixels(PaintClass& pic, const Preferences& preferences) {
    RunSkew(pic, preferences.skew);
}

bool Always(const Preferences&) {
    return true;
}

bool Never(const Preferences&) {
    return false;
}

bool BlursPlainly(const Preferences& preferences) {
    return preferences.blur.motion == 0;
}

constexpr auto effect = OperationKind::effect;
constexpr auto filter = OperationKind::filter;
using P = Preferences;

constexpr std::array operations = {
    Operation{effect, linesDialog, Items::lines, commandLines, Run<RunLines, &P::lines>, Always,
              Make<LinesDialog, &P::lines>, placedLines, presetLines},
    Operation{effect, shapesDialog, Items::shapes, commandLines + 1, Run<RunShapes, &P::shapes>,
              Always, nullptr, placedShapes, presetShapes},
    Operation{effect, dropsDialog, Items::drops, commandLines + 2, Run<RunDrops, &P::drops>, Always,
              nullptr, placedDrops, presetDrops},
    Operation{effect, devidersDialog, Items::dividers, commandLines + 3,
              Run<RunDividers, &P::dividers>, Always, nullptr, placedDeviders, presetDividers},
    Operation{effect, wavesDialog, Items::waves, commandLines + 4, Run<RunWaves, &P::waves>, Never,
              nullptr, placedWaves, presetWaves},
    Operation{effect, twirlsDialog, Items::twirls, commandLines + 5, Run<RunTwirls, &P::twirls>,
              Always, nullptr, placedTwirls, presetTwirls},
    Operation{effect, skewDialog, Items::skew, commandLines + 6, RunSkewBetweenPixels, Always,
              nullptr, placedSkew, presetSkew},
    Operation{filter, blurDialog, Items::blur, commandBlur, Run<RunBlur, &P::blur>, BlursPlainly,
              Make<BlurDialog, &P::blur>, placedBlur},
    Operation{filter, sharpenDialog, Items::sharpen, commandBlur + 1, Run<RunSharpen, &P::sharpen>,
              Never, nullptr, placedSharpen},
    Operation{filter, noiseDialog, Items::noise, commandBlur + 2, Run<RunNoise, &P::noise>, Never,
              nullptr, placedNoise},
    Operation{filter, saturationDialog, Items::saturation, commandBlur + 3,
              Run<RunSaturation, &P::saturation>, Never, nullptr, placedSaturation},
    Operation{filter, brightContrDialog, Items::brightContr, commandBlur + 4,
              Run<RunBrightnessContrast, &P::brightContr>, Never, nullptr, placedBrightContr},
    Operation{filter, addColorDialog, Items::addColor, commandBlur + 5,
              Run<RunAddColor, &P::addColor>, Never, nullptr, placedAddColor},
    Operation{filter, mosaicDialog, Items::mosaic, commandBlur + 6, Run<RunMosaic, &P::mosaic>,
              Never, nullptr, placedMosaic},
};

const Operation* Find(short Operation::*key, short value) {
    const auto found =
        std::find_if(operations.begin(), operations.end(),
                     [=](const Operation& operation) { return operation.*key == value; });
    return found != operations.end() ? &*found : nullptr;
}

}  // namespace

std::span<const Operation> AllOperations() {
    return operations;
}

const Operation* OperationWithId(short id) {
    return Find(&Operation::id, id);
}

const Operation* OperationOfItem(short item) {
    return Find(&Operation::item, item);
}

const Operation* OperationOfMenuCommand(short menuCommand) {
    return Find(&Operation::menuCommand, menuCommand);
}
