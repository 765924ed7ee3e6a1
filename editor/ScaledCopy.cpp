#include "editor/ScaledCopy.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "hostapi/Results.h"

namespace {

constexpr int targetPixel = 3;
/// Bytes after the last pixel: hosts with a fourth plane may read one of a pixel that isn't there.
constexpr std::int64_t slack = 4;

/// Where each target pixel of a row comes from, as an offset in the source row; the same again for
/// each repeat.
std::vector<std::size_t> SourceOffsets(int sourceSize, int targetSize, int repeats,
                                       std::size_t step) {
    const double ratio = static_cast<double>(sourceSize) / targetSize;
    std::vector<std::size_t> offsets;
    offsets.reserve(static_cast<std::size_t>(targetSize) * static_cast<std::size_t>(repeats));
    for (int i = 0; i < targetSize * repeats; ++i) {
        offsets.push_back(static_cast<std::size_t>(i % targetSize * ratio) * step);
    }
    return offsets;
}

void ScaleRow(const unsigned char* source, const std::vector<std::size_t>& columns,
              unsigned char* target) {
    for (const std::size_t column : columns) {
        std::memcpy(target, source + column, targetPixel);
        target += targetPixel;
    }
}

/// A source row is scaled once; its repeats are copies of the target row above.
void ScaleRows(const PicClass& pic, const ScaledCopy::Size& size, unsigned char* target) {
    const std::vector<std::size_t> columns =
        SourceOffsets(pic.grX, size.width, size.columns, bytesPerPixel);
    const std::vector<std::size_t> rows =
        SourceOffsets(pic.grY, size.height, size.rows, static_cast<std::size_t>(pic.RowBytes()));
    const std::size_t rowBytes = columns.size() * targetPixel;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        unsigned char* const line = target + row * rowBytes;
        if (row > 0 && rows[row] == rows[row - 1]) {
            std::memcpy(line, line - rowBytes, rowBytes);
        } else {
            ScaleRow(pic.Base() + rows[row], columns, line);
        }
    }
}

hostapi::PSPixelMap MapOf(int width, int height, void* base) {
    hostapi::PSPixelMap map{};
    map.version = 1;
    map.bounds = {0, 0, height, width};
    map.imageMode = hostapi::imageModeRGB;
    map.rowBytes = width * targetPixel;
    map.colBytes = targetPixel;
    map.planeBytes = 1;
    map.baseAddr = base;
    return map;
}

}  // namespace

void ScaledCopy::Discard() {
    map = {};
}

void ScaledCopy::Free() {
    Discard();
    buffer.Free();
}

bool ScaledCopy::Make(const PicClass& pic, const Size& size) {
    const int width = size.width * size.columns;
    const int height = size.height * size.rows;
    if (map.bounds.right == width && map.bounds.bottom == height) {
        return true;
    }
    Discard();
    if (!Allocate(width, height)) {
        Free();
        return false;
    }
    try {
        ScaleRows(pic, size, static_cast<unsigned char*>(map.baseAddr));
    } catch (const std::bad_alloc&) {
        Discard();
        return false;
    }
    return true;
}

bool ScaledCopy::Allocate(int width, int height) {
    const std::int64_t size = std::int64_t{width} * height * targetPixel + slack;
    if (size > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    if (buffer.Size() > size) {
        buffer.Free();
    }
    if (buffer.Allocate(static_cast<std::int32_t>(size)) != hostapi::noErr) {
        return false;
    }
    void* const pixels = buffer.Lock(false);
    if (pixels == nullptr) {
        return false;
    }
    map = MapOf(width, height, pixels);
    return true;
}
