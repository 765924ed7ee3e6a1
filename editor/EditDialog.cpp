#include "editor/EditDialog.h"

#include <algorithm>
#include <cmath>

#include "editor/Readouts.h"
#include "editor/Units.h"
#include "paint/PaintClass.h"
#include "resources/Ids.h"
#include "resources/Strings.h"

namespace {

using Items = SizeItems;

}  // namespace

EditDialog::EditDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement, short newWidth,
                       short newHeight)
    : EditDialog(editDialog, newOwner, newPlacement, newWidth, newHeight) {}

EditDialog::EditDialog(short newResourceId, NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
                       short newWidth, short newHeight)
    : SmallPSDialog(newResourceId, newOwner),
      placement(newPlacement),
      resolution(WholeResolution(Record()->imageHRes)),
      units(unitPixels),
      width(newWidth),
      height(newHeight),
      name(StringText(stringFirstName)) {
    SetName(Items::units, "Unit");
}

void EditDialog::Setup() {
    SmallPSDialog::Setup();
    // The fields are in pixels at first, whatever the unit to come.
    const std::int32_t wanted = units;
    units = unitPixels;
    SetUpFields();
    SetText(Items::resolution, ResolutionText(resolution).c_str());
    SetText(Items::name, name.c_str());
    ShowMemory();
    Center();
    ChangeUnits(wanted);
    SetValue(Items::units, units);
    if (placement.right != 0) {
        SetPlacement(placement.top, placement.left);
    }
    if (titleAsNew) {
        SetTitle(StringText(stringNew));
    }
}

// The height is taken in whole pixels from here on.
void EditDialog::SetUpFields() {
    SetFormat(Items::width, "%d", 0, maximalTextureSide);
    SetFormat(Items::height, "%d", 0, maximalTextureSide);
    SetFormat(Items::name, "%31s");
    SetValue(Items::width, width);
    SetValue(Items::height, std::trunc(height));
}

short EditDialog::ItemHit(short item) {
    ReadSize();
    switch (item) {
        case Items::ok:
        case Items::cancel:
            return Leave(item);
        case Items::width:
        case Items::height:
            ShowMemory();
            return 0;
        case Items::units:
            ChangeUnits(GetShort(Items::units));
            return 0;
        default:
            return 0;
    }
}

short EditDialog::Leave(short item) {
    name = GetText(Items::name);
    placement = Placement();
    return item;
}

void EditDialog::SetUnits(std::int32_t newUnits) {
    if (IsOpen()) {
        ChangeUnits(newUnits);
    } else {
        units = newUnits;
    }
}

void EditDialog::PixelSize(short* pixelWidth, short* pixelHeight) {
    if (IsOpen()) {
        ReadSize();
    }
    *pixelWidth = ::PixelSize(units, width, resolution);
    *pixelHeight = ::PixelSize(units, height, resolution);
}

std::string EditDialog::Name() const {
    return IsOpen() ? GetText(Items::name) : name;
}

void EditDialog::ReadSize() {
    width = GetValue(Items::width);
    height = GetValue(Items::height);
}

void EditDialog::ChangeUnits(std::int32_t newUnits) {
    if (!IsOpen()) {
        return;
    }
    const bool toPixels = newUnits == unitPixels;
    const char* const format = toPixels ? "%d" : "%.1f";
    for (const short field : {Items::width, Items::height}) {
        SetFormat(field, format, toPixels ? 1 : 0.1, maximalTextureSide);
    }
    ConvertFields(newUnits);
    if (!toPixels) {
        const double limit = ConvertUnit(unitPixels, newUnits, maximalTextureSide, resolution);
        for (const short field : {Items::width, Items::height}) {
            SetFormat(field, format, 0, limit);
        }
    }
    units = newUnits;
    ReadSize();
}

void EditDialog::ConvertFields(std::int32_t newUnits) {
    for (const short field : {Items::width, Items::height}) {
        SetValue(field, ConvertUnit(units, newUnits, GetValue(field), resolution));
    }
}

// The smallest texture takes up something, too.
void EditDialog::ShowMemory() {
    short pixelWidth;
    short pixelHeight;
    PixelSize(&pixelWidth, &pixelHeight);
    const int kilobytes = std::max(Kilobytes(pixelWidth, pixelHeight), 1);
    SetText(Items::size, MemoryText(kilobytes).c_str());
}
