#include "paint/kernels/ShapeScan.h"

#include <algorithm>
#include <cmath>

#include "paint/PaintClass.h"
#include "paint/math/EffectMath.h"
#include "raster/Truncation.h"

namespace {

using Geometry = ShapeScan::Geometry;

/// Result of the fast path where it cannot decide.
constexpr double undecided = -1.0;

/// A radius that includes all 16-bit coordinates.
constexpr double unlimited = 1e6;

/// More than the two paths can differ at any 16-bit coordinates, in pixels: their bound there, the
/// slack of ShapeScan::Place at a distance of 2^17, is 1.8e-4.
constexpr double reachSlack = 1e-3;

/// The squares of smaller half heights underflow to 0, and with them the distances in a circle.
constexpr double vanishing = 1e-100;

/// Real numbers, both ends included; none if `low` is above `high`.
struct Span {
    double low;
    double high;
};

Span Common(const Span& a, const Span& b) {
    return {std::max(a.low, b.low), std::min(a.high, b.high)};
}

/// `factor` times all from `first` to `last`.
Span Times(double factor, double first, double last) {
    const double a = factor * first;
    const double b = factor * last;
    return {std::min(a, b), std::max(a, b)};
}

/// Includes all t for which |slope * t + rest| is at most `limit` with some of `rests`. Slopes are
/// sines of whole degrees: those below 0.001 are 0 but for their roundings, and tell nothing.
Span Solutions(double slope, const Span& rests, double limit) {
    if (std::fabs(slope) < 0.001) {
        return {-unlimited, unlimited};
    }
    const double a = (-limit - rests.high) / slope;
    const double b = (limit - rests.low) / slope;
    return {std::min(a, b), std::max(a, b)};
}

/// Clips `range` to the whole numbers of `span`, and one more on each side: the span's own
/// roundings are far below that.
ShapeScan::Range ClippedTo(const Span& span, ShapeScan::Range range) {
    const Span near = Common(span, {-unlimited, unlimited});
    if (!(near.low <= near.high)) {
        return {range.first, range.first};
    }
    return {std::max(range.first, static_cast<int>(std::floor(near.low))),
            std::min(range.end, static_cast<int>(std::floor(near.high)) + 2)};
}

/// The step of a height, of which 0 to 255 lies in the rounded edge, or `undecided` if it is too
/// near to the next one. Plus 1, so that truncation rounds down.
double StepOf(double height, double tolerance) {
    const double step = std::min(std::max(height + 1.0, 0.5), 256.5);
    const double rest = step - static_cast<std::int32_t>(step);
    const bool isNear = (rest < tolerance) | (rest > 1.0 - tolerance);
    return isNear ? undecided : step;
}

double StepOfRound(const Geometry& shape, double x, double y) {
    const double across = x * shape.ratio;
    const double distance = std::sqrt(across * across + y * y);
    return StepOf(255.0 - (shape.vs - distance) * shape.steepness, shape.tolerance);
}

/// How deep a coordinate lies in the band of the low side or, failing that, of the high side;
/// below 0 in neither. `overlap` is by how much a band is wider than half the shape.
double DepthInBand(double at, double overlap) {
    return at < overlap ? overlap - at : at + overlap;
}

double StepOfSquare(const Geometry& shape, double x, double y) {
    const double overlapX = shape.bevel - shape.hs;
    const double overlapY = shape.bevel - shape.vs;
    const double depth = std::max(DepthInBand(x, overlapX), DepthInBand(y, overlapY));
    const double outside = std::max(std::fabs(x) - shape.hs, std::fabs(y) - shape.vs);
    const double step = outside >= 0 ? 256.5 : StepOf(depth * shape.steepness, shape.tolerance);
    const bool isNear = (std::fabs(outside) < shape.slack) |
                        (std::fabs(x - overlapX) < shape.slack) |
                        (std::fabs(y - overlapY) < shape.slack);
    return isNear ? undecided : step;
}

/// The steps of a row's pixels from the column `dx` of the centre on, or -1 where it is not
/// decided.
template <double (*stepAt)(const Geometry&, double, double)>
void FindSteps(const Geometry& shape, double dx, double dy, std::int32_t* steps, int count) {
    const double rowX = -shape.sine * dy;
    const double rowY = shape.cosine * dy;
    for (int i = 0; i < count; ++i) {
        const double column = dx + i;
        const double x = shape.cosine * column + rowX;
        const double y = shape.sine * column + rowY;
        steps[i] = static_cast<std::int32_t>(stepAt(shape, x, y));
    }
}

/// The height of the middle of a shape.
unsigned char TopOf(std::int32_t kind) {
    return kind == shapeRing ? ShapeScan::ground : 0;
}

/// The height at a step of the rounded edge, 0 inside to 255 at the rim.
unsigned char EdgeHeight(std::int32_t kind, int step) {
    if (kind == shapeRing) {
        // Highest in the middle of the edge.
        const int up = step < 128 ? 255 - step : step;
        return CosineProfile(static_cast<unsigned char>(up * 2));
    }
    return CosineProfile(static_cast<unsigned char>(step));
}

unsigned char CircleHeight(std::int32_t kind, double distance, double vs, double bevel) {
    // Not a number for a circle without width: outside.
    if (!(distance < vs)) {
        return ShapeScan::ground;
    }
    if (vs - distance <= bevel) {
        const double step = 255.0 - ((vs - distance) / bevel) * 255.0;
        return EdgeHeight(kind, static_cast<unsigned char>(TruncateToShort(step)));
    }
    return TopOf(kind);
}

struct Square {
    double left;
    double right;
    double top;
    double bottom;
    double bevel;
};

/// In the rounded edge of a square. The two ways to form a quotient give different last bits, and
/// in the corners to the left both directions take the one of the left side.
double SquareBand(const Square& square, double x, double y) {
    const double bevel = square.bevel;
    const bool inLeft = x < square.left + bevel;
    double band = 0.0;
    if (inLeft) {
        band = (square.left + bevel - x) * 255.0 / bevel;
    } else if (x >= square.right - bevel) {
        band = (x - (square.right - bevel)) / bevel * 255.0;
    }
    double depth;
    if (y < square.top + bevel) {
        depth = square.top + bevel - y;
    } else if (y >= square.bottom - bevel) {
        depth = y - (square.bottom - bevel);
    } else {
        return band;
    }
    return std::max(band, inLeft ? depth * 255.0 / bevel : depth / bevel * 255.0);
}

unsigned char SquareHeight(const Square& square, double x, double y) {
    if (!(square.left < x && x < square.right && square.top < y && y < square.bottom)) {
        return ShapeScan::ground;
    }
    const double bevel = square.bevel;
    if (square.left + bevel <= x && x < square.right - bevel && square.top + bevel <= y &&
        y < square.bottom - bevel) {
        return 0;
    }
    return CosineProfile(static_cast<unsigned char>(TruncateToShort(SquareBand(square, x, y))));
}

}  // namespace

