#include "editor/ScaledCopy.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

#include "base/Rectangles.h"
#include "base/TryMake.h"
#include "hostapi/Results.h"

namespace {

constexpr int targetPixel = 3;
/// Bytes after the last pixel: hosts with a fourth plane may read one of a pixel that isn't there.
constexpr std::int64_t slack = 4;

/// Where each target pixel of a row comes from, as an offset in the source row; the same again for
/// each repeat.
class SourceOffsets {
  public:
    /// Begins with the target pixel `from`, which is -targetSize at least.
    SourceOffsets(int sourceSize, int targetSize, int from, int newCount, std::size_t step)
        : count(static_cast<std::size_t>(newCount)), offsets(TryMakeArray<std::size_t>(count)) {
        const double ratio = static_cast<double>(sourceSize) / targetSize;
        for (int i = 0; offsets && i < newCount; ++i) {
            const int inTile = (from + targetSize + i) % targetSize;
            offsets[static_cast<std::size_t>(i)] = static_cast<std::size_t>(inTile * ratio) * step;
        }
    }

    /// True if there was no memory; then there is no offset to read.
    bool Failed() const { return !offsets; }
    std::size_t operator[](std::size_t i) const { return offsets[i]; }

    const std::size_t count;

  private:
    std::unique_ptr<std::size_t[]> offsets;
};

void ScaleRow(const unsigned char* source, const SourceOffsets& columns, unsigned char* target) {
    for (std::size_t i = 0; i < columns.count; ++i, target += targetPixel) {
        std::memcpy(target, source + columns[i], targetPixel);
    }
}

/// A source row is scaled once; its repeats are copies of the target row above. False without
/// memory.
bool ScaleRows(const PicClass& pic, const ScaledCopy::Size& size, const hostapi::VRect& part,
               unsigned char* target) {
    const SourceOffsets columns(pic.grX, size.width, part.left, Width(part), bytesPerPixel);
    const SourceOffsets rows(pic.grY, size.height, part.top, Height(part),
                             static_cast<std::size_t>(pic.RowBytes()));
    if (columns.Failed() || rows.Failed()) {
        return false;
    }
    const std::size_t rowBytes = columns.count * targetPixel;
    for (std::size_t row = 0; row < rows.count; ++row) {
        unsigned char* const line = target + row * rowBytes;
        if (row > 0 && rows[row] == rows[row - 1]) {
            std::memcpy(line, line - rowBytes, rowBytes);
        } else {
            ScaleRow(pic.Base() + rows[row], columns, line);
        }
    }
    return true;
}

std::int64_t BytesOf(int width, int height) {
    return std::int64_t{width} * height * targetPixel + slack;
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
    if (buffer.Size() > BytesOf(width, height)) {
        Free();
    }
    return Fill(pic, size, {0, 0, height, width});
}

bool ScaledCopy::MakePart(const PicClass& pic, const Size& size, const hostapi::VRect& part) {
    return Fill(pic, size, part);
}

bool ScaledCopy::Fill(const PicClass& pic, const Size& size, const hostapi::VRect& part) {
    Discard();
    if (!Allocate(Width(part), Height(part))) {
        Free();
        return false;
    }
    if (!ScaleRows(pic, size, part, static_cast<unsigned char*>(map.baseAddr))) {
        Discard();
        return false;
    }
    return true;
}

bool ScaledCopy::Allocate(int width, int height) {
    const std::int64_t size = BytesOf(width, height);
    if (size > std::numeric_limits<std::int32_t>::max()) {
        return false;
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
