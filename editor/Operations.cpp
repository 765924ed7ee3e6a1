#include "editor/Operations.h"

#include <algorithm>
#include <array>

#include "dialogs/effects/DevidersDialog.h"
#include "dialogs/effects/DropsDialog.h"
#include "dialogs/effects/LinesDialog.h"
#include "dialogs/effects/ShapesDialog.h"
#include "dialogs/effects/SkewDialog.h"
#include "dialogs/effects/TwirlsDialog.h"
#include "dialogs/effects/WavesDialog.h"
#include "dialogs/filters/AddColorDialog.h"
#include "dialogs/filters/BlurDialog.h"
#include "dialogs/filters/BrightContrDialog.h"
#include "dialogs/filters/MosaicDialog.h"
#include "dialogs/filters/NoiseDialog.h"
#include "dialogs/filters/SaturationDialog.h"
#include "dialogs/filters/SharpenDialog.h"
#include "resources/Ids.h"

namespace {

using Items = TextureItems;

/// A row's dialog over one field of the preferences.
template <typename Dialog, auto field>
std::unique_ptr<ApplyDialog> Make(const ApplyContext& context, Preferences& preferences) {
    return std::make_unique<Dialog>(context, preferences.*field);
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

constexpr std::array operations = {
    Operation{linesDialog, Items::lines, commandLines, Always,
              Make<LinesDialog, &Preferences::lines>, placedLines},
    Operation{shapesDialog, Items::shapes, commandLines + 1, Always,
              Make<ShapesDialog, &Preferences::shapes>, placedShapes},
    Operation{dropsDialog, Items::drops, commandLines + 2, Always,
              Make<DropsDialog, &Preferences::drops>, placedDrops},
    Operation{devidersDialog, Items::dividers, commandLines + 3, Always,
              Make<DevidersDialog, &Preferences::dividers>, placedDeviders},
    Operation{wavesDialog, Items::waves, commandLines + 4, Never,
              Make<WavesDialog, &Preferences::waves>, placedWaves},
    Operation{twirlsDialog, Items::twirls, commandLines + 5, Always,
              Make<TwirlsDialog, &Preferences::twirls>, placedTwirls},
    Operation{skewDialog, Items::skew, commandLines + 6, Always,
              Make<SkewDialog, &Preferences::skew>, placedSkew},
    Operation{blurDialog, Items::blur, commandBlur, BlursPlainly,
              Make<BlurDialog, &Preferences::blur>, placedBlur},
    Operation{sharpenDialog, Items::sharpen, commandBlur + 1, Never,
              Make<SharpenDialog, &Preferences::sharpen>, placedSharpen},
    Operation{noiseDialog, Items::noise, commandBlur + 2, Never,
              Make<NoiseDialog, &Preferences::noise>, placedNoise},
    Operation{saturationDialog, Items::saturation, commandBlur + 3, Never,
              Make<SaturationDialog, &Preferences::saturation>, placedSaturation},
    Operation{brightContrDialog, Items::brightContr, commandBlur + 4, Never,
              Make<BrightContrDialog, &Preferences::brightContr>, placedBrightContr},
    Operation{addColorDialog, Items::addColor, commandBlur + 5, Never,
              Make<AddColorDialog, &Preferences::addColor>, placedAddColor},
    Operation{mosaicDialog, Items::mosaic, commandBlur + 6, Never,
              Make<MosaicDialog, &Preferences::mosaic>, placedMosaic},
};

const Operation* Find(short Operation::*key, short value) {
    const auto found =
        std::find_if(operations.begin(), operations.end(),
                     [=](const Operation& operation) { return operation.*key == value; });
    return found != operations.end() ? &*found : nullptr;
}

}  // namespace

void Operation::Run(PaintClass& pic, const Preferences& preferences) const {
    // Without memory an operation leaves the texture as it is, and the editor says nothing.
    Row().run(pic, LastUsedRecord(preferences, id));
}

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
