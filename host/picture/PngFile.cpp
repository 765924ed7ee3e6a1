#include "host/picture/PngFile.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <string>
#include <utility>

namespace host {

namespace {

constexpr double metresPerInch = 0.0254;
/// Bytes of image data in one chunk at most; PNG leaves the size open.
constexpr std::size_t chunkCapacity = 65536;

/// The library must not return from here. Its frames hold nothing: all its memory is the writer's
/// or the reader's.
[[noreturn]] void ThrowError(png_structp /*png*/, png_const_charp message) {
    throw PictureError(std::string("PNG: ") + message);
}

void IgnoreWarning(png_structp /*png*/, png_const_charp /*message*/) {}

std::uint32_t PerMetre(double perInch) {
    return static_cast<std::uint32_t>(std::lround(perInch / metresPerInch));
}

}  // namespace

// Writing.

struct PngWriter::Library {
    explicit Library(Sink fileSink)
        : sink(std::move(fileSink)),
          png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, ThrowError, IgnoreWarning)),
          info(png != nullptr ? png_create_info_struct(png) : nullptr) {
        if (info == nullptr) {
            png_destroy_write_struct(&png, nullptr);
            throw std::bad_alloc();
        }
        png_set_write_fn(png, this, Write, Flush);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() { png_destroy_write_struct(&png, &info); }

    static void Write(png_structp png, png_bytep bytes, std::size_t count) {
        static_cast<Library*>(png_get_io_ptr(png))->sink({bytes, count});
    }
    static void Flush(png_structp /*png*/) {}

    Sink sink;
    png_structp png;
    png_infop info;
};

PngWriter::PngWriter(const Format& format, const Resolution* resolution, Sink fileSink)
    : library(std::make_unique<Library>(std::move(fileSink))) {
    const png_structp png = library->png;
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_compression_buffer_size(png, chunkCapacity);
    png_set_filter(png, PNG_FILTER_TYPE_BASE,
                   format.filtersRows ? PNG_ALL_FILTERS : PNG_FILTER_NONE);
    png_set_IHDR(png, library->info, format.width, format.height, 8,
                 format.planes == 4 ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (resolution != nullptr) {
        png_set_pHYs(png, library->info, PerMetre(resolution->horizontal),
                     PerMetre(resolution->vertical), PNG_RESOLUTION_METER);
    }
    png_write_info(png, library->info);
}

PngWriter::~PngWriter() = default;

void PngWriter::WriteRow(std::span<const std::uint8_t> row) {
    png_write_row(library->png, row.data());
}

void PngWriter::Finish() {
    png_write_end(library->png, nullptr);
}

// Reading.

namespace {

class InfoReader {
  public:
    explicit InfoReader(std::span<const std::uint8_t> fileBytes)
        : bytes(fileBytes),
          png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, ThrowError, IgnoreWarning)),
          info(png != nullptr ? png_create_info_struct(png) : nullptr) {
        if (info == nullptr) {
            png_destroy_read_struct(&png, nullptr, nullptr);
            throw std::bad_alloc();
        }
        png_set_read_fn(png, this, Read);
        png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        // Checksums are ignored, as the picture library that reads the pixels ignores them.
        png_set_crc_action(png, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
    }
    InfoReader(const InfoReader&) = delete;
    InfoReader& operator=(const InfoReader&) = delete;
    ~InfoReader() { png_destroy_read_struct(&png, &info, nullptr); }

    Resolution Read() {
        png_read_info(png, info);
        return {png_get_x_pixels_per_meter(png, info) * metresPerInch,
                png_get_y_pixels_per_meter(png, info) * metresPerInch};
    }

  private:
    static void Read(png_structp png, png_bytep out, std::size_t count) {
        auto* const reader = static_cast<InfoReader*>(png_get_io_ptr(png));
        if (count > reader->bytes.size()) {
            png_error(png, "ends too early");
        }
        std::copy_n(reader->bytes.begin(), count, out);
        reader->bytes = reader->bytes.subspan(count);
    }

    /// The bytes that the library has not read yet.
    std::span<const std::uint8_t> bytes;
    png_structp png;
    png_infop info;
};

}  // namespace

Resolution ReadPngResolution(std::span<const std::uint8_t> bytes) {
    try {
        return InfoReader(bytes).Read();
    } catch (const PictureError&) {
        return {0, 0};
    }
}

}  // namespace host
