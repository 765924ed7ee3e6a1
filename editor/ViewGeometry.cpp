#include "editor/ViewGeometry.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "raster/Truncation.h"

namespace {

constexpr int repeatsShown = 3;
/// Tiles narrower than this are put together to pictures of at least this size.
constexpr int smallestBlock = 64;
/// The part of the view that a page of scrolling keeps in it.
constexpr int pageOverlap = 64;
/// The size marks' distance from the corner and their length, in texture pixels on a screen of 96
/// dots an inch.
constexpr double markGap = 8.0;
constexpr double markLength = 16.0;

// The ends are where the steps stop: what lies beyond 4.0 is left out on purpose.
constexpr std::array zoomLadder = {0.25, 0.33, 0.5, 0.75, 1.0, 1.5, 2.0, 3.0, 4.0};

/// The factor `step` places further; the same one beside the ladder or at its end.
double OnLadder(double zoom, std::ptrdiff_t step) {
    const auto found = std::find(zoomLadder.begin(), zoomLadder.end(), zoom);
    if (found == zoomLadder.end()) {
        return zoom;
    }
    const std::ptrdiff_t place = found - zoomLadder.begin() + step;
    const bool exists = place >= 0 && place < static_cast<std::ptrdiff_t>(zoomLadder.size());
    return exists ? zoomLadder[static_cast<std::size_t>(place)] : zoom;
}

int Truncated(double value) {
    return static_cast<int>(value);
}

/// So many texture pixels of a size mark on the screen.
int MarkPixels(double texturePixels, double zoom, ScreenScale scale) {
    return Truncated(zoom * texturePixels * scale.resolution / plainResolution);
}

}  // namespace

double ZoomedIn(double zoom) {
    return OnLadder(zoom, 1);
}

double ZoomedOut(double zoom) {
    return OnLadder(zoom, -1);
}

hostapi::Rect ViewRect(const hostapi::Rect& item, ScreenScale scale) {
    const int frame = scale.Pixels(viewFrameWidth);
    const int bar = scale.Pixels(scrollBarWidth);
    return {static_cast<short>(item.top + frame), static_cast<short>(item.left + frame),
            static_cast<short>(item.bottom - frame - bar),
            static_cast<short>(item.right - frame - bar)};
}

int ViewAxis::Scaled() const {
    return Truncated(tile * zoom);
}

int ViewAxis::Image() const {
    return mode == viewDrawing ? Truncated(tile * zoom * repeatsShown) : Scaled();
}

int ViewAxis::Origin() const {
    const bool centred = mode == viewDrawing && view > Image();
    return centred ? (view - Image()) / 2 : -scroll;
}

int ViewAxis::Block() const {
    const int scaled = Scaled();
    if (mode == viewDrawing || scaled < 1 || scaled >= smallestBlock) {
        return 1;
    }
    return (smallestBlock + scaled - 1) / scaled;
}

int ViewAxis::Repeats() const {
    if (Scaled() < 1) {
        return 0;
    }
    return mode == viewDrawing ? repeatsShown : (view + 1) / Scaled() + 1;
}

ScreenSpan ViewAxis::Showing(int from, int to) const {
    const int scaled = Scaled();
    // The pixel that shows a texture pixel first is found by doubles: it may be the next one.
    const int first = from * scaled / tile - 1;
    const int end = (to * scaled + tile - 1) / tile + 1;
    return end - first >= scaled ? ScreenSpan{0, scaled} : ScreenSpan{first, end - first};
}

std::vector<int> ViewAxis::PlacesOf(const ScreenSpan& span) const {
    std::vector<int> places;
    // From the repeat before the first on: what begins there may reach into it.
    for (int repeat = -1; repeat < Repeats(); ++repeat) {
        const int place = Origin() + repeat * Scaled() + span.from;
        if (place + span.count > std::max(Origin(), 0) &&
            place < std::min(Origin() + Repeats() * Scaled(), view)) {
            places.push_back(place);
        }
    }
    return places;
}

ScrollRange ViewAxis::Range() const {
    return {std::max(Image() - view, 0), view - pageOverlap};
}

short ViewAxis::ToTexture(int position) const {
    ViewAxis drawing = *this;
    drawing.mode = viewDrawing;
    return TruncateToShort((position - drawing.Origin()) / zoom);
}

std::vector<TilePlace> ViewGeometry::Blocks() const {
    std::vector<TilePlace> blocks;
    for (int row = 0; row < y.Repeats(); row += y.Block()) {
        for (int column = 0; column < x.Repeats(); column += x.Block()) {
            blocks.push_back({x.Origin() + column * x.Scaled(), y.Origin() + row * y.Scaled()});
        }
    }
    return blocks;
}

// The image's truncated size can be larger: no pixel keeps what it showed before.
ScreenRect ViewGeometry::Tiles() const {
    const int left = std::clamp(x.Origin(), 0, x.view);
    const int top = std::clamp(y.Origin(), 0, y.view);
    return {left, top, std::clamp(x.Origin() + x.Repeats() * x.Scaled(), left, x.view),
            std::clamp(y.Origin() + y.Repeats() * y.Scaled(), top, y.view)};
}

