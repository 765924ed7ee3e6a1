// The effects and filters that have a dialog: one row each, by which the editor's buttons, menu
// entries and Repeat commands find them.
#pragma once

#include <memory>
#include <span>

#include "dialogs/ApplyDialog.h"
#include "files/Preferences.h"
#include "paint/PaintClass.h"

enum class OperationKind {
    effect,
    filter,
};

struct Operation {
    OperationKind kind;
    /// The resource id of its dialog, by which it is known.
    short id;
    /// The editor's button.
    short item;
    short menuCommand;
    /// The step from the remembered record to the texture.
    void (*run)(PaintClass& pic, const Preferences& preferences);
    /// Whether a run from the dialog redraws the view first, so that a progress bar starts on what
    /// is there.
    bool (*redrawsFirst)(const Preferences& preferences);
    /// The dialog over the remembered record; null for one that this version does not have. What
    /// has no dialog is disabled by that.
    std::unique_ptr<ApplyDialog> (*makeDialog)(const ApplyContext& context,
                                               Preferences& preferences);
    PlacedDialog place;
    /// Of an effect; presetEffectCount for a filter.
    PresetEffect presets = presetEffectCount;
};

/// In the order of the items.
std::span<const Operation> AllOperations();

// Null for none.
const Operation* OperationWithId(short id);
const Operation* OperationOfItem(short item);
const Operation* OperationOfMenuCommand(short menuCommand);
