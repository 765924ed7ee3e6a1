// An 8-bit RGB or RGBA picture in memory, its files in and out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "hostapi/HostTypes.h"

namespace host {

/// A picture that cannot be read or written. The text is one line and names the file.
class PictureError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The filter interface's rectangles have 16 bits; this leaves room for a layer's offset.
constexpr int maximumPictureSide = 30000;

/// Rows from the top, no padding; red, green, blue and, with four planes, opacity interleaved.
struct Picture {
    int width = 0;
    int height = 0;
    /// 3 or 4.
    int planes = 3;
    /// Pixels per inch, above 0.
    double horizontalResolution = 72.0;
    double verticalResolution = 72.0;
    std::vector<std::uint8_t> pixels;

    std::size_t RowBytes() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(planes);
    }
    std::uint8_t* Row(int y) { return pixels.data() + static_cast<std::size_t>(y) * RowBytes(); }
    const std::uint8_t* Row(int y) const {
        return pixels.data() + static_cast<std::size_t>(y) * RowBytes();
    }
    /// The first plane's byte of a pixel.
    std::uint8_t* Pixel(int x, int y) {
        return Row(y) + static_cast<std::size_t>(x) * static_cast<std::size_t>(planes);
    }
    const std::uint8_t* Pixel(int x, int y) const {
        return Row(y) + static_cast<std::size_t>(x) * static_cast<std::size_t>(planes);
    }
    hostapi::VRect Bounds() const { return {0, 0, height, width}; }

    bool operator==(const Picture&) const = default;
};

/// A picture of one value in all bytes, at 72 pixels per inch. Throws PictureError if the sides are
/// not 1 to maximumPictureSide or `planes` is neither 3 nor 4; std::bad_alloc.
Picture MakePicture(int width, int height, int planes, std::uint8_t value = 255);

/// Reads PNG, JPEG or BMP, told apart by the contents. Grey becomes RGB, 16 bits become 8, a file
/// with transparency gives four planes. The resolution is the file's, 72 if it has none.
/// Throws PictureError.
Picture LoadPicture(const std::filesystem::path& file);

/// The same from a file's bytes; `name` stands in the error's text.
Picture DecodePicture(const std::vector<std::uint8_t>& bytes, const std::string& name);

/// Writes a PNG with the picture's resolution. The file appears complete or not at all: it is
/// written under another name beside the target first. Throws PictureError.
void SavePicture(const Picture& picture, const std::filesystem::path& file);

/// The PNG file's bytes. Throws PictureError if memory is short or the picture is not whole.
std::vector<std::uint8_t> EncodePng(const Picture& picture);

/// The path of a UTF-8 name, as command lines give it.
std::filesystem::path PathFromUtf8(const std::string& name);

/// The UTF-8 name of a path, for messages.
std::string Utf8Name(const std::filesystem::path& path);

}  // namespace host
