// Writes JPEG files row by row, with the encoder that the editor saves textures with.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "files/JPEGEncoder.h"
#include "recipe/formats/OutputFile.h"

namespace recipe {

/// Writes one RGB picture of 8 bits a component to a file. Throws std::runtime_error if that fails.
class JpegWriter {
  public:
    JpegWriter(OutputFile& outputFile, int width, int height);
    JpegWriter(const JpegWriter&) = delete;
    JpegWriter& operator=(const JpegWriter&) = delete;

    /// The next row from the top: `width` times red, green, blue.
    void WriteRow(std::span<const std::uint8_t> rgb);
    /// After the last row. The file is still to be committed.
    void Finish();

  private:
    class Sink final : public ByteSink {
      public:
        explicit Sink(OutputFile& outputFile) : file(outputFile) {}
        bool Write(const void* bytes, std::int32_t count) override;

      private:
        OutputFile& file;
    };

    Sink sink;
    std::optional<JPEGEncoder> encoder;
};

}  // namespace recipe
