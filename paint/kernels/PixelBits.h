// A bit for each pixel of a tile.
#pragma once

#include <bit>
#include <cstdint>

#include "raster/HandleArray.h"

/// Columns of a row, both ends included.
struct BitRun {
    int first;
    int last;
};

/// By rows of whole words, the lowest bit of a word to the left. The bits after a row's last pixel
/// are 0.
class PixelBits {
  public:
    using Word = std::uint64_t;
    static constexpr int wordBits = 64;

    /// Nothing is set, nor cleared: fill each row.
    PixelBits(short newWidth, short newHeight)
        : width(newWidth),
          height(newHeight),
          rowWords((width + wordBits - 1) / wordBits),
          words(static_cast<std::size_t>(rowWords) * static_cast<std::size_t>(height)) {}

    /// True if there was no memory.
    bool Failed() const { return words.Failed(); }

    int Width() const { return width; }
    int Height() const { return height; }
    int RowWords() const { return rowWords; }
    Word* Row(int y) const { return words.Values() + static_cast<std::ptrdiff_t>(y) * rowWords; }

    bool IsSet(int x, int y) const { return (Row(y)[x / wordBits] >> (x % wordBits) & 1) != 0; }
    void Set(int x, int y) { Row(y)[x / wordBits] |= Word{1} << (x % wordBits); }
    void Clear(int x, int y) { Row(y)[x / wordBits] &= ~(Word{1} << (x % wordBits)); }

    /// The first set bit from column `x` on, or a number of `Width()` or more.
    int NextSet(int x, int y) const;
    /// The set bits without a gap around column `x`, which is set. Clears them.
    BitRun TakeRun(int x, int y);
    /// How many runs the rows have together.
    int CountRuns() const;

  private:
    short width;
    short height;
    int rowWords;
    HandleArray<Word> words;
};
