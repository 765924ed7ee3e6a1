// Construction and the operations that move or set pixels as they are.
#include <algorithm>
#include <cstdint>

#include "base/TryMake.h"
#include "paint/PaintClass.h"
#include "paint/kernels/PixelBytes.h"

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

std::unique_ptr<PaintClass> PaintClass::Make(short width, short height) {
    std::unique_ptr<PaintClass> texture = TryMake<PaintClass>(width, height);
    if (texture != nullptr && texture->pixelMap == nullptr) {
        texture.reset();
    }
    return texture;
}

PaintClass::~PaintClass() {
    if (cut) {
        DisposeCut();
    }
}

void PaintClass::DisposeCut() {
    Assert(cut != nullptr, "PaintClass4 / Zeile 66 !(cut != nil)");
    cut.reset();
    SetDirty();
}

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

// Mosaic.

namespace {

/// One side of a block in the tile: the part from its start to the tile's edge, and the rest from
/// the other edge on.
struct BlockSide {
    /// Places in a row, each of which the side covers `times` times.
    struct Part {
        int first;
        int count;
        int times;
    };

    /// `start` is below `size`. A block that is longer than the tile goes round it several times.
    BlockSide(int start, short length, short size) {
        if (length <= size) {
            const int beforeEdge = std::min<int>(length, size - start);
            parts[0] = {start, beforeEdge, 1};
            parts[1] = {0, length - beforeEdge, 1};
        } else {
            // Only the first block of a row or column is reached, which starts at 0.
            parts[0] = {0, size, length / size};
            parts[1] = {0, length % size, 1};
        }
        last = Wrap(start + length - 1, size);
    }

    Part parts[2];
    /// The place that is covered last.
    int last;
};

/// The pixels of one block of the grid.
class Block {
  public:
    Block(PaintClass& newPic, const BlockSide& newAcross, const BlockSide& newDown)
        : pic(newPic), across(newAcross), down(newDown) {}

    /// Rounded down, with the alpha byte of the last pixel. `area` counts a place as often as the
    /// block covers it.
    Pixel Average(std::uint64_t area) const {
        std::uint64_t sums[3] = {0, 0, 0};
        for (const BlockSide::Part& rows : down.parts) {
            for (const BlockSide::Part& columns : across.parts) {
                AddPart(rows, columns, sums);
            }
        }
        const Pixel lastPixel = LoadPixel(Row(down.last), across.last);
        // One division: the same as by the width and then by the height, each rounded down.
        return WithColor(lastPixel, static_cast<int>(sums[0] / area),
                         static_cast<int>(sums[1] / area), static_cast<int>(sums[2] / area));
    }

    void Fill(Pixel pixel) const {
        for (const BlockSide::Part& rows : down.parts) {
            for (int y = rows.first; y < rows.first + rows.count; ++y) {
                for (const BlockSide::Part& columns : across.parts) {
                    FillRun(y, columns, pixel);
                }
            }
        }
    }

  private:
    unsigned char* Row(int y) const { return pic.PixelAddress(0, static_cast<short>(y)); }

    void AddPart(const BlockSide::Part& rows, const BlockSide::Part& columns,
                 std::uint64_t (&sums)[3]) const {
        // 255 times the places of the largest tile are more than 32 bits hold.
        const auto times =
            static_cast<std::uint64_t>(rows.times) * static_cast<std::uint64_t>(columns.times);
        for (int y = rows.first; y < rows.first + rows.count; ++y) {
            std::uint32_t rowSums[3] = {0, 0, 0};
            const unsigned char* pixel = Row(y) + columns.first * bytesPerPixel;
            for (int i = 0; i < columns.count; ++i, pixel += bytesPerPixel) {
                for (int c = 0; c < 3; ++c) {
                    rowSums[c] += pixel[c];
                }
            }
            for (int c = 0; c < 3; ++c) {
                sums[c] += rowSums[c] * times;
            }
        }
    }

    void FillRun(int y, const BlockSide::Part& columns, Pixel pixel) const {
        unsigned char* const row = Row(y);
        for (int x = columns.first; x < columns.first + columns.count; ++x) {
            StorePixel(row, x, pixel);
        }
    }

    PaintClass& pic;
    const BlockSide& across;
    const BlockSide& down;
};

}  // namespace

void PaintClass::Mosaic(short blockWidth, short blockHeight) {
    if (blockWidth < 1 || blockHeight < 1) {
        // No dialog gives it, and there is no block of that size.
        return;
    }
    const auto area =
        static_cast<std::uint64_t>(blockWidth) * static_cast<std::uint64_t>(blockHeight);
    // A block over the right or lower edge reads what earlier blocks have left on the other side,
    // and writes there; meant.
    for (int y = 0; y < grY; y += blockHeight) {
        const BlockSide down(y, blockHeight, grY);
        for (int x = 0; x < grX; x += blockWidth) {
            const BlockSide across(x, blockWidth, grX);
            const Block block(*this, across, down);
            block.Fill(block.Average(area));
        }
    }
    Unlock();
    SetDirty();
}

// Flip and Move.

namespace {

void SwapRows(unsigned char* a, unsigned char* b, int bytes) {
    std::swap_ranges(a, a + bytes, b);
}

void ReverseRow(unsigned char* row, short width) {
    for (int left = 0, right = width - 1; left < right; ++left, --right) {
        const Pixel pixel = LoadPixel(row, left);
        StorePixel(row, left, LoadPixel(row, right));
        StorePixel(row, right, pixel);
    }
}

}  // namespace

void PaintClass::Flip(short mode) {
    enum : short { vertically = 0, horizontally = 1, both = 2 };
    if (mode == vertically || mode == both) {
        for (short y = 0; y < grY / 2; ++y) {
            SwapRows(PixelAddress(0, y), PixelAddress(0, static_cast<short>(grY - y - 1)),
                     RowBytes());
        }
    }
    if (mode == horizontally || mode == both) {
        for (short y = 0; y < grY; ++y) {
            ReverseRow(PixelAddress(0, y), grX);
        }
    }
    Unlock();
    SetDirty();
}

namespace {

/// Copies a row to where it goes, in runs within which the torus has no seam.
void CopyShiftedRow(const unsigned char* from, unsigned char* to, short dx, short width) {
    for (int x = 0; x < width;) {
        const auto moved = static_cast<short>(x - dx);
        const int target = Wrap(moved, width);
        // Positions have 16 bits: the lowest follows the highest.
        const int run = std::min({width - x, width - target, 32768 - moved});
        std::memcpy(to + target * bytesPerPixel, from + x * bytesPerPixel,
                    static_cast<std::size_t>(run * bytesPerPixel));
        x += run;
    }
}

}  // namespace

void PaintClass::ShiftBy(short dx, short dy) {
    Assert(clone != nullptr, "PaintClass6 / Zeile 946 !(clone != nil)");
    CopyToClone();
    for (short y = 0; y < grY; ++y) {
        unsigned char* const target = PixelAddressWrapped(0, static_cast<short>(y - dy));
        CopyShiftedRow(clone->PixelAddress(0, y), target, dx, grX);
    }
    SetDirty();
}
