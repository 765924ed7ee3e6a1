#include "dialogs/filters/CombineDialog.h"

#include "dialogs/FileOwner.h"
#include "resources/Ids.h"
#include "resources/Strings.h"

namespace {

using Items = CombineItems;

constexpr double leastAmount = 0;
constexpr double greatestAmount = 100;

}  // namespace

CombineDialog::CombineDialog(const ApplyContext& context, const CombineChoice& newStored)
    : ApplyDialog(context, combineDialog),
      stored(newStored),
      mode(newStored.mode),
      amount(newStored.amount) {
    SetApplied();
    SetName(Items::mode, "Mode");
    SetName(Items::slider, "Amount");
    SetName(Items::amount, "Amount");
}

void CombineDialog::Setup() {
    ApplyDialog::Setup();
    SetFormat(Items::amount, "%d", leastAmount, greatestAmount);
    SetRange(Items::slider, leastAmount, greatestAmount);
    SetLabel(Items::amountLabel, Items::amount);
    SetValue(Items::mode, mode);
    SetValue(Items::amount, amount);
    SetValue(Items::slider, amount);
    ShowFile();
}

short CombineDialog::ItemHit(short item) {
    switch (item) {
        case Items::choose:
            ChooseFile();
            return 0;
        case Items::amount:
            SetValue(Items::slider, GetValue(Items::amount));
            MarkChanged(true);
            return 0;
        case Items::mode:
            if (!modeBeforeMenu) {
                MarkChanged(true);
            }
            return 0;
        default:
            return ApplyDialog::ItemHit(item);
    }
}

bool CombineDialog::ScrollChanged(short item, int value) {
    if (item == Items::slider) {
        SetValue(Items::amount, value);
    }
    return ApplyDialog::ScrollChanged(item, value);
}

void CombineDialog::PopupOpens(short item) {
    if (item == Items::mode) {
        modeBeforeMenu = GetShort(Items::mode);
    }
}

void CombineDialog::PopupIsClosed(short item) {
    if (!modeBeforeMenu || item != Items::mode) {
        return;
    }
    const bool isOther = GetShort(Items::mode) != *modeBeforeMenu;
    modeBeforeMenu.reset();
    if (isOther) {
        MarkChanged(true);
    }
}

void CombineDialog::StoreValues() {
    KeepValues();
    stored.mode = mode;
    stored.amount = amount;
}

void CombineDialog::KeepValues() {
    if (IsOpen()) {
        mode = GetShort(Items::mode);
        amount = GetShort(Items::amount);
    }
}

void CombineDialog::ChooseFile() {
    constexpr std::int16_t standardDialog = -1;
    FileOwner files(*this);
    if (stored.file.ChooseImageToOpen(files, nullptr, standardDialog) == 0) {
        ShowFile();
        MarkChanged(true);
    }
}

void CombineDialog::ShowFile() {
    const bool isChosen = stored.file.HasName();
    SetText(Items::fileName,
            isChosen ? stored.file.GetFileName().c_str() : StringText(stringChooseTexture));
    Enable(okItem, isChosen);
}
