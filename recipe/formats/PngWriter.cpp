#include "recipe/formats/PngWriter.h"

#include <array>
#include <new>

namespace recipe {

namespace {

/// Bytes of image data in one chunk at most; PNG leaves the size open.
constexpr std::size_t chunkCapacity = 65536;

std::array<std::uint8_t, 4> BigEndian(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

}  // namespace

PngWriter::PngWriter(OutputFile& outputFile, std::uint32_t width, std::uint32_t height)
    : file(outputFile), compressed(chunkCapacity) {
    constexpr std::array<std::uint8_t, 8> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    file.Write(signature.data(), signature.size());
    const auto [w0, w1, w2, w3] = BigEndian(width);
    const auto [h0, h1, h2, h3] = BigEndian(height);
    constexpr std::uint8_t bitDepth = 8;
    constexpr std::uint8_t trueColor = 2;
    const std::array<std::uint8_t, 13> header = {w0, w1,       w2,        w3, h0, h1, h2,
                                                 h3, bitDepth, trueColor, 0,  0,  0};
    WriteChunk("IHDR", header);
    // Last of all: the destructor, which gives the compressor back, runs for whole objects only.
    if (deflateInit(&deflater, Z_DEFAULT_COMPRESSION) != Z_OK) {
        throw std::bad_alloc();
    }
    deflater.next_out = compressed.data();
    deflater.avail_out = chunkCapacity;
}

PngWriter::~PngWriter() {
    deflateEnd(&deflater);
}

void PngWriter::WriteRow(std::span<const std::uint8_t> rgb) {
    // No filter: textures are noisy, and a repeated one compresses by its repetition.
    constexpr std::array<std::uint8_t, 1> filterNone = {0};
    Compress(filterNone, Z_NO_FLUSH);
    Compress(rgb, Z_NO_FLUSH);
}

void PngWriter::Finish() {
    Compress({}, Z_FINISH);
    WriteChunk("IEND", {});
}

void PngWriter::Compress(std::span<const std::uint8_t> bytes, int flush) {
    deflater.next_in = bytes.data();
    deflater.avail_in = static_cast<uInt>(bytes.size());
    int status = Z_OK;
    do {
        status = deflate(&deflater, flush);
        const std::size_t size = chunkCapacity - deflater.avail_out;
        if (deflater.avail_out == 0 || (status == Z_STREAM_END && size > 0)) {
            WriteChunk("IDAT", std::span(compressed).first(size));
            deflater.next_out = compressed.data();
            deflater.avail_out = chunkCapacity;
        }
    } while (deflater.avail_in > 0 || (flush == Z_FINISH && status != Z_STREAM_END));
}

void PngWriter::WriteChunk(const char* type, std::span<const std::uint8_t> data) {
    const auto* const typeBytes = reinterpret_cast<const std::uint8_t*>(type);
    constexpr std::size_t typeSize = 4;
    uLong check = crc32(0, typeBytes, typeSize);
    // For a null pointer crc32 returns its start value instead.
    if (!data.empty()) {
        check = crc32(check, data.data(), static_cast<uInt>(data.size()));
    }
    const auto length = BigEndian(static_cast<std::uint32_t>(data.size()));
    const auto checkBytes = BigEndian(static_cast<std::uint32_t>(check));
    file.Write(length.data(), length.size());
    file.Write(typeBytes, typeSize);
    file.Write(data.data(), data.size());
    file.Write(checkBytes.data(), checkBytes.size());
}

}  // namespace recipe
