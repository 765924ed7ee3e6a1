// PNG files row by row, so that a picture of any size needs little memory.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <span>
#include <vector>

#include "recipe/formats/OutputFile.h"

namespace recipe {

/// Writes one RGB picture of 8 bits a component into a file. Throws std::runtime_error when that
/// fails.
class PngWriter {
  public:
    PngWriter(OutputFile& outputFile, std::uint32_t width, std::uint32_t height);
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;
    ~PngWriter();

    /// The next row from the top: `width` times red, green, blue.
    void WriteRow(std::span<const std::uint8_t> rgb);
    /// After the last row. The file is still to be committed.
    void Finish();

  private:
    void Compress(std::span<const std::uint8_t> bytes, int flush);
    void WriteChunk(const char* type, std::span<const std::uint8_t> data);

    OutputFile& file;
    z_stream deflater{};
    std::vector<std::uint8_t> compressed;
};

}  // namespace recipe
