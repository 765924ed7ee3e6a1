// Short trails that cross the rows, summed in integers a row at a time, on processors with AVX2.
//
// A channel is the truncated sum of the doubles p[k] * w[k], where w[k] is (length - k) / T and
// T = 1 + .. + length. All roundings together move that sum by far less than 1 / T. So the quotient
// of whole numbers, the sum of p[k] * (length - k) over T, decides the channel, unless there is no
// remainder: then the roundings lead to the quotient or to one less, by the order of the pixels.
// Where all pixels of a trail are the same, their value decides. The rest is computed in doubles:
// on noise, one channel in T.
//
// docs/exactness.md has the bound.
#pragma once

#include <cstdint>

#include "raster/HandleArray.h"
#include "raster/PicClass.h"

/// Pixels that go at a time. No row may be shorter.
constexpr int trailRowGroup = 8;

/// The longest trails that TrailRows takes. The shortest have 2 pixels.
constexpr int longestRowTrail = 6;

/// The weights of all trails of a length.
struct TrailWeights {
    TrailWeights(const double* newValues, int length);

    /// One for each place of a trail.
    double values[longestRowTrail];
    /// A bit for each value, eight a byte: set if it comes out one less where all of a trail have
    /// it.
    unsigned char flatBits[256 / 8] = {};
};

/// Blurs rows one after the other, each from copies of its own and those that follow it. The tile
/// wraps around in a margin of the copies, on the side that trails lean to.
class TrailRows {
  public:
    /// `newLean` is -1, 0 or 1: the columns that a trail moves by in each row.
    TrailRows(int newWidth, int newLength, int newLean);

    /// True if there was no memory.
    bool Failed() const { return copies.Failed() || undecided.Failed(); }

    /// Copies a row. Rows are numbered along the trails; as many are known as a trail has pixels.
    void Load(int number, const unsigned char* pixels);

    /// Replaces the pixels of the first row that is known by the weighted sums along their trails,
    /// each channel truncated, with the alpha bytes of the trails' last pixels. Returns how many
    /// channels were computed in doubles. Only for processors with AVX2.
    int Blur(int number, const TrailWeights& weights, unsigned char* pixels);

  private:
    /// Column 0 of a row.
    unsigned char* Copy(int number) const;

    int width;
    int length;
    int lean;
    int margin;
    HandleArray<Pixel> copies;
    HandleArray<std::uint32_t> undecided;
};
