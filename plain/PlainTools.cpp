#include "plain/PlainTools.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "raster/Truncation.h"

using hostapi::Point;

namespace {

/// Red, green or blue as the raster takes it.
unsigned char ChannelOf(const RGBColor16& color, int channel) {
    const std::uint16_t components[3] = {color.red, color.green, color.blue};
    return static_cast<unsigned char>(components[channel] >> 8);
}

short Low16(int value) {
    return static_cast<short>(value);
}

void PlainStampBrush(PaintClass& pic, const PlainBrush& brush, const RGBColor16& color, int size,
                     double x, double y) {
    const int h = size / 2;
    const double liftedX = pic.grX + x;
    const double liftedY = pic.grY + y;
    for (int dy = -h, c = 0; dy <= h - 1; ++dy, ++c) {
        for (int dx = -h, r = 0; dx <= h - 1; ++dx, ++r) {
            const short px = TruncateToShort(dx + liftedX);
            const short py = TruncateToShort(dy + liftedY);
            const unsigned char m = brush.coverage[r][c];
            if (pic.GetAlphaWrapped(px, py) >= m) {
                continue;
            }
            const unsigned char* before = pic.clone->PixelAddressWrapped(px, py);
            unsigned char* target = pic.PixelAddressWrapped(px, py);
            for (int i = 0; i < 3; ++i) {
                target[i] = static_cast<unsigned char>(before[i] * (255 - m) / 255 +
                                                       ChannelOf(color, i) * m / 255);
            }
            target[3] = m;
        }
    }
}

void PlainStampClone(PaintClass& pic, double x, double y) {
    const int h = pic.stampSize / 2;
    const double liftedX = pic.grX + x;
    const double liftedY = pic.grY + y;
    for (int v = static_cast<int>(liftedY - h); v < liftedY + h; ++v) {
        for (int u = static_cast<int>(liftedX - h); u < liftedX + h; ++u) {
            const double d =
                std::sqrt((liftedX - u) * (liftedX - u) + (liftedY - v) * (liftedY - v));
            const double t = 256.0 * d / h;
            unsigned char* p = pic.PixelAddressWrapped(Low16(u), Low16(v));
            if (!(t < p[3])) {
                continue;
            }
            p[3] = static_cast<unsigned char>(t);
            const double a = t * 0.00390625;
            const unsigned char* c = pic.clone->PixelAddressWrapped(Low16(u), Low16(v));
            const unsigned char* s =
                pic.PixelAddressWrapped(Low16(u + pic.stampOffsetH), Low16(v + pic.stampOffsetV));
            for (int i = 0; i < 3; ++i) {
                p[i] = static_cast<unsigned char>(s[i] * (1.0 - a) + c[i] * a);
            }
        }
    }
}

/// A path of one point is the segment from it to itself.
template <typename Segment>
void ForEachSegment(const std::vector<Point>& path, Segment segment) {
    for (std::size_t i = 0; i == 0 || i + 1 < path.size(); ++i) {
        segment(path[i], path[std::min(i + 1, path.size() - 1)]);
    }
}

void PaintCovered(PaintClass& pic, const PlainBrush& brush, const RGBColor16& color, int size,
                  const std::vector<Point>& path) {
    pic.GetClone();
    pic.SetAllAlpha(0);
    pic.CopyToClone();
    ForEachSegment(path, [&](Point from, Point to) {
        for (const PlainPosition& position : PlainWalk(from, to)) {
            PlainStampBrush(pic, brush, color, size, position.x, position.y);
        }
    });
}

void PlainPlot(PaintClass& pic, short x, short y) {
    unsigned char* pixel = pic.PixelAddressWrapped(x, y);
    for (int i = 0; i < 3; ++i) {
        pixel[i] = ChannelOf(*pic.foreColor, i);
    }
    pixel[3] = 0;
}

bool IsOutside(const PaintClass& pic, int x, int y) {
    return pic.GetAlphaWrapped(Low16(x), Low16(y)) == 255;
}

void PlainContourPixel(PaintClass& pic, short x, short y) {
    int outside = 0;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            outside += (dx != 0 || dy != 0) && IsOutside(pic, x + dx, y + dy) ? 1 : 0;
        }
    }
    if (outside == 0) {
        return;
    }
    for (int i = 0; i < 3; ++i) {
        const auto at = [&](int dx, int dy) {
            return pic.PixelAddressWrapped(Low16(x + dx), Low16(y + dy))[i];
        };
        const double value = 0.17 * (at(0, -1) + at(-1, 0) + at(1, 0) + at(0, 1)) +
                             0.08 * (at(-1, -1) + at(1, -1) + at(-1, 1) + at(1, 1));
        pic.PixelAddress(x, y)[i] = static_cast<unsigned char>(TruncateToShort(value));
    }
}

}  // namespace

PlainBrush PlainRoundBrush(int size) {
    PlainBrush brush{};
    const int h = size / 2;
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j) {
            const double d = std::sqrt((i - h) * (i - h) + (j - h) * (j - h)) - h;
            double v = 0.0;
            if (!(d > 0.0)) {
                v = -(d / h) * 300.0;
                v = v < 255.0 ? v : 255.0;
            }
            brush.coverage[i][j] = static_cast<unsigned char>(v);
        }
    }
    return brush;
}

PlainBrush PlainSquareBrush(int size) {
    PlainBrush brush{};
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j) {
            brush.coverage[i][j] = i == 0 || i == size - 1 || j == 0 || j == size - 1 ? 127 : 255;
        }
    }
    return brush;
}

