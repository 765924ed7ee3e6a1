#include "paint/kernels/PixelBits.h"

int PixelBits::NextSet(int x, int y) const {
    if (x >= width) {
        return width;
    }
    const Word* const row = Row(y);
    int word = x / wordBits;
    Word rest = row[word] >> (x % wordBits) << (x % wordBits);
    while (rest == 0) {
        ++word;
        if (word == rowWords) {
            return width;
        }
        rest = row[word];
    }
    return word * wordBits + std::countr_zero(rest);
}

BitRun PixelBits::TakeRun(int x, int y) {
    Word* const row = Row(y);
    int word = x / wordBits;
    const int bit = x % wordBits;
    // How many bits are set from this one down, and from it up.
    const int below = std::countl_one(row[word] << (wordBits - 1 - bit));
    const int above = std::countr_one(row[word] >> bit);
    BitRun run{x - below + 1, x + above - 1};
    const Word lower = bit + 1 - below == 0 ? 0 : (Word{1} << (bit + 1 - below)) - 1;
    const Word upper = bit + above == wordBits ? 0 : ~Word{0} << (bit + above);
    row[word] &= lower | upper;
    for (int left = word - 1; left >= 0 && run.first == (left + 1) * wordBits; --left) {
        const int count = std::countl_one(row[left]);
        run.first -= count;
        row[left] &= count == wordBits ? 0 : ~Word{0} >> count;
    }
    for (++word; word < rowWords && run.last == word * wordBits - 1; ++word) {
        const int count = std::countr_one(row[word]);
        run.last += count;
        row[word] &= count == wordBits ? 0 : ~Word{0} << count;
    }
    return run;
}

int PixelBits::CountRuns() const {
    int count = 0;
    for (int y = 0; y < height; ++y) {
        Word before = 0;
        for (int word = 0; word < rowWords; ++word) {
            const Word bits = Row(y)[word];
            count += std::popcount(bits & ~(bits << 1 | before));
            before = bits >> (wordBits - 1);
        }
    }
    return count;
}
