// Takes one JPEG picture out of an open file, row by row.
#pragma once

#include <cstdint>

#include "files/JPEGManagers.h"

/// Everything here throws imageNotRead as a std::int16_t for what is not readable. Rows that are
/// missing at the end of a file come as the library makes them up.
class JPEGDecoder {
  public:
    /// Finds the picture and reads its header.
    explicit JPEGDecoder(File& file);
    JPEGDecoder(const JPEGDecoder&) = delete;
    JPEGDecoder& operator=(const JPEGDecoder&) = delete;

    /// Valid after the header is read. Up to 65500 pixels a side; 1, 3 or 4 components are colours.
    const jpeg_decompress_struct& Header() const { return info; }

    /// Requests grey rows, whatever the file has. Before Start().
    void AskForGrey();
    /// Requests rows of three components with a fourth byte of 255 after each pixel. False, with no
    /// effect, for other pictures and if the library has no such rows. Before Start().
    bool AskForOpaqueColors();
    void Start();
    bool HasRow() const { return info.output_scanline < info.output_height; }
    /// The next row, one byte a component, or as asked for.
    void ReadRow(std::uint8_t* row);
    /// After the last row.
    void Finish();

  private:
    /// The library's object, given back on every path.
    struct Decompressor : jpeg_decompress_struct {
        Decompressor() : jpeg_decompress_struct{} {}
        Decompressor(const Decompressor&) = delete;
        Decompressor& operator=(const Decompressor&) = delete;
        ~Decompressor() { jpeg_destroy_decompress(this); }
    };

    JPEGErrorManager errors;
    JPEGFileSource source;
    jpeg_progress_mgr progress{};
    Decompressor info;
};