std::vector<PlainPosition> PlainWalk(Point from, Point to) {
    const double dx = to.h - from.h;
    const double dy = to.v - from.v;
    const short n = TruncateToShort(std::sqrt(dx * dx + dy * dy));
    if (n == 0) {
        return {{static_cast<double>(from.h), static_cast<double>(from.v)}};
    }
    std::vector<PlainPosition> positions;
    for (int i = 0; i <= n; ++i) {
        positions.push_back({from.h + i * (dx / n), from.v + i * (dy / n)});
    }
    return positions;
}

std::vector<PlainPosition> PlainTrace(Point from, Point to) {
    int dx = to.h - from.h;
    int dy = to.v - from.v;
    const int quadrant = (dx > 0 ? 0 : 2) + (dy > 0 ? 0 : 1);
    dx = std::abs(dx);
    dy = std::abs(dy);
    const bool isFlat = dx > dy;
    const int major = isFlat ? dx : dy;
    const int minor = isFlat ? dy : dx;
    int e = 2 * minor - major;
    int i = 0;
    int j = 0;
    std::vector<PlainPosition> positions = {
        {static_cast<double>(from.h), static_cast<double>(from.v)}};
    while (i < major) {
        int step = minor;
        if (e > 0) {
            j += 1;
            step = minor - major;
        }
        i += 1;
        e += 2 * step;
        int ox = isFlat ? i : j;
        int oy = isFlat ? j : i;
        if (quadrant == 1 || quadrant == 3) {
            oy = -oy;
        }
        if (quadrant == 2 || quadrant == 3) {
            ox = -ox;
        }
        positions.push_back({static_cast<double>(from.h + ox), static_cast<double>(from.v + oy)});
    }
    return positions;
}

void PlainBrushStroke(PaintClass& pic, const std::vector<Point>& path) {
    PaintCovered(pic, PlainRoundBrush(pic.brushSize), *pic.foreColor, pic.brushSize, path);
}

void PlainEraserStroke(PaintClass& pic, const std::vector<Point>& path) {
    PaintCovered(pic, PlainSquareBrush(14), *pic.backColor, 14, path);
}

void PlainPencilStroke(PaintClass& pic, const std::vector<Point>& path) {
    ForEachSegment(path, [&](Point from, Point to) {
        for (const PlainPosition& position : PlainTrace(from, to)) {
            PlainPlot(pic, static_cast<short>(position.x), static_cast<short>(position.y));
        }
    });
}

void PlainStampStroke(PaintClass& pic, const std::vector<Point>& path) {
    pic.GetClone();
    pic.SetAllAlpha(255);
    pic.CopyToClone();
    ForEachSegment(path, [&](Point from, Point to) {
        for (const PlainPosition& position : PlainWalk(from, to)) {
            PlainStampClone(pic, position.x, position.y);
        }
    });
}

void PlainFloodFill(PaintClass& pic, Point start) {
    pic.SetAllAlpha(255);
    const auto threshold = static_cast<short>(pic.fillTolerance * 255 / 100);
    unsigned char seed[3];
    std::copy_n(pic.PixelAddressWrapped(start.h, start.v), 3, seed);
    PlainPlot(pic, start.h, start.v);
    std::vector<Point> queue = {start};
    for (std::size_t next = 0; next < queue.size(); ++next) {
        const Point place = queue[next];
        const int steps[4][2] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
        for (const auto& [dx, dy] : steps) {
            const short x = Low16(place.h + dx);
            const short y = Low16(place.v + dy);
            const unsigned char* pixel = pic.PixelAddressWrapped(x, y);
            const int difference = std::abs(pixel[0] - seed[0]) + std::abs(pixel[1] - seed[1]) +
                                   std::abs(pixel[2] - seed[2]);
            if (difference <= threshold && pixel[3] == 255) {
                PlainPlot(pic, x, y);
                queue.push_back({.v = y, .h = x});
            }
        }
    }
    if (pic.fillAntiAlias != 1) {
        return;
    }
    for (short y = 0; y < pic.grY; ++y) {
        for (short x = 0; x < pic.grX; ++x) {
            if (!IsOutside(pic, x, y)) {
                PlainContourPixel(pic, x, y);
            }
        }
    }
}

void PlainGradient(PaintClass& pic, Point from, Point to) {
    const bool isDown = from.h == to.h;
    const int begin = isDown ? from.v : from.h;
    const int end = isDown ? to.v : to.h;
    const RGBColor16& c0 = end < begin ? *pic.backColor : *pic.foreColor;
    const RGBColor16& c1 = end < begin ? *pic.foreColor : *pic.backColor;
    const int span = std::abs(end - begin);
    const auto mix = [](std::uint16_t a, std::uint16_t b, double f) {
        return static_cast<unsigned char>(
            static_cast<std::uint16_t>(TruncateToShort(a + (b - a) * f)) >> 8);
    };
    double t = 0.0;
    for (int p = std::min(begin, end); p < std::max(begin, end); ++p, t += 1.0) {
        const double f = t / span;
        for (int other = 0; other < (isDown ? pic.grX : pic.grY); ++other) {
            unsigned char* pixel = isDown ? pic.PixelAddressWrapped(Low16(other), Low16(p))
                                          : pic.PixelAddressWrapped(Low16(p), Low16(other));
            pixel[0] = mix(c0.red, c1.red, f);
            pixel[1] = mix(c0.green, c1.green, f);
            pixel[2] = mix(c0.blue, c1.blue, f);
        }
    }
}
