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
        for (int value = 0; value < 256; ++value) {
            tables[channel][value] = static_cast<Pixel>(change(value) & 0xFF) << 8 * channel;
        }
    }

    static constexpr int channelCount = 3;

  private:
    /// Each value at its place in the pixel.
    Pixel tables[channelCount][256];
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
