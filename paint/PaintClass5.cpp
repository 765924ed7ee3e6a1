// Colours: each pixel is computed from itself alone, or from its counterpart in another texture.
// Noise is in PaintClass5.Noise.cpp.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/ChannelMaps.h"
#include "paint/kernels/ColorModel.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"

// Saturation, Brightness and Contrast, Add Color.

namespace {

/// Runs `changeRow` on each row. Every pixel is read before it is written, so nothing is copied
/// into the clone; but without memory for one nothing is changed.
template <typename ChangeRow>
void ChangeRows(PaintClass& pic, ChangeRow changeRow) {
    CursorClass cursor;
    if (!pic.HasRoomForClone()) {
        return;
    }
    for (short y = 0; y < pic.grY; ++y) {
        changeRow(pic.PixelAddress(0, y));
        cursor.Tick();
    }
    pic.DeleteClone();
    pic.Unlock();
    pic.SetDirty();
}

}  // namespace

void PaintClass::Saturation(short saturation) {
    const double delta = saturation * 0.01 - 0.5;
    ChangeRows(*this, [&](unsigned char* row) { SaturateRow(row, grX, delta); });
}

void PaintClass::BrightnessContrast(short contrast, short brightness) {
    const int offset = brightness * 2 - 100;
    const double steepness = contrast * 0.01 * 2.0;
    const ContrastMap map(offset, steepness);
    ChangeRows(*this, [&](unsigned char* row) { map.MapRow(row, grX); });
}

void PaintClass::AddColor(const RGBColor16& color, short opacity) {
    const ColorMap map(color, opacity * 0.01);
    ChangeRows(*this, [&](unsigned char* row) { map.MapRow(row, grX); });
}

// Invert.

namespace {

void InvertLoop(unsigned char* pixels, int count) {
    for (int i = 0; i < count; ++i) {
        StorePixel(pixels, i, LoadPixel(pixels, i) ^ ~alphaMask);
    }
}

}  // namespace

void PaintClass::Invert() {
    AssertLocked(lockedAtSetRGB);
    ForThisProcessor<InvertLoop>(Base(), grX * grY);
    Unlock();
    SetDirty();
}

// Combine.

namespace {

enum CombineMode : std::int32_t { combineBlend = 1, combineStructure = 2, combineColor = 3 };

/// A row of each texture. The loops read what stands at a place before they write there, so any of
/// the rows may be the same.
struct CombineRows {
    const unsigned char* target;
    const unsigned char* other;
    unsigned char* out;
    int count;
};

/// `amount` percent of `b` and the rest of `a`.
int Mixed(int a, int b, int amount) {
    return (b * amount + a * (100 - amount)) / 100;
}

void BlendLoop(const CombineRows& rows, int amount) {
    const auto [target, other, out, count] = rows;
    for (int i = 0; i < count; ++i) {
        const Pixel t = LoadPixel(target, i);
        const Pixel o = LoadPixel(other, i);
        StorePixel(
            out, i,
            WithColor(LoadPixel(out, i), Mixed(RedOf(t), RedOf(o), amount),
                      Mixed(GreenOf(t), GreenOf(o), amount), Mixed(BlueOf(t), BlueOf(o), amount)));
    }
}

int ClampedToByte(int value) {
    return std::clamp(value, 0, 255);
}

/// Middle grey in the other texture leaves a pixel as it is.
void StructureLoop(const CombineRows& rows, int amount) {
    const auto [target, other, out, count] = rows;
    for (int i = 0; i < count; ++i) {
        const Pixel t = LoadPixel(target, i);
        const int grey = GreyOf(LoadPixel(other, i));
        const auto rise = static_cast<int>((grey - 128) * 2.0 * amount * 0.01);
        StorePixel(out, i,
                   WithColor(LoadPixel(out, i), ClampedToByte(RedOf(t) + rise),
                             ClampedToByte(GreenOf(t) + rise), ClampedToByte(BlueOf(t) + rise)));
    }
}

void CombineRow(const CombineRows& rows, std::int32_t mode, int amount) {
    switch (mode) {
        case combineBlend:
            ForThisProcessor<BlendLoop>(rows, amount);
            break;
        case combineStructure:
            ForThisProcessor<StructureLoop>(rows, amount);
            break;
        case combineColor:
            TurnHueRow(rows.target, rows.other, rows.out, rows.count, amount * 0.01);
            break;
        default:
            break;
    }
}

}  // namespace

void PaintClass::Combine(const CombineRecord* record) {
    const CursorClass cursor;
    const auto lastX = static_cast<short>(grX - 1);
    const auto lastY = static_cast<short>(grY - 1);
    // Texture of smaller sides fail this accessor's assertion, before anything is changed.
    record->target->GetPixel(lastX, lastY);
    record->other->GetPixel(lastX, lastY);
    for (short y = 0; y < grY; ++y) {
        CombineRow({record->target->PixelAddress(0, y), record->other->PixelAddress(0, y),
                    PixelAddress(0, y), grX},
                   record->mode, record->amount);
    }
    Unlock();
    SetDirty();
}
