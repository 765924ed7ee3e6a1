#include "paint/kernels/TwirlTorus.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

/// Columns that a copy has before and after the tile's.
constexpr int edges = 2;

std::size_t CopySize(const PicClass& tile) {
    return static_cast<std::size_t>(tile.grX + edges) * static_cast<std::size_t>(tile.grY + 1);
}

void CopyPixels(const void* source, int count, void* target) {
    if (count > 0) {
        std::memcpy(target, source, static_cast<std::size_t>(count) * bytesPerPixel);
    }
}

}  // namespace

bool TwirlTorus::Fits(const PicClass& tile, int radius) {
    return 2 * radius <= std::min(tile.grX, tile.grY) &&
           std::max(tile.grX, tile.grY) <= TwirlPlanes::sideLimit;
}

TwirlTorus::TwirlTorus(const PicClass& tile)
    : columns(tile.grX),
      rows(tile.grY),
      pitch(columns + edges),
      first(CopySize(tile)),
      second(CopySize(tile)) {
    if (Failed()) {
        return;
    }
    from = first.Values() + 1;
    to = second.Values() + 1;
    for (int y = 0; y < rows; ++y) {
        const void* const pixels = tile.PixelAddress(0, static_cast<short>(y));
        CopyPixels(pixels, columns, Row(from, y));
        CopyPixels(pixels, columns, Row(to, y));
    }
    RepeatEdges(from);
}

void TwirlTorus::Twirl(const TwirlDisc& disc, int cx, int cy) {
    const Written next = {&disc, cx, cy};
    CopyRest(next);
    const int radius = disc.Radius();
    disc.Write({from, to, pitch, columns, rows, WrapOnce(cx - radius, columns),
                WrapOnce(cy - radius, rows), radius, cx, cy});
    Row(to, cy)[cx] = Row(from, cy)[cx];
    RepeatEdges(to);
    std::swap(from, to);
    last = next;
}

void TwirlTorus::CopyTo(PicClass& tile) const {
    for (int y = 0; y < rows; ++y) {
        CopyPixels(Row(from, y), columns, tile.PixelAddress(0, static_cast<short>(y)));
    }
}

/// The pixels of row y that a twirl writes.
TwirlTorus::Span TwirlTorus::SpanOf(const Written& written, int y) const {
    if (written.disc == nullptr) {
        return {0, 0};
    }
    const int radius = written.disc->Radius();
    const int dy = WrapOnce(y - written.cy + radius, rows) - radius;
    if (std::abs(dy) >= radius) {
        return {0, 0};
    }
    const int halfWidth = written.disc->HalfWidth(dy);
    return {WrapOnce(written.cx - halfWidth, columns), 2 * halfWidth + 1};
}

/// Both copies are the same but for what the last twirl has written. Of that, or of all that the
/// next one does not write, the less is copied.
void TwirlTorus::CopyRest(const Written& next) {
    for (int y = 0; y < rows; ++y) {
        const Span written = SpanOf(last, y);
        const Span overwritten = SpanOf(next, y);
        const int rest = columns - overwritten.count;
        if (rest < written.count) {
            CopyAround(y, {WrapOnce(overwritten.first + overwritten.count, columns), rest});
        } else {
            CopyAround(y, written);
        }
    }
}

void TwirlTorus::CopyAround(int y, Span span) {
    const Pixel* const source = Row(from, y);
    Pixel* const target = Row(to, y);
    const int before = std::min(span.count, columns - span.first);
    CopyPixels(source + span.first, before, target + span.first);
    CopyPixels(source, span.count - before, target);
}

void TwirlTorus::RepeatEdges(Pixel* start) const {
    for (int y = 0; y < rows; ++y) {
        Pixel* const row = Row(start, y);
        row[-1] = row[columns - 1];
        row[columns] = row[0];
    }
    CopyPixels(Row(start, 0) - 1, pitch, Row(start, rows) - 1);
}
