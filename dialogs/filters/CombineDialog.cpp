#include "dialogs/filters/CombineDialog.h"

#include "dialogs/FileOwner.h"
#include "resources/Ids.h"
#include "resources/Strings.h"

using Items = CombineItems;

CombineDialog::CombineDialog(const ApplyContext& context, CombineParams& newStored,
                             ImageFile& newFile)
    : ParamsDialog(context, combineDialog, newStored), file(newFile) {
    bindings.Popup(FieldFor(&CombineParams::mode), Items::mode);
    bindings.Number(FieldFor(&CombineParams::amount), {.field = Items::amount,
                                                       .slider = Items::slider,
                                                       .label = Items::amountLabel,
                                                       .name = "Amount"});
    SetName(Items::mode, "Mode");
    SetApplied();
}

void CombineDialog::Setup() {
    ParamsDialog::Setup();
    ShowFile();
}

short CombineDialog::ItemHit(short item) {
    if (item == Items::choose) {
        ChooseFile();
        return 0;
    }
    if (item == Items::mode && modeBeforeMenu) {
        return 0;
    }
    return ParamsDialog::ItemHit(item);
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

void CombineDialog::ChooseFile() {
    constexpr std::int16_t standardDialog = -1;
    FileOwner files(*this);
    if (file.ChooseImageToOpen(files, nullptr, standardDialog) == 0) {
        ShowFile();
        MarkChanged(true);
    }
}

void CombineDialog::ShowFile() {
    const bool isChosen = file.HasName();
    SetText(Items::fileName,
            isChosen ? file.GetFileName().c_str() : StringText(stringChooseTexture));
    Enable(okItem, isChosen);
}
