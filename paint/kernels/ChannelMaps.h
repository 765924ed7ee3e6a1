// Maps of single channels, for rows of pixels whose fourth byte stays.
#pragma once

#include "paint/Color.h"
#include "raster/PicClass.h"

/// A table of 256 values for each channel.
class ChannelMap {
  public:
    void MapRow(unsigned char* pixels, int count) const;

  protected:
    ChannelMap() = default;

    /// `change` returns the new byte of a channel's value, 0 to 255. Red is channel 0.
    template <typename Change>
    void Fill(int channel, Change change) {
        unsigned char bytes[256];
        for (int value = 0; value < 256; ++value) {
            bytes[value] = static_cast<unsigned char>(change(value) & 0xFF);
        }
        SetTable(channel, bytes);
    }

    static constexpr int channelCount = 3;

  private:
    void SetTable(int channel, const unsigned char (&bytes)[256]);

    /// Each value at its place in the pixel.
    Pixel tables[channelCount][256];
    /// The same as differences, for vectors: each entry XOR the one 16 before it, except for the
    /// first 16 of each half.
    unsigned char differences[channelCount][256];
};

/// Adds to the brightness, then moves channels away from 128 or towards it.
class ContrastMap : public ChannelMap {
  public:
    /// Adds `offset` first, clamped to 0 to 255; then a channel c becomes
    /// (c - 128) * steepness + 128, truncated, clamped to 0 to 255.
    ContrastMap(int offset, double steepness);
};

/// Moves channels towards those of a colour.
class ColorMap : public ChannelMap {
  public:
    /// A channel c becomes c - (c - goal) * share, the product truncated.
    ColorMap(const RGBColor16& color, double share);
};
