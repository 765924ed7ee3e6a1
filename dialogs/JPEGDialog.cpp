#include "dialogs/JPEGDialog.h"

#include <memory>

#include "base/TryMake.h"
#include "hostapi/Results.h"
#include "resources/Ids.h"

namespace {

using Items = JPEGItems;

}  // namespace

JPEGDialog::JPEGDialog(JPEGQualityChoice& newChoice)
    : NorvantaDialog(jpegDialog, Active()), choice(newChoice) {
    SetName(Items::slider, "Quality");
}

void JPEGDialog::Setup() {
    NorvantaDialog::Setup();
    SetFormat(Items::quality, "%d", JPEGQualityChoice::lowest, JPEGQualityChoice::highest);
    SetRange(Items::slider, JPEGQualityChoice::lowest, JPEGQualityChoice::highest);
    SetValue(Items::quality, choice.Current());
    SetValue(Items::slider, choice.Current());
    Enable(Items::standard, choice.DefaultIsEnabled());
}

short JPEGDialog::ItemHit(short item) {
    switch (item) {
        case okItem:
        case cancelItem:
            return item;
        case Items::standard:
            Change(choice.Default());
            break;
        case Items::quality:
            Change(GetValue(Items::quality));
            break;
        default:
            break;
    }
    return 0;
}

bool JPEGDialog::ScrollChanged(short item, int value) {
    if (item != Items::slider) {
        return NorvantaDialog::ScrollChanged(item, value);
    }
    Change(value);
    return true;
}

void JPEGDialog::Change(double quality) {
    choice.Change(static_cast<std::int16_t>(quality));
    SetValue(Items::quality, choice.Current());
    SetValue(Items::slider, choice.Current());
    Enable(Items::standard, choice.DefaultIsEnabled());
}

std::int16_t RunJPEGDialog(JPEGQualityChoice& choice) {
    const std::unique_ptr<JPEGDialog> dialog = TryMake<JPEGDialog>(choice);
    if (dialog == nullptr) {
        return hostapi::memFullErr;
    }
    switch (const int ended = dialog->Run()) {
        case okItem:
            return 0;
        case cancelItem:
            return fileCancelled;
        default:
            return static_cast<std::int16_t>(ended);
    }
}
