// Construction and the operations that move or set pixels as they are.
#include <algorithm>
#include <cstdint>

#include "base/TryMake.h"
#include "paint/PaintClass.h"
#include "paint/kernels/Dispatch.h"
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
    const Pixel filling =
        WithColor(0, HighByte(color.red), HighByte(color.green), HighByte(color.blue));
    unsigned char* const pixels = Base();
    for (int i = 0; i < grX * grY; ++i) {
        StorePixel(pixels, i, (LoadPixel(pixels, i) & alphaMask) | filling);
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

// Blocks that lie side by side within the tile, a row of them at a time.

/// As many rows as a sum of their bytes fits into 16 bits.
constexpr int mostBlockRows = 257;
/// As many pixels as a division by their number is a multiplication, in BlockRow.
constexpr int mostBlockPixels = 4096;

/// `sums` of the bytes of `rows` rows.
void AddRowsLoop(const unsigned char* pixels, std::int32_t rowBytes, int rows,
                 std::uint16_t* __restrict sums, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        sums[i] = pixels[i];
    }
    for (int y = 1; y < rows; ++y) {
        const unsigned char* const row = pixels + y * rowBytes;
        for (int i = 0; i < bytes; ++i) {
            sums[i] = static_cast<std::uint16_t>(sums[i] + row[i]);
        }
    }
}

class BlockRow {
  public:
    BlockRow(const PaintClass& pic, short newWidth, short newHeight)
        : width(newWidth),
          height(newHeight),
          rowBytes(pic.RowBytes()),
          // A sum is at most 255 * area, so with this factor, which is less than 1 too large, the
          // product is less than 255 * area too large: below the 2^32 / area that are left up to
          // the next whole quotient, as long as 255 * area^2 < 2^32.
          perPixel(static_cast<std::uint32_t>((std::uint64_t{1} << 32) / Area() + 1)) {}

    static bool Takes(short width, short height) {
        return height <= mostBlockRows && width * height <= mostBlockPixels && width * height > 1;
    }

    /// Fills `blocks` blocks, of which the first begins at `pixels`.
    void Fill(unsigned char* pixels, int blocks) const {
        for (int first = 0; first < blocks; first += BlocksAtOnce()) {
            FillSome(pixels + first * width * bytesPerPixel,
                     std::min(BlocksAtOnce(), blocks - first));
        }
    }

  private:
    static constexpr int pixelsAtOnce = 4096;

    std::uint32_t Area() const { return static_cast<std::uint32_t>(width * height); }
    int BlocksAtOnce() const { return pixelsAtOnce / width; }

    void FillSome(unsigned char* pixels, int blocks) const {
        std::uint16_t sums[pixelsAtOnce * bytesPerPixel];
        const int bytes = blocks * width * bytesPerPixel;
        ForThisProcessor<AddRowsLoop>(pixels, rowBytes, int{height}, sums, bytes);
        const unsigned char* const lastRow = pixels + (height - 1) * rowBytes;
        for (int block = 0; block < blocks; ++block) {
            const Pixel last = LoadPixel(lastRow, block * width + width - 1);
            const Pixel average = Average(sums + block * width * bytesPerPixel, last);
            for (int x = block * width; x < (block + 1) * width; ++x) {
                StorePixel(pixels, x, average);
            }
        }
        for (int y = 1; y < height; ++y) {
            std::memcpy(pixels + y * rowBytes, pixels, static_cast<std::size_t>(bytes));
        }
    }

    Pixel Average(const std::uint16_t* sums, Pixel last) const {
        std::uint32_t red = 0;
        std::uint32_t green = 0;
        std::uint32_t blue = 0;
        for (int x = 0; x < width; ++x, sums += bytesPerPixel) {
            red += sums[redByte];
            green += sums[greenByte];
            blue += sums[blueByte];
        }
        return WithColor(last, PerPixel(red), PerPixel(green), PerPixel(blue));
    }
    int PerPixel(std::uint32_t sum) const {
        return static_cast<int>(std::uint64_t{sum} * perPixel >> 32);
    }

    short width;
    short height;
    std::int32_t rowBytes;
    std::uint32_t perPixel;
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
    // and writes there. That is intended. A block of one pixel is its own average.
    const BlockRow blockRow(*this, blockWidth, blockHeight);
    for (int y = 0; y < grY && area > 1; y += blockHeight) {
        const BlockSide down(y, blockHeight, grY);
        int x = 0;
        if (y + blockHeight <= grY && BlockRow::Takes(blockWidth, blockHeight)) {
            const int blocks = grX / blockWidth;
            blockRow.Fill(PixelAddress(0, static_cast<short>(y)), blocks);
            x = blocks * blockWidth;
        }
        for (; x < grX; x += blockWidth) {
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
