#include "host/picture/PictureFormats.h"

#include <stb_image.h>
#include <stb_image_write.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <span>

namespace host {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr double metresPerInch = 0.0254;
constexpr double centimetresPerInch = 2.54;
constexpr std::array<std::uint8_t, 8> pngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
// After the signature: length, type, 13 bytes of header, checksum.
constexpr std::ptrdiff_t pngHeaderEnd = 8 + 4 + 4 + 13 + 4;
// The picture library counts in 32 bits with a sign, and its buffers double.
constexpr std::size_t largestEncodedBytes = std::size_t{1} << 30;

std::uint32_t BigEndian32(Bytes bytes, std::size_t at) {
    return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
           std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

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

Resolution PngResolution(Bytes bytes) {
    std::size_t at = pngSignature.size();
    while (at + 8 <= bytes.size()) {
        const std::size_t length = BigEndian32(bytes, at);
        if (HasTextAt(bytes, at + 4, "IDAT", 4)) {
            break;
        }
        if (HasTextAt(bytes, at + 4, "pHYs", 4) && length == 9 && at + 17 <= bytes.size()) {
            const bool isMetres = bytes[at + 16] == 1;
            return isMetres ? Sensible(BigEndian32(bytes, at + 8) * metresPerInch,
                                       BigEndian32(bytes, at + 12) * metresPerInch)
                            : Resolution{};
        }
        if (length > bytes.size() - at - 8) {
            break;
        }
        at += 8 + length + 4;
    }
    return {};
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

std::uint32_t PngChecksum(Bytes bytes) {
    std::uint32_t checksum = 0xFFFFFFFF;
    for (std::uint8_t byte : bytes) {
        checksum ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            checksum = checksum >> 1 ^ ((checksum & 1) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~checksum;
}

void PutBigEndian32(std::span<std::uint8_t> bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
}

// Length, type, two resolutions, the unit (metres), checksum of what follows the length.
std::array<std::uint8_t, 21> ResolutionChunk(const Picture& picture) {
    auto perMetre = [](double perInch) {
        return static_cast<std::uint32_t>(std::lround(perInch / metresPerInch));
    };
    std::array<std::uint8_t, 21> chunk{};
    PutBigEndian32(chunk, 0, 9);
    std::memcpy(chunk.data() + 4, "pHYs", 4);
    PutBigEndian32(chunk, 8, perMetre(picture.horizontalResolution));
    PutBigEndian32(chunk, 12, perMetre(picture.verticalResolution));
    chunk[16] = 1;
    PutBigEndian32(chunk, 17, PngChecksum(Bytes(chunk).subspan(4, 13)));
    return chunk;
}

void AppendBytes(void* target, void* data, int size) {
    auto* bytes = static_cast<std::vector<std::uint8_t>*>(target);
    const auto* first = static_cast<const std::uint8_t*>(data);
    bytes->insert(bytes->end(), first, first + size);
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
        return PngResolution(bytes);
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
    std::vector<std::uint8_t> bytes;
    if (stbi_write_png_to_func(AppendBytes, &bytes, picture.width, picture.height, picture.planes,
                               picture.pixels.data(), static_cast<int>(picture.RowBytes())) == 0) {
        throw PictureError("picture: no memory to write it");
    }
    const auto chunk = ResolutionChunk(picture);
    bytes.insert(bytes.begin() + pngHeaderEnd, chunk.begin(), chunk.end());
    return bytes;
}

}  // namespace host
