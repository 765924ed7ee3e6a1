// The effects and filters that have a dialog: one row each, by which the editor's buttons, menu
// entries and Repeat commands find them.
#pragma once

#include <memory>
#include <span>

#include "dialogs/ApplyDialog.h"
#include "files/Preferences.h"
#include "paint/Catalog.h"

struct Operation {
    /// The resource id of its dialog, by which it is known.
    short id;
    /// The editor's button.
    short item;
    short menuCommand;
    /// Whether a run from the dialog redraws the view first, so that a progress bar starts on what
    /// is there.
    bool (*redrawsFirst)(const Preferences& preferences);
    /// The dialog over the remembered record.
    std::unique_ptr<ApplyDialog> (*makeDialog)(const ApplyContext& context,
                                               Preferences& preferences);
    PlacedDialog place;

    const CatalogRow& Row() const { return CatalogRowOf(id); }
    /// Runs it on the texture with the remembered record.
    void Run(PaintClass& pic, const Preferences& preferences) const;
};

/// In the order of the items.
std::span<const Operation> AllOperations();

// Null for none.
const Operation* OperationWithId(short id);
const Operation* OperationOfItem(short item);
const Operation* OperationOfMenuCommand(short menuCommand);
