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

bool Always(const Preferences&) {
    return true;
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
    Operation{filter, blurDialog, Items::blur, commandBlur, Run<RunBlur, &P::blur>, BlursPlainly,
              Make<BlurDialog, &P::blur>, placedBlur},
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
