// The raster on which the whole program works.
//
// 32 bits a pixel, in memory order red, green, blue and an alpha byte that is a work channel of
// the effects and tools, not transparency: its value means nothing between operations. At most
// 512 by 512 pixels in practice. The pixels lie in the host's memory.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>

#include "base/FatalError.h"
#include "hostapi/Suites.h"
#include "raster/HostBuffer.h"
#include "raster/PicStorage.h"
#include "raster/Torus.h"

/// All 32 bits of a pixel as one value: red in the low byte.
using Pixel = std::uint32_t;
constexpr std::int32_t bytesPerPixel = 4;

class PicClass {
  public:
    /// All pixels white, the alpha byte undefined. Test `pixelMap` afterwards: null means that the
    /// host had not enough memory, or that a side is below 1. A raster only counts as created if
    /// the host could have allocated one more block of its size, which the effects need for the
    /// clone.
    PicClass(short width, short height, bool withUndo);
    PicClass(const PicClass&) = delete;
    PicClass& operator=(const PicClass&) = delete;
    virtual ~PicClass();

    /// Bytes a row, always grX * 4.
    std::int32_t RowBytes() const { return rowBytes; }
    unsigned char* Base() const { return base; }
    /// Called at the end of every pixel operation.
    void Unlock() const {}

    // Checked accessors: a coordinate outside the raster fails an assertion.

    /// Writes bytes 0 to 2 and leaves the alpha byte.
    void SetRGB(short x, short y, unsigned char red, unsigned char green, unsigned char blue) {
        AssertLocked(lockedAtSetRGB);
        AssertInside(x, y, insideAtSetRGB);
        StoreRGB(At(x, y), red, green, blue);
    }
    void SetPixel(short x, short y, Pixel pixel) {
        AssertLocked(lockedAtSetPixel);
        AssertInside(x, y,
                     "PicClass / Zeile 292 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))");
        std::memcpy(At(x, y), &pixel, sizeof pixel);
    }
    Pixel GetPixel(short x, short y) const {
        AssertLocked(lockedAtGetPixel);
        AssertInside(x, y,
                     "PicClass / Zeile 322 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))");
        return Load(At(x, y));
    }
    unsigned char* PixelAddress(short x, short y) const {
        AssertLocked("PicClass / Zeile 332 !(locked)");
        AssertInside(x, y,
                     "PicClass / Zeile 333 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))");
        return At(x, y);
    }
    void SetAlpha(short x, short y, unsigned char alpha) {
        AssertLocked(lockedAtSetAlpha);
        AssertInside(x, y,
                     "PicClass / Zeile 378 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))");
        At(x, y)[3] = alpha;
    }
    unsigned char GetAlpha(short x, short y) const {
        AssertLocked("PicClass / Zeile 405 !(locked)");
        AssertInside(x, y,
                     "PicClass / Zeile 406 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))");
        return At(x, y)[3];
    }

    // Wrapped accessors: a coordinate outside the raster wraps around.

    void SetPixelWrapped(short x, short y, Pixel pixel) {
        AssertLocked("PicClass / Zeile 271 !(locked)");
        std::memcpy(AtWrapped(x, y), &pixel, sizeof pixel);
    }
    Pixel GetPixelWrapped(short x, short y) const {
        AssertLocked("PicClass / Zeile 302 !(locked)");
        return Load(AtWrapped(x, y));
    }
    unsigned char* PixelAddressWrapped(short x, short y) const {
        AssertLocked(lockedAtPixelAddressWrapped);
        return AtWrapped(x, y);
    }
    void SetAlphaWrapped(short x, short y, unsigned char alpha) {
        AssertLocked("PicClass / Zeile 359 !(locked)");
        AtWrapped(x, y)[3] = alpha;
    }
    unsigned char GetAlphaWrapped(short x, short y) const {
        AssertLocked("PicClass / Zeile 387 !(locked)");
        return AtWrapped(x, y)[3];
    }
    /// Reads the three colour channels between pixels into `rgb`: the mean of a mix along y of the
    /// two row sums and a mix along x of the two column sums. Not the product form of bilinear
    /// interpolation: a pixel read exactly on the grid is (2A + B + C) / 4, a slight softening,
    /// which is intended.
    void GetPixelInterpolated(double x, double y, unsigned char rgb[3]) const;

    // Whole-raster operations.

    void SetAllAlpha(unsigned char value);
    /// Byte 3 of every pixel becomes r / 3 + g / 3 + b / 3, each division truncating on its own.
    void AlphaFromGrey();
    /// The work copy, created if needed, of the same size and without undo. Null without memory.
    PicClass* GetClone();
    /// Whether GetClone would return one now. For operations that need no work copy, but must do
    /// nothing without memory for one.
    bool HasRoomForClone() const;
    /// These copy every pixel, all 32 bits; nothing happens without a clone.
    void CopyToClone();
    void CopyFromClone();
    void DeleteClone();
    /// False if the undo buffer could not take the pixels.
    bool SaveUndo();
    /// Exchanges the raster and the undo buffer.
    void SwapUndo();

    /// Describes these pixels for the host; null if construction failed. Its right and bottom
    /// bounds are inclusive, one less than the interface's convention: DisplayPixels and TileInfo
    /// add the 1 back.
    std::unique_ptr<hostapi::PSPixelMap> pixelMap;
    /// Width and height in pixels.
    short grX = 0;
    short grY = 0;
    std::unique_ptr<PicClass> clone;
    /// Null for a raster built without undo.
    std::unique_ptr<PicStorage> undo;

  protected:
    // Loops that prove their bounds once assert with the text of the accessor they stand for.
    static constexpr char lockedAtSetRGB[] = "PicClass / Zeile 249 !(locked)";
    static constexpr char insideAtSetRGB[] =
        "PicClass / Zeile 250 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))";
    static constexpr char lockedAtSetPixel[] = "PicClass / Zeile 291 !(locked)";
    static constexpr char lockedAtGetPixel[] = "PicClass / Zeile 321 !(locked)";
    static constexpr char lockedAtPixelAddressWrapped[] = "PicClass / Zeile 342 !(locked)";
    static constexpr char lockedAtSetAlpha[] = "PicClass / Zeile 377 !(locked)";

    void AssertLocked(const char* message) const { Assert(locked, message); }

    static void StoreRGB(unsigned char* pixel, unsigned char red, unsigned char green,
                         unsigned char blue) {
        pixel[0] = red;
        pixel[1] = green;
        pixel[2] = blue;
    }
    static Pixel Load(const unsigned char* address) {
        Pixel pixel;
        std::memcpy(&pixel, address, sizeof pixel);
        return pixel;
    }

  private:
    bool AllocatePixels(short width, short height);
    void Discard();
    void AssertInside(short x, short y, const char* message) const {
        Assert(x < grX && x >= 0 && y < grY && y >= 0, message);
    }
    unsigned char* At(short x, short y) const { return base + y * rowBytes + x * bytesPerPixel; }
    unsigned char* AtWrapped(short x, short y) const { return At(Wrap(x, grX), Wrap(y, grY)); }
    static void CopyPixels(const PicClass& from, PicClass& to);

    unsigned char* base = nullptr;
    std::int32_t rowBytes = 0;
    /// True from the moment the pixels exist.
    bool locked = false;
    HostBuffer storage;
};
