#include "dialogs/filters/MosaicDialog.h"

#include "resources/Ids.h"

using Items = MosaicItems;

MosaicDialog::MosaicDialog(const ApplyContext& context, MosaicParams& newStored)
    : ParamsDialog(context, mosaicDialog, newStored) {
    bindings.Popup(FieldFor(&MosaicParams::horizontal), Items::horizontal);
    bindings.Popup(FieldFor(&MosaicParams::vertical), Items::vertical);
}

void MosaicDialog::Setup() {
    ParamsDialog::Setup();
    const hostapi::Point size = Father()->TextureSize();
    OfferDivisors(Items::horizontal, size.h);
    OfferDivisors(Items::vertical, size.v);
}

/// Entries whose label divides the side are enabled, although their blocks are one pixel larger
/// than the label says. That is intended.
void MosaicDialog::OfferDivisors(short popup, short side) {
    constexpr short leastLabel = 2;
    constexpr short greatestLabel = 8;
    for (short label = leastLabel; label <= greatestLabel; ++label) {
        EnablePopupEntry(popup, static_cast<short>(label + 1), side % label == 0);
    }
}
