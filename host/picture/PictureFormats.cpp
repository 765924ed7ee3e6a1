#include "host/picture/PictureFormats.h"

#include <stb_image.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <span>

#include "host/picture/PngFile.h"

namespace host {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr double metresPerInch = 0.0254;
constexpr double centimetresPerInch = 2.54;
constexpr std::array<std::uint8_t, 8> pngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
// The picture library counts in 32 bits with a sign, and its buffers double.
constexpr std::size_t largestEncodedBytes = std::size_t{1} << 30;

std::uint32_t BigEndian16(Bytes bytes, std::size_t at) {
    return std::uint32_t{bytes[at]} << 8 | bytes[at + 1];
}

std::uint32_t LittleEndian32(Bytes bytes, std::size_t at) {
    return bytes[at] | std::uint32_t{bytes[at + 1]} << 8 | std::uint32_t{bytes[at + 2]} << 16 |
           std::uint32_t{bytes[at + 3]} << 24;
}

bool HasTextAt(Bytes bytes, std::size_t at, const char* text, std::size_t length) {
    return at + length <= bytes.size() && std::memcmp(bytes.data() + at, text, length) == 0;
}

Resolution Sensible(double horizontal, double vertical) {
    auto isSensible = [](double value) { return value >= 1.0 && value <= 30000.0; };
    if (!isSensible(horizontal) || !isSensible(vertical)) {
        return {};
    }
    return {horizontal, vertical};
}

// Only a JFIF marker right after the start counts: the format puts it there.
Resolution JpegResolution(Bytes bytes) {
    constexpr std::size_t units = 13;
    if (bytes.size() < 18 || bytes[2] != 0xFF || bytes[3] != 0xE0 ||
        !HasTextAt(bytes, 6, "JFIF\0", 5)) {
        return {};
    }
    const double horizontal = BigEndian16(bytes, units + 1);
    const double vertical = BigEndian16(bytes, units + 3);
    if (bytes[units] == 1) {
        return Sensible(horizontal, vertical);
    }
    if (bytes[units] == 2) {
        return Sensible(horizontal * centimetresPerInch, vertical * centimetresPerInch);
    }
    return {};
}

Resolution BmpResolution(Bytes bytes) {
    constexpr std::size_t headerSize = 14, pixelsPerMetre = 38;
    if (bytes.size() < pixelsPerMetre + 8 || LittleEndian32(bytes, headerSize) < 40) {
        return {};
    }
    return Sensible(LittleEndian32(bytes, pixelsPerMetre) * metresPerInch,
                    LittleEndian32(bytes, pixelsPerMetre + 4) * metresPerInch);
}

bool IsPng(Bytes bytes) {
    return bytes.size() >= pngSignature.size() &&
           std::memcmp(bytes.data(), pngSignature.data(), pngSignature.size()) == 0;
}

int StbSize(const std::vector<std::uint8_t>& bytes, const std::string& name) {
    if (bytes.size() > static_cast<std::size_t>(INT32_MAX)) {
        throw PictureError(name + ": the file is too large");
    }
    return static_cast<int>(bytes.size());
}

// The library goes on where a JPEG or BMP file breaks off; a file that was cut is damaged.
bool IsCutOff(Bytes bytes) {
    if (HasTextAt(bytes, 0, "BM", 2)) {
        return bytes.size() < 6 || LittleEndian32(bytes, 2) > bytes.size();
    }
    const std::array<std::uint8_t, 2> endOfImage = {0xFF, 0xD9};
    return HasTextAt(bytes, 0, "\xFF\xD8", 2) &&
           std::search(bytes.begin(), bytes.end(), endOfImage.begin(), endOfImage.end()) ==
               bytes.end();
}

std::vector<std::uint8_t> EncodeRows(const Picture& picture) {
    std::vector<std::uint8_t> bytes;
    const Resolution resolution{picture.horizontalResolution, picture.verticalResolution};
    PngWriter writer({.width = static_cast<std::uint32_t>(picture.width),
                      .height = static_cast<std::uint32_t>(picture.height),
                      .planes = picture.planes,
                      .filtersRows = true},
                     &resolution,
                     [&](Bytes part) { bytes.insert(bytes.end(), part.begin(), part.end()); });
    for (int y = 0; y < picture.height; ++y) {
        writer.WriteRow({picture.Row(y), picture.RowBytes()});
    }
    writer.Finish();
    return bytes;
}

struct StbFree {
    void operator()(std::uint8_t* pixels) const { stbi_image_free(pixels); }
};

}  // namespace

PictureHeader ReadPictureHeader(const std::vector<std::uint8_t>& bytes, const std::string& name) {
    PictureHeader header{};
    if (stbi_info_from_memory(bytes.data(), StbSize(bytes, name), &header.width, &header.height,
                              &header.components) == 0) {
        throw PictureError(name + ": not a PNG, JPEG or BMP picture");
    }
    return header;
}

Picture DecodePixels(const std::vector<std::uint8_t>& bytes, const PictureHeader& header,
                     const std::string& name) {
    if (IsCutOff(bytes)) {
        throw PictureError(name + ": damaged (it ends too early)");
    }
    const bool isTransparent = header.components == 2 || header.components == 4;
    Picture picture;
    picture.planes = isTransparent ? 4 : 3;
    int components = 0;
    std::unique_ptr<std::uint8_t, StbFree> pixels(
        stbi_load_from_memory(bytes.data(), StbSize(bytes, name), &picture.width, &picture.height,
                              &components, picture.planes));
    if (!pixels) {
        throw PictureError(name + ": damaged or unsupported (" + stbi_failure_reason() + ")");
    }
    const std::size_t size = picture.RowBytes() * static_cast<std::size_t>(picture.height);
    picture.pixels.assign(pixels.get(), pixels.get() + size);
    return picture;
}

Resolution ReadResolution(const std::vector<std::uint8_t>& bytes) {
    if (IsPng(bytes)) {
        const Resolution resolution = ReadPngResolution(bytes);
        return Sensible(resolution.horizontal, resolution.vertical);
    }
    if (HasTextAt(bytes, 0, "\xFF\xD8", 2)) {
        return JpegResolution(bytes);
    }
    if (HasTextAt(bytes, 0, "BM", 2)) {
        return BmpResolution(bytes);
    }
    return {};
}

std::vector<std::uint8_t> EncodePng(const Picture& picture) {
    if (picture.width < 1 || picture.height < 1 ||
        picture.pixels.size() != picture.RowBytes() * static_cast<std::size_t>(picture.height)) {
        throw PictureError("picture: the pixels don't fit the size");
    }
    if (picture.pixels.size() > largestEncodedBytes) {
        throw PictureError("picture: too large for a PNG file");
    }
    try {
        return EncodeRows(picture);
    } catch (const std::bad_alloc&) {
        throw PictureError("picture: no memory to write it");
    }
}

}  // namespace host