void PaintClass::RotateAboutCentre(short cx, short cy, short px, short py, double angle, double* x,
                                   double* y) {
    const double dx = cx - px;
    const double dy = cy - py;
    const double distance = std::sqrt(dx * dx + dy * dy);
    double phi = ExactAcos(dx / distance);
    if (cy < py) {
        phi = -phi;
    }
    const SinCos turned = ExactSinCos(DegreesToRadians(TruncateToShort(angle)) + phi);
    *x = cx - turned.cos * distance;
    *y = cy - turned.sin * distance;
}

bool PaintClass::ShapeCoverage(std::int32_t kind, double x, double y, short cx, short cy, double hs,
                               double vs, double bevel, unsigned char* value) {
    *value = ShapeScan::ground;
    if (kind == shapeSquare) {
        *value = SquareHeight({cx - hs, cx + hs, cy - vs, cy + vs, bevel}, x, y);
    } else if (kind == shapeCircle || kind == shapeRing) {
        const double ratio = vs / hs;
        const double down = cy - y;
        const double across = (cx - x) * ratio;
        *value = CircleHeight(kind, std::sqrt(down * down + across * across), vs, bevel);
    }
    return *value != ShapeScan::ground;
}

ShapeScan::ShapeScan(std::int32_t newKind, double newBevel, double newTurn)
    : kind(newKind), bevel(newBevel), turn(newTurn) {
    const SinCos turned = ExactSinCos(DegreesToRadians(TruncateToShort(turn)));
    geometry.sine = turned.sin;
    geometry.cosine = turned.cos;
    // Without an edge the steps stand for nothing but the outline.
    const bool hasEdge = bevel > 0.0;
    geometry.bevel = hasEdge ? bevel : 0.0;
    geometry.steepness = hasEdge ? 255.0 / bevel : 1.0;
    heightOfStep[0] = TopOf(kind);
    for (int step = 0; step < 255; ++step) {
        heightOfStep[step + 1] = hasEdge ? EdgeHeight(kind, step) : TopOf(kind);
    }
    heightOfStep[256] = ground;
}

