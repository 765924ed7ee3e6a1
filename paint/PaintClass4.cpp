// Construction and the operations that move or set pixels as they are.
#include "paint/PaintClass.h"

unsigned char productTable[256][256];

namespace {

void FillProductTable() {
    if (productTable[255][255] != 0) {
        return;
    }
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            productTable[a][b] = static_cast<unsigned char>(a * b * (1.0 / 255.0));
        }
    }
}

}  // namespace

PaintClass::PaintClass(short width, short height) : PicClass(width, height, true) {
    FillProductTable();
}

PaintClass::~PaintClass() = default;

void PaintClass::FillColor(const RGBColor16& color) {
    AssertLocked(lockedAtSetRGB);
    const unsigned char red = HighByte(color.red);
    const unsigned char green = HighByte(color.green);
    const unsigned char blue = HighByte(color.blue);
    unsigned char* const end = Base() + grY * RowBytes();
    for (unsigned char* pixel = Base(); pixel != end; pixel += bytesPerPixel) {
        StoreRGB(pixel, red, green, blue);
    }
    Unlock();
    SetDirty();
}

void PaintClass::FillWhite() {
    FillColor(white16);
}

void PaintClass::SetColors(const RGBColor16* fore, const RGBColor16* back) {
    foreColor = fore;
    backColor = back;
}
