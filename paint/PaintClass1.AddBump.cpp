// Convolutions: Add Bump.
#include <algorithm>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/PixelBytes.h"
#include "paint/kernels/WrappedPlane.h"

namespace {

/// `above`, `row` and `below` are alpha bytes, with a margin on either side.
void SmoothAlphaLoop(const unsigned char* __restrict above, const unsigned char* __restrict row,
                     const unsigned char* __restrict below, unsigned char* __restrict pixels,
                     int count) {
    for (int x = 0; x < count; ++x) {
        const int neighbours = row[x + 1] + row[x - 1] + above[x] + below[x];
        const auto alpha = static_cast<Pixel>(neighbours / 8 + row[x] / 2);
        StorePixel(pixels, x, (LoadPixel(pixels, x) & 0x00FFFFFF) | alpha << 24);
    }
}

}  // namespace

bool PaintClass::SmoothAlpha(short rowOffset, ShowClass* progress, bool* abortFlag) {
    *abortFlag = false;
    const WrappedPlane plane(*this, alphaByte, 1, 1);
    if (plane.Failed()) {
        return false;
    }
    for (short y = 0; y < grY; ++y) {
        if (y % 10 == 0) {
            progress->Report(static_cast<short>(y + rowOffset));
        }
        ForThisProcessor<SmoothAlphaLoop>(plane.Row(y - 1), plane.Row(y), plane.Row(y + 1),
                                          PixelAddress(0, y), grX);
    }
    Unlock();
    SetDirty();
    return true;
}

namespace {

Pixel Lightened(Pixel pixel, int shift, int difference) {
    const int channel = static_cast<int>(pixel >> shift & 0xFF);
    return static_cast<Pixel>(std::clamp(channel + difference, 0, 255)) << shift;
}

/// Adds to the colours how far the pixel's alpha byte lies above the neighbour's.
Pixel Bumped(Pixel pixel, Pixel neighbour) {
    const int difference = static_cast<int>(pixel >> 24) - static_cast<int>(neighbour >> 24);
    return Lightened(pixel, 0, difference) | Lightened(pixel, 8, difference) |
           Lightened(pixel, 16, difference) | (pixel & 0xFF000000);
}

/// The neighbours are one to the right in `below`, which may be the row itself. In place: the
/// alpha bytes, all that is read of a neighbour, stay.
void BumpLoop(unsigned char* row, const unsigned char* below, int count) {
    for (int x = 0; x < count; ++x) {
        StorePixel(row, x, Bumped(LoadPixel(row, x), LoadPixel(below, x + 1)));
    }
}

}  // namespace

bool PaintClass::AddBump() {
    ShowClass progress(static_cast<short>(2 * grY));
    bool abortFlag = false;
    AlphaFromGrey();
    if (!SmoothAlpha(0, &progress, &abortFlag)) {
        return false;
    }
    for (short y = 0; y < grY; ++y) {
        if (y % 10 == 0) {
            progress.Report(static_cast<short>(y + grY));
        }
        unsigned char* const row = PixelAddress(0, y);
        const unsigned char* const below = PixelAddressWrapped(0, static_cast<short>(y + 1));
        const int last = grX - 1;
        ForThisProcessor<BumpLoop>(row, below, last);
        StorePixel(row, last, Bumped(LoadPixel(row, last), LoadPixel(below, 0)));
    }
    Unlock();
    SetDirty();
    return true;
}