std::vector<ScreenRect> ViewGeometry::Strips() const {
    if (x.mode != viewDrawing) {
        return {};
    }
    const auto [left, top, right, bottom] = Tiles();
    std::vector<ScreenRect> strips = {{0, 0, left, y.view},
                                      {right, 0, x.view, y.view},
                                      {left, 0, right, top},
                                      {left, bottom, right, y.view}};
    std::erase_if(strips,
                  [](const ScreenRect& strip) { return strip.Width() < 1 || strip.Height() < 1; });
    return strips;
}

namespace {

struct Piece {
    int from;
    int to;
};

/// Tile corners in one direction of the preview, the one before the view's edge and the one after
/// it included.
int CornersShown(const ViewAxis& axis) {
    return axis.view / axis.Scaled() + 2;
}

/// A mark along a row or a column, `aside` pixels beside it.
MarkLine Along(bool row, int from, int to, int line, int aside, bool white) {
    return row ? MarkLine{from, line + aside, to, line + aside, white}
               : MarkLine{line + aside, from, line + aside, to, white};
}

/// A mark along a row or a column, of lines of this width beside each other.
void AddBlackThenWhite(std::vector<MarkLine>& lines, bool row, const Piece& piece, int line,
                       int width) {
    lines.push_back(Along(row, piece.from, piece.to, line, 0, false));
    lines.push_back(Along(row, piece.from, piece.to, line, -width, true));
    lines.push_back(Along(row, piece.from, piece.to, line, width, true));
}

/// The pieces, at every tile corner of one direction, of a line along it: `reach` to both sides of
/// the corners. Where neighbours touch they are one piece, so that tiny tiles don't give a view
/// full of lines.
std::vector<Piece> PiecesAtCorners(const ViewAxis& axis, int reach) {
    const int corners = CornersShown(axis);
    const int last = (corners - 1) * axis.Scaled();
    if (axis.Scaled() <= 2 * reach + 1) {
        return {{-axis.scroll - reach, last - axis.scroll + reach}};
    }
    std::vector<Piece> pieces;
    for (int corner = -axis.scroll; corner <= last - axis.scroll; corner += axis.Scaled()) {
        pieces.push_back({corner - reach, corner + reach});
    }
    return pieces;
}

/// The lines along the rows (or columns) through the corners of `across`, beside them.
void AddArms(std::vector<MarkLine>& lines, bool row, const std::vector<Piece>& pieces,
             const ViewAxis& across, int aside, bool white) {
    for (int corner = 0; corner < CornersShown(across); ++corner) {
        const int line = corner * across.Scaled() - across.scroll;
        for (const Piece& piece : pieces) {
            lines.push_back(Along(row, piece.from, piece.to, line, aside, white));
        }
    }
}

}  // namespace

std::vector<MarkLine> ViewGeometry::SizeMarks(ScreenScale scale) const {
    return x.mode == viewDrawing ? CropMarks(scale) : CornerCrosses(scale);
}

std::vector<MarkLine> ViewGeometry::CropMarks(ScreenScale scale) const {
    const int gap = MarkPixels(markGap, x.zoom, scale);
    const int length = MarkPixels(markLength, x.zoom, scale);
    const int width = scale.Pixels(1);
    const int left = Truncated(x.Origin() + x.tile * x.zoom);
    const int right = Truncated(left + x.tile * x.zoom);
    const int top = Truncated(y.Origin() + y.tile * y.zoom);
    const int bottom = Truncated(top + y.tile * y.zoom);
    const auto before = [&](int end) { return Piece{end - gap - length, end - gap - 1}; };
    const auto after = [&](int end) { return Piece{end + gap, end + gap + length - 1}; };
    std::vector<MarkLine> lines;
    for (const int row : {top, bottom}) {
        AddBlackThenWhite(lines, true, before(left), row, width);
        AddBlackThenWhite(lines, true, after(right), row, width);
    }
    for (const int column : {left, right}) {
        AddBlackThenWhite(lines, false, before(top), column, width);
        AddBlackThenWhite(lines, false, after(bottom), column, width);
    }
    return lines;
}

std::vector<MarkLine> ViewGeometry::CornerCrosses(ScreenScale scale) const {
    std::vector<MarkLine> lines;
    if (x.Scaled() < 1 || y.Scaled() < 1) {
        return lines;
    }
    const int reach = MarkPixels(markGap, x.zoom, scale);
    const int width = scale.Pixels(1);
    const std::vector<Piece> alongRows = PiecesAtCorners(x, reach);
    const std::vector<Piece> alongColumns = PiecesAtCorners(y, reach);
    for (const int aside : {-width, width}) {
        AddArms(lines, true, alongRows, y, aside, true);
        AddArms(lines, false, alongColumns, x, aside, true);
    }
    AddArms(lines, true, alongRows, y, 0, false);
    AddArms(lines, false, alongColumns, x, 0, false);
    return lines;
}

int CentredScroll(int minimum, int maximum) {
    return Truncated((maximum - minimum) * 0.5);
}

int ProgressEnd(int left, int right, int percent) {
    const int end = Truncated(left + percent * (right - left) * 0.01);
    return std::clamp(end, left, std::max(left, right));
}
