// Maps of single channels, for rows of pixels whose fourth byte stays.
//
// A map is a table of 256 values a channel, and where it can be, a calculation in 16 bits that many
// channels go through at a time. The calculation is only used when it gives what the table holds,
// for all 256 values; what the table holds is right in any case.
#pragma once

#include <cstdint>

#include "paint/Color.h"
#include "raster/PicClass.h"

class ChannelTables {
  public:
    /// `change` makes a byte of a channel's value, 0 to 255. Red is channel 0.
    template <typename Change>
    void Fill(int channel, Change change) {
        for (int value = 0; value < 256; ++value) {
            tables[channel][value] = static_cast<Pixel>(change(value) & 0xFF) << 8 * channel;
        }
    }
    unsigned char Value(int channel, int value) const {
        return static_cast<unsigned char>(tables[channel][value] >> 8 * channel);
    }
    void MapRow(unsigned char* pixels, int count) const;

  private:
    /// Each value where it stands in the pixel.
    Pixel tables[3][256];
};

/// Adds to the brightness, then draws channels away from 128 or towards it.
class ContrastMap {
  public:
    /// `newOffset` is added first, within 0 to 255; then a channel c becomes
    /// (c - 128) * steepness + 128, truncated, within 0 to 255.
    ContrastMap(int newOffset, double steepness);
    void MapRow(unsigned char* pixels, int count) const;

    /// True if the map is a calculation.
    bool isLine = false;

  private:
    void FindLine(double steepness);
    bool FitLine(std::uint16_t newFactor);

    ChannelTables tables;
    short offset;
    /// The line in 6 fractional bits: its steepness in 14 bits, and its value at 0.
    std::uint16_t factor = 0;
    short start = 0;
};

/// Moves channels towards those of a colour.
class ColorMap {
  public:
    /// A channel c becomes c - (c - goal) * share, the product truncated.
    ColorMap(const RGBColor16& color, double share);
    void MapRow(unsigned char* pixels, int count) const;

    /// True if the map is a calculation.
    bool isLine = false;

  private:
    void FindFactor(double share);
    bool FitsTable() const;

    ChannelTables tables;
    unsigned char goals[3];
    /// The share in 15 bits.
    std::uint16_t factor = 0;
};
