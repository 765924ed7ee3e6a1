#include "dialogs/ApplyDialog.h"

#include "base/FatalError.h"
#include "dialogs/PresetDialog.h"
#include "resources/Ids.h"
#include "resources/Strings.h"

namespace {

using Items = ApplyItems;

/// Places in the popup: "Last Used", a separator, and from the third on the presets.
constexpr short lastUsedPlace = 1;
constexpr short placesBeforePresets = 2;

constexpr short alertOk = 1;

NorvantaDialog* DialogOf(ApplyFather* father) {
    Assert(father != nullptr, "ApplyDialog / Zeile 23 !(father != NULL)");
    return father->FatherDialog();
}

}  // namespace

ApplyDialog::ApplyDialog(const ApplyContext& context, short newResourceId)
    : SmallPSDialog(newResourceId, DialogOf(context.father)),
      father(context.father),
      placement(context.placement),
      presets(context.presets) {}

void ApplyDialog::Setup() {
    SmallPSDialog::Setup();
    if (presets != nullptr) {
        FillPresets();
        UpdateDelete();
        // The presets are the last in the reading order: they lie below the values.
        SetTabOrder({ItemCount(), Items::presets, Items::save, Items::remove});
    }
    if (placement.right != 0) {
        SetPlacement(placement.top, placement.left);
    }
}

short ApplyDialog::ItemHit(short item) {
    switch (item) {
        case okItem:
        case cancelItem:
            KeepValues();
            placement = Placement();
            return item;
        case Items::apply:
            Apply();
            return 0;
        default:
            // Without presets these items are others: the slider of a filter has Delete's number.
            if (presets != nullptr) {
                HitPresetItem(item);
            }
            return 0;
    }
}

void ApplyDialog::HitPresetItem(short item) {
    if (item == Items::presets && placeBeforeMenu) {
        PassPreset();
    } else if (item == Items::presets) {
        ChoosePreset();
    } else if (item == Items::save) {
        SavePreset();
    } else if (item == Items::remove) {
        DeletePreset();
    }
}

bool ApplyDialog::ScrollChanged(short, int) {
    MarkChanged(true);
    return true;
}

void ApplyDialog::Idle() {
    SmallPSDialog::Idle();
    UpdateApplyState();
}

void ApplyDialog::UpdateApplyState() {
    if (state.FollowKeys(GetModifiers())) {
        SetText(Items::apply, StringText(state.IsAgain() ? stringApplyAgain : stringApply));
    }
    if (presets != nullptr) {
        UpdateDelete();
    }
}

void ApplyDialog::UpdateDelete() {
    const bool canDelete = GetShort(Items::presets) != lastUsedPlace;
    if (IsEnabled(Items::remove) != canDelete) {
        Enable(Items::remove, canDelete);
    }
}

// Delete follows at once: a key pressed during a drag is taken before the next Idle.
void ApplyDialog::SelectPreset(short place) {
    SetValue(Items::presets, place);
    UpdateDelete();
}

// The texture is as it was before the dialog while no result stands, so there is nothing to take
// back then.
void ApplyDialog::MarkChanged(bool restore) {
    const bool showedResult = state.MarkChanged();
    if (presets != nullptr) {
        SelectPreset(lastUsedPlace);
    }
    if (restore && showedResult) {
        father->RevertToUndo();
    }
}

void ApplyDialog::Apply() {
    if (!ApplyAgain()) {
        father->RevertToUndo();
    }
    StoreValues();
    // Before the run: one that ends halfway leaves something to take back.
    SetApplied();
    father->RunOperation(ResourceId());
}

/// Returns whether there is a preset at this place.
bool ApplyDialog::ShowPreset(short place) {
    void* preset = nullptr;
    if (place <= placesBeforePresets ||
        !presets->DataAt(static_cast<short>(place - placesBeforePresets), &preset)) {
        return false;
    }
    UsePreset(preset);
    return true;
}

void ApplyDialog::ChoosePreset() {
    const short place = GetShort(Items::presets);
    if (ShowPreset(place)) {
        MarkChanged(true);
    }
    SelectPreset(place);
}

void ApplyDialog::PassPreset() {
    const short place = GetShort(Items::presets);
    if (!ShowPreset(place)) {
        ShowHeldValues();
    }
    SelectPreset(place);
}

void ApplyDialog::PopupOpens(short item) {
    if (presets != nullptr && item == Items::presets) {
        placeBeforeMenu = GetShort(Items::presets);
        HoldValues();
    }
}

void ApplyDialog::PopupIsClosed(short item) {
    if (!placeBeforeMenu || item != Items::presets) {
        return;
    }
    const bool isOther = GetShort(Items::presets) != *placeBeforeMenu;
    placeBeforeMenu.reset();
    ShowHeldValues();
    if (isOther) {
        ChoosePreset();
    }
}

void ApplyDialog::SavePreset() {
    PresetDialog dialog(this);
    if (dialog.Run() == okItem) {
        if (presets->IsUnique(dialog.Name().c_str())) {
            presets->Append(NewPreset(), dialog.Name().c_str());
        } else {
            Alert(this, alertNameTaken);
        }
    }
    RefillPresets();
}

void ApplyDialog::DeletePreset() {
    const short place = GetShort(Items::presets);
    SelectPreset(lastUsedPlace);
    Assert(place > placesBeforePresets, DeleteAssertion());
    const auto entry = static_cast<short>(place - placesBeforePresets);
    char name[nameCapacity];
    presets->NameAt(entry, name);
    if (Alert(this, alertDeletePreset, name) == alertOk) {
        presets->Remove(entry);
    }
    RefillPresets();
}

/// A fault in a dialog over this one has closed this one as well.
void ApplyDialog::RefillPresets() {
    if (IsOpen()) {
        FillPresets();
    }
}

void ApplyDialog::FillPresets() {
    while (PopupCount(Items::presets) > placesBeforePresets) {
        DeletePopupEntry(Items::presets, placesBeforePresets + 1);
    }
    char name[nameCapacity];
    for (short entry = 1; presets->NameAt(entry, name); ++entry) {
        InsertPopupEntry(Items::presets, static_cast<short>(entry + placesBeforePresets), name);
    }
}
