#include "editor/CreaterDialog.h"

#include "paint/PaintClass.h"
#include "resources/Ids.h"
#include "shell/transfer/FilterContext.h"

namespace {

using Items = SizeItems;

/// Sides of 32768 pixels and more come out negative from the 16 bits of a rectangle. A picture that
/// cannot be read has none.
bool IsSide(int pixels) {
    return pixels >= 0 && pixels <= maximalTextureSide;
}

bool SelectionFits(const hostapi::FilterRecord& record) {
    return Width(record.filterRect) <= maximalTextureSide &&
           Height(record.filterRect) <= maximalTextureSide;
}

bool HaveLastTexture(const hostapi::FilterRecord& record) {
    const ParametersBlock* const block = ParametersOf(record);
    return block != nullptr && block->haveLastTexture != 0;
}

}  // namespace

CreaterDialog::CreaterDialog(hostapi::Rect& newPlacement, short newWidth, short newHeight)
    : EditDialog(createrDialog, nullptr, newPlacement, newWidth, newHeight),
      contents(Items::blank) {}

void CreaterDialog::Setup() {
    showNextTime = true;
    EditDialog::Setup();
    SetTabOrder({cancelItem, Items::open});
    for (const short item : {Items::blank, Items::selection, Items::lastTexture}) {
        // The system skips unchecked radio buttons on Tab.
        SetValue(item, item == contents ? 1 : 0);
    }
    SetValue(Items::showNextTime, 1);
    Enable(Items::lastTexture, HaveLastTexture(*Record()));
    Enable(Items::selection, SelectionFits(*Record()));
}

short CreaterDialog::ItemHit(short item) {
    switch (item) {
        case Items::open:
            return ChooseFile();
        case Items::blank:
        case Items::selection:
        case Items::lastTexture:
            ChooseContents(item);
            return 0;
        case Items::showNextTime:
            showNextTime = !showNextTime;
            SetValue(Items::showNextTime, showNextTime ? 1 : 0);
            return 0;
        default:
            return EditDialog::ItemHit(item);
    }
}

short CreaterDialog::Leave(short item) {
    for (const short radio : {Items::blank, Items::selection, Items::lastTexture}) {
        if (GetShort(radio) != 0) {
            contents = radio;
        }
    }
    return EditDialog::Leave(item);
}

// Only a blank texture has a size to choose.
void CreaterDialog::ChooseContents(short radio) {
    for (const short item : {Items::blank, Items::selection, Items::lastTexture}) {
        SetValue(item, item == radio ? 1 : 0);
    }
    for (short item = Items::width - 1; item <= Items::units; ++item) {
        Enable(item, radio == Items::blank);
    }
}

/// A picture that cannot be read at all closes the dialog, too: the editor tells of it.
short CreaterDialog::ChooseFile() {
    const DialogSuspension suspension;
    if (file.ChooseImageToOpen(Window(), nullptr, -1) != fileSucceeded) {
        return 0;
    }
    ImageInfo info{};
    const bool isUnreadable = file.ReadImageInfo(&info) != 0;
    if (isUnreadable || (IsSide(info.right - info.left) && IsSide(info.bottom - info.top))) {
        return EditDialog::ItemHit(okItem);
    }
    file.ClearName();
    Alert(this, alertTooLarge);
    return 0;
}
