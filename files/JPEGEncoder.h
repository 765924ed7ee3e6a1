// Makes a JPEG stream of a picture, row by row.
#pragma once

#include <cstdint>
#include <optional>

#include "files/ImageInfo.h"
#include "files/JPEGManagers.h"

/// The header of a picture.
struct JPEGImage {
    /// 1 to 65500.
    int width;
    int height;
    /// 1 for grey, 3 for red, green, blue.
    int components;
    /// Without a unit the stream gets no JFIF header, and so no density.
    std::int16_t resolutionUnit = resolutionNone;
    std::uint16_t xResolution = 0;
    std::uint16_t yResolution = 0;
};

/// Everything here throws imageNotWritten as a std::int16_t when the library or the sink fails.
/// Everything that is not set here has the library's default.
class JPEGEncoder {
  public:
    explicit JPEGEncoder(const JPEGImage& image);
    JPEGEncoder(const JPEGEncoder&) = delete;
    JPEGEncoder& operator=(const JPEGEncoder&) = delete;

    /// 1 to 100; the last one before Start() counts. Baseline in any case.
    void SetQuality(int quality);
    void Start(ByteSink& sink);
    /// The next row from the top, `components` bytes a pixel.
    void WriteRow(const std::uint8_t* row);
    /// After the last row: the stream is complete in its sink.
    void Finish();

  private:
    struct Compressor : jpeg_compress_struct {
        Compressor() : jpeg_compress_struct{} {}
        Compressor(const Compressor&) = delete;
        Compressor& operator=(const Compressor&) = delete;
        ~Compressor() { jpeg_destroy_compress(this); }
    };

    void Describe(const JPEGImage& image);

    JPEGErrorManager errors;
    std::optional<JPEGDestination> destination;
    Compressor info;
};
