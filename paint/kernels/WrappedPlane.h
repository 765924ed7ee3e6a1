// One channel of a raster with wrapped margins, so that a loop over neighbours needs no wrapping.
#pragma once

#include <cstddef>
#include <optional>

#include "raster/HandleArray.h"
#include "raster/PicClass.h"

class WrappedPlane {
  public:
    /// Copies byte `channel` of every pixel: 0 red, 1 green, 2 blue, 3 alpha. `left` and `right`
    /// are the margins in columns, 0 or more; they may be wider than the raster, which then
    /// repeats.
    WrappedPlane(const PicClass& pic, int channel, int left, int right);

    /// True if there was no memory.
    bool Failed() const { return block.Failed(); }

    /// Byte x of row y, from -left to width + right - 1. Any y: the rows wrap. Up to `slack` more
    /// bytes after each row may be read; they mean nothing.
    const unsigned char* Row(int y) const {
        return block.Values() + static_cast<std::size_t>(Wrap(y, height)) * stride + margin;
    }

    static constexpr int slack = 15;

  private:
    void FillRow(const unsigned char* pixels, int channel, short width, int right,
                 unsigned char* row) const;

    short height;
    int margin;
    std::size_t stride;
    HandleArray<unsigned char> block;
};
