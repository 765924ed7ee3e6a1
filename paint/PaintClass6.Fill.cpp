// The paint tools: the fill. The alpha byte of a pixel tells whether the region has reached it.
#include <emmintrin.h>

#include <cstdlib>

#include "base/Progress.h"
#include "paint/PaintClass.h"
#include "paint/PaintColors.h"
#include "paint/kernels/ContourMix.h"
#include "paint/kernels/Dispatch.h"
#include "paint/kernels/FloodRegion.h"
#include "paint/kernels/PixelBytes.h"

using hostapi::Point;

namespace {

using Word = PixelBits::Word;

constexpr unsigned char notReached = 255;

/// The colour of the start, and how far a colour of the region may be from it.
struct Similarity {
    Pixel seed;
    short threshold;
};

/// Pixels of a row that share a word of bits.
struct RowPart {
    unsigned char* pixels;
    int count;
};

/// `part` has at most a word's pixels; 0xFF for each that is similar, else 0.
void CompareLoop(const RowPart& part, const Similarity& similarity,
                 unsigned char* __restrict found) {
    const int red = RedOf(similarity.seed);
    const int green = GreenOf(similarity.seed);
    const int blue = BlueOf(similarity.seed);
    for (int i = 0; i < part.count; ++i) {
        const Pixel pixel = LoadPixel(part.pixels, i);
        const int distance = std::abs(RedOf(pixel) - red) + std::abs(GreenOf(pixel) - green) +
                             std::abs(BlueOf(pixel) - blue);
        found[i] = distance <= similarity.threshold ? 0xFF : 0;
    }
}

Word FindSimilar(const RowPart& part, const Similarity& similarity) {
    unsigned char found[PixelBits::wordBits] = {};
    ForThisProcessor<CompareLoop>(part, similarity, found);
    Word bits = 0;
    for (int i = PixelBits::wordBits - 16; i >= 0; i -= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(found + i));
        bits = bits << 16 | static_cast<Word>(_mm_movemask_epi8(bytes));
    }
    return bits;
}

/// Where a bit is set the pixel becomes `paint`, else its alpha byte tells that it is not reached.
void PaintLoop(const RowPart& part, Word bits, Pixel paint) {
    for (int i = 0; i < part.count; ++i) {
        const bool isReached = (bits >> i & 1) != 0;
        StorePixel(part.pixels, i, isReached ? paint : LoadPixel(part.pixels, i) | alphaMask);
    }
}

/// Calls `use(part, bits)` for each word of bits and its pixels.
template <typename Use>
void ForEachPart(const PaintClass& pic, const PixelBits& bits, Use use) {
    for (int y = 0; y < bits.Height(); ++y) {
        unsigned char* pixels = pic.PixelAddress(0, static_cast<short>(y));
        Word* word = bits.Row(y);
        for (int x = 0; x < bits.Width(); x += PixelBits::wordBits) {
            const int count = std::min(PixelBits::wordBits, bits.Width() - x);
            use(RowPart{pixels, count}, *word);
            pixels += count * bytesPerPixel;
            ++word;
        }
    }
}

/// Leaves in `reached` the region of `start`. False without memory.
bool FindRegion(const PaintClass& pic, Point start, short threshold, PixelBits& reached,
                PixelBits& rest) {
    const Similarity similarity{pic.GetPixelWrapped(start.h, start.v), threshold};
    ForEachPart(pic, reached,
                [&](const RowPart& part, Word& bits) { bits = FindSimilar(part, similarity); });
    // Reached whatever the threshold.
    reached.Set(Wrap(start.h, pic.grX), Wrap(start.v, pic.grY));
    if (!TakeRegion(reached, start, rest)) {
        return false;
    }
    const auto words = static_cast<std::ptrdiff_t>(reached.RowWords()) * reached.Height();
    for (std::ptrdiff_t i = 0; i < words; ++i) {
        reached.Row(0)[i] &= ~rest.Row(0)[i];
    }
    return true;
}

