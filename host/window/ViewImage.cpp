#include "host/window/ViewImage.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/Rectangles.h"

namespace host {

namespace {

// Around the picture, and the two shades of the ground under a transparent one.
constexpr int surround = 0x90;
constexpr int lightSquare = 255;
constexpr int darkSquare = 204;
constexpr int squareSide = 8;
constexpr int dashLength = 4;

using Color = std::array<int, 3>;  // Red, green, blue.

std::uint8_t* PixelAt(DisplayRows& rows, int x, int y) {
    return rows.bytes.data() + static_cast<std::size_t>(y) * rows.RowBytes() +
           static_cast<std::size_t>(x) * 3;
}

void Put(std::uint8_t* target, const Color& color) {
    target[0] = static_cast<std::uint8_t>(color[2]);
    target[1] = static_cast<std::uint8_t>(color[1]);
    target[2] = static_cast<std::uint8_t>(color[0]);
}

int Ground(int x, int y) {
    return ((x / squareSide) + (y / squareSide)) % 2 == 0 ? lightSquare : darkSquare;
}

// The pixel as it looks on its ground; (x, y) are view pixels from the picture's corner.
Color OnGround(const std::uint8_t* pixel, int planes, int x, int y) {
    Color color{pixel[0], pixel[1], pixel[2]};
    if (planes == 4 && pixel[3] != 255) {
        const int ground = Ground(x, y) * (255 - pixel[3]);
        for (int& component : color) {
            component = (component * pixel[3] + ground + 127) / 255;
        }
    }
    return color;
}

// The mean of the four pixels at the quarter points of a square with this side.
Color MeanOfSquare(const Picture& picture, int left, int top, int side, int x, int y) {
    Color sum{};
    for (int corner = 0; corner < 4; ++corner) {
        const int column = left + (corner % 2 == 0 ? side / 4 : side * 3 / 4);
        const int row = top + (corner / 2 == 0 ? side / 4 : side * 3 / 4);
        const Color color = OnGround(
            picture.Pixel(std::min(column, picture.width - 1), std::min(row, picture.height - 1)),
            picture.planes, x, y);
        for (std::size_t i = 0; i < sum.size(); ++i) {
            sum[i] += color[i];
        }
    }
    for (int& component : sum) {
        component = (component + 2) / 4;
    }
    return sum;
}

// (x, y) are view pixels from the picture's corner, inside the zoomed picture.
Color ViewPixel(const Picture& picture, int zoom, int x, int y) {
    if (zoom >= 0) {
        return OnGround(picture.Pixel(x >> zoom, y >> zoom), picture.planes, x, y);
    }
    return MeanOfSquare(picture, x << -zoom, y << -zoom, 1 << -zoom, x, y);
}

// The outline of what is selected inside `bounds`, where `isInside` tells it of each pixel of the
// picture. A view pixel that is selected and has a neighbour that isn't belongs to the outline.
// Each view pixel is looked up once: three rows are kept, with a column more on either side.
template <typename IsInside>
void DrawOutlineOf(DisplayRows& rows, Place leftTop, const Viewport& viewport,
                   const hostapi::VRect& bounds, int phase, IsInside isInside) {
    const hostapi::VRect shown =
        Intersect(viewport.ToView(bounds),
                  {leftTop.y, leftTop.x, leftTop.y + rows.height, leftTop.x + rows.width});
    if (IsEmpty(shown)) {
        return;
    }
    std::vector<int> columns;
    for (int x = shown.left - 1; x <= shown.right; ++x) {
        columns.push_back(viewport.ToPicture({x, 0}).x);
    }
    using Row = std::vector<char>;
    auto look = [&](int y) {
        Row row(columns.size());
        const int pictureRow = viewport.ToPicture({0, y}).y;
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] = isInside(columns[i], pictureRow);
        }
        return row;
    };
    Row above = look(shown.top - 1);
    Row current = look(shown.top);
    for (int y = shown.top; y < shown.bottom; ++y) {
        Row below = look(y + 1);
        for (std::size_t i = 1; i + 1 < current.size(); ++i) {
            if (!current[i] || (current[i - 1] && current[i + 1] && above[i] && below[i])) {
                continue;
            }
            const int x = shown.left - 1 + static_cast<int>(i);
            const bool isWhite = (x + y + phase) / dashLength % 2 == 0;
            const int shade = isWhite ? 255 : 0;
            Put(PixelAt(rows, x - leftTop.x, y - leftTop.y), {shade, shade, shade});
        }
        above = std::exchange(current, std::move(below));
    }
}

}  // namespace

DisplayRows DrawView(const Picture& picture, const Viewport& viewport, const hostapi::VRect& area) {
    DisplayRows rows{Width(area), Height(area), {}};
    rows.bytes.assign(rows.RowBytes() * static_cast<std::size_t>(rows.height), surround);
    const Place origin = viewport.Origin();
    const Size zoomed = viewport.Zoomed();
    const hostapi::VRect shown =
        Intersect(area, {origin.y, origin.x, origin.y + zoomed.height, origin.x + zoomed.width});
    for (int y = shown.top; y < shown.bottom; ++y) {
        for (int x = shown.left; x < shown.right; ++x) {
            Put(PixelAt(rows, x - area.left, y - area.top),
                ViewPixel(picture, viewport.Zoom(), x - origin.x, y - origin.y));
        }
    }
    return rows;
}

void DrawOutline(DisplayRows& rows, Place leftTop, const Viewport& viewport,
                 const Selection& selection, int phase) {
    DrawOutlineOf(rows, leftTop, viewport, selection.bounds, phase,
                  [&](int x, int y) { return selection.Coverage(x, y) >= 128; });
}

void DrawOutline(DisplayRows& rows, Place leftTop, const Viewport& viewport,
                 const DraggedSelection& selection, int phase) {
    DrawOutlineOf(rows, leftTop, viewport, selection.bounds, phase,
                  [&](int x, int y) { return selection.Contains(x, y); });
}

}  // namespace host
