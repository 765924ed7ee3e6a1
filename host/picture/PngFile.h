// PNG files through the PNG library: pictures written row by row, and the resolution of one.
//
// Not here: the pixels of a PNG file, which the picture library reads with those of other formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

#include "host/picture/PictureFormats.h"

namespace host {

/// Writes one picture of 8 bits a component.
class PngWriter {
  public:
    /// Takes the next bytes of the file. What it throws comes out of the writer.
    using Sink = std::function<void(std::span<const std::uint8_t> bytes)>;

    struct Format {
        /// 1 to 2^31 - 1.
        std::uint32_t width;
        std::uint32_t height;
        /// 3, or 4 with transparency.
        int planes = 3;
        /// Whether each row is filtered in the way that compresses it best. Noise compresses as
        /// well without, and a repeated texture by its repetition, which filters would hide.
        bool filtersRows = false;
    };

    /// Writes the header, with the resolution if there is one. Throws PictureError for what PNG
    /// cannot hold, std::bad_alloc; so do the others.
    PngWriter(const Format& format, const Resolution* resolution, Sink fileSink);
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;
    ~PngWriter();

    /// The next row from the top: `width` times the planes' bytes.
    void WriteRow(std::span<const std::uint8_t> row);
    /// Ends the file, after the last row.
    void Finish();

  private:
    struct Library;
    std::unique_ptr<Library> library;
};

/// Pixels per inch, from a PNG file's pHYs. 0 where it has none in metres, or is damaged before its
/// pixels begin.
Resolution ReadPngResolution(std::span<const std::uint8_t> bytes);

}  // namespace host