/// The contour of a region: its pixels with a neighbour outside, of eight.
class Contour {
  public:
    explicit Contour(const PixelBits& newRegion) : region(newRegion) {}

    /// A word of row y, whose neighbours are in rows `above` and `below`.
    Word At(int above, int y, int below, int word) const {
        return region.Row(y)[word] &
               (OutsideAround(above, word) | OutsideAround(y, word) | OutsideAround(below, word));
    }

  private:
    int LastWord() const { return region.RowWords() - 1; }
    int LastBit() const { return (region.Width() - 1) % PixelBits::wordBits; }

    Word Outside(int y, int word) const {
        const Word row =
            word == LastWord() ? ~Word{0} >> (PixelBits::wordBits - 1 - LastBit()) : ~Word{0};
        return ~region.Row(y)[word] & row;
    }

    /// Pixels of which one to the left, to the right or they themselves are outside.
    Word OutsideAround(int y, int word) const {
        constexpr int top = PixelBits::wordBits - 1;
        const Word here = Outside(y, word);
        const Word before =
            word > 0 ? Outside(y, word - 1) >> top : Outside(y, LastWord()) >> LastBit();
        const Word after =
            word < LastWord() ? Outside(y, word + 1) << top : (Outside(y, 0) & 1) << LastBit();
        return here | here << 1 | before | here >> 1 | after;
    }

    const PixelBits& region;
};

/// A row of pixels with the rows above and below it.
struct Neighbourhood {
    const unsigned char* above;
    unsigned char* row;
    const unsigned char* below;

    /// The pixel becomes a mix of the eight around it.
    void Mix(int left, int x, int right) const {
        for (int c = 0; c < 3; ++c) {
            const int l = left * bytesPerPixel + c;
            const int m = x * bytesPerPixel + c;
            const int r = right * bytesPerPixel + c;
            row[m] = ContourMix(above[m] + row[l] + row[r] + below[m],
                                above[l] + above[r] + below[l] + below[r]);
        }
    }
};

/// In place: the pixels after a mixed pixel read its new colour.
void SoftenContour(PaintClass& pic, const PixelBits& region) {
    const Contour contour(region);
    const int lastColumn = pic.grX - 1;
    for (short y = 0; y < pic.grY; ++y) {
        const short above = Wrap(y - 1, pic.grY);
        const short below = Wrap(y + 1, pic.grY);
        const Neighbourhood rows{pic.PixelAddress(0, above), pic.PixelAddress(0, y),
                                 pic.PixelAddress(0, below)};
        for (int word = 0; word < region.RowWords(); ++word) {
            for (Word bits = contour.At(above, y, below, word); bits != 0; bits &= bits - 1) {
                const int x = word * PixelBits::wordBits + std::countr_zero(bits);
                rows.Mix(x == 0 ? lastColumn : x - 1, x, x == lastColumn ? 0 : x + 1);
            }
        }
    }
}

}  // namespace

bool PaintClass::FloodFill(Point start) {
    const CursorClass cursor;
    // All alpha bytes are set, each once and for good.
    AssertLocked(lockedAtSetAlpha);
    PixelBits reached(grX, grY);
    PixelBits rest(grX, grY);
    const auto threshold = static_cast<short>(fillTolerance * 255 / 100);
    if (reached.Failed() || rest.Failed() || !FindRegion(*this, start, threshold, reached, rest)) {
        SetAllAlpha(notReached);
        return false;
    }
    const Pixel paint = RasterColor(ForegroundOf(*this));
    ForEachPart(*this, reached, [&](const RowPart& part, const Word& bits) {
        ForThisProcessor<PaintLoop>(part, bits, paint);
    });
    if (fillAntiAlias == 1) {
        SoftenContour(*this, reached);
    }
    Unlock();
    SetDirty();
    return true;
}