bool ShapeScan::MayHavePixels() const {
    switch (kind) {
        case shapeSquare:
            return hs > 0.0 && vs > 0.0;
        case shapeCircle:
        case shapeRing:
            return hs != 0.0 && vs > 0.0;
        default:
            return false;
    }
}

void ShapeScan::Place(short newCx, short newCy, double newHs, double newVs) {
    cx = newCx;
    cy = newCy;
    hs = newHs;
    vs = newVs;
    isEmpty = !MayHavePixels();
    if (isEmpty) {
        return;
    }
    const bool isSquare = kind == shapeSquare;
    const double size = isSquare ? std::sqrt(hs * hs + vs * vs) : std::max(std::fabs(hs), vs);
    geometry.hs = hs;
    geometry.vs = vs;
    geometry.ratio = vs / hs;
    geometry.slack = 1e-14 * (size + 100.0) * (size + 100.0);
    const double stretch = isSquare ? 1.0 : std::max(1.0, std::fabs(geometry.ratio));
    geometry.tolerance = geometry.steepness * stretch * geometry.slack + 1e-9;
    onlyDear = !(geometry.tolerance < 0.25) || vs < vanishing;
    LimitReach(size);
}

/// The exact path moves a pixel by far less than `reachSlack` against its place on the shape's
/// axes, so what lies further outside is not part of the shape.
void ShapeScan::LimitReach(double size) {
    const bool isVanishing = kind != shapeSquare && vs < vanishing;
    halfWidth = isVanishing ? unlimited : std::fabs(hs) + reachSlack;
    halfHeight = vs + reachSlack;
    // One pixel more than the size: further than the two paths can differ.
    radius = isVanishing ? unlimited : size + 1.0;
}

ShapeScan::Range ShapeScan::ReachAcross(Range columns) const {
    if (isEmpty) {
        return {columns.first, columns.first};
    }
    const double half =
        std::fabs(geometry.cosine) * halfWidth + std::fabs(geometry.sine) * halfHeight;
    return ClippedTo({cx - half, cx + half}, columns);
}

ShapeScan::Range ShapeScan::ReachDown(Range columns, Range rows) const {
    const double half =
        std::fabs(geometry.sine) * halfWidth + std::fabs(geometry.cosine) * halfHeight;
    const double left = columns.first - cx;
    const double right = columns.end - 1 - cx;
    const Span box{-half, half};
    const Span wide = Solutions(-geometry.sine, Times(geometry.cosine, left, right), halfWidth);
    const Span high = Solutions(geometry.cosine, Times(geometry.sine, left, right), halfHeight);
    const Span all = Common(box, Common(wide, high));
    return ClippedTo({cy + all.low, cy + all.high}, rows);
}

ShapeScan::Range ShapeScan::Reach(int py, Range columns) const {
    const double dy = py - cy;
    const double square = radius * radius - dy * dy;
    if (isEmpty || square < 0.0) {
        return {columns.first, columns.first};
    }
    const double half = std::sqrt(square) + 1.0;
    const Span circle{-half, half};
    const Span wide = Solutions(geometry.cosine, Times(-geometry.sine, dy, dy), halfWidth);
    const Span high = Solutions(geometry.sine, Times(geometry.cosine, dy, dy), halfHeight);
    const Span all = Common(circle, Common(wide, high));
    return ClippedTo({cx + all.low, cx + all.high}, columns);
}

unsigned char ShapeScan::HeightOf(int px, int py) const {
    double x;
    double y;
    PaintClass::RotateAboutCentre(cx, cy, static_cast<short>(px), static_cast<short>(py), turn, &x,
                                  &y);
    unsigned char height;
    PaintClass::ShapeCoverage(kind, x, y, cx, cy, hs, vs, bevel, &height);
    return height;
}

void ShapeScan::Read(int px, int py, int count, unsigned char* heights) const {
    std::int32_t steps[longestRun];
    if (onlyDear) {
        std::fill_n(steps, count, -1);
    } else if (kind == shapeSquare) {
        FindSteps<StepOfSquare>(geometry, px - cx, py - cy, steps, count);
    } else {
        FindSteps<StepOfRound>(geometry, px - cx, py - cy, steps, count);
    }
    for (int i = 0; i < count; ++i) {
        heights[i] = steps[i] >= 0 ? heightOfStep[steps[i]] : HeightOf(px + i, py);
    }
    if (py == cy && px <= cx && cx < px + count) {
        heights[cx - px] = ground;
    }
}
