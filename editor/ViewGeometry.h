// Where everything stands in the drawing area: the zoom ladder, the repeats of the tile, the
// scroll ranges, the size marks, and the way back from the screen to the texture.
//
// Without a window: a rectangle of the dialog goes in, positions in pixels of the view come out.
// The view's origin is its top left corner.
#pragma once

#include <vector>

#include "base/ScreenGeometry.h"
#include "framework/drawing/ScreenScale.h"
#include "hostapi/HostTypes.h"

enum ViewMode : short { viewDrawing = 0, viewTilePreview = 1 };

/// The width of a scroll bar beside the view, in pixels at 96 dots an inch.
constexpr int scrollBarWidth = 15;
/// The width of the drawing area's frame, in pixels at 96 dots an inch.
constexpr int viewFrameWidth = 2;

/// The next factor of the ladder; 4.0 and 0.25 are its ends. Factors beside the ladder stay.
double ZoomedIn(double zoom);
double ZoomedOut(double zoom);

/// The part of the drawing area's item that shows the texture: inside its frame, with room for the
/// scroll bars at the right and at the bottom.
hostapi::Rect ViewRect(const hostapi::Rect& item, ScreenScale scale = {});

/// The corner at which a repeat of the tile is drawn.
struct TilePlace {
    int x;
    int y;

    friend bool operator==(const TilePlace&, const TilePlace&) = default;
};

/// A horizontal or vertical line, both ends included; as wide as SizeMarks says, beginning at its
/// row or column.
struct MarkLine {
    int fromX;
    int fromY;
    int toX;
    int toY;
    bool white;

    friend bool operator==(const MarkLine&, const MarkLine&) = default;
};

struct ScrollRange {
    int maximum;
    int pageStep;

    friend bool operator==(const ScrollRange&, const ScrollRange&) = default;
};

/// Pixels beside each other in one direction of a repeat of the tile on the screen.
struct ScreenSpan {
    int from;
    int count;

    friend bool operator==(const ScreenSpan&, const ScreenSpan&) = default;
};

/// One direction of the view: x with the widths, or y with the heights.
struct ViewAxis {
    /// The tile's size in texture pixels.
    int tile;
    double zoom;
    ViewMode mode;
    /// The view's size.
    int view;
    /// The value of the direction's scroll bar.
    int scroll;

    /// The tile's size on the screen; 0 for a tile that is smaller than a pixel there.
    int Scaled() const;
    /// The size of three repeats in the drawing mode, of one in the preview. Truncated once, so it
    /// can be a pixel or two more than three tiles'.
    int Image() const;
    /// Where the first repeat begins. The drawing mode centres an image that is smaller than the
    /// view.
    int Origin() const;
    /// Tiles that go into one picture for the host: 1, or as many as make a picture of some size
    /// where the preview would need a call for every few pixels.
    int Block() const;
    /// The size of such a picture on the screen.
    int BlockSize() const { return Block() * Scaled(); }
    /// Repeats that are drawn: three, or as many as fill the view. 0 where Scaled() is.
    int Repeats() const;
    /// The pixels of the tile on the screen that show texture pixels `from` to `to`, `to` excluded,
    /// and some beside them. `from` lies in the tile. They begin in the tile, one pixel before it
    /// at most, and are no more than the tile has.
    ScreenSpan Showing(int from, int to) const;
    /// Where such pixels begin in the view, once for each repeat in which the view shows any.
    std::vector<int> PlacesOf(const ScreenSpan& span) const;
    ScrollRange Range() const;
    /// A coordinate of the view in texture pixels, by the drawing mode's origin. Not wrapped; may
    /// lie outside the image.
    short ToTexture(int position) const;
};

struct ViewGeometry {
    ViewAxis x;
    ViewAxis y;

    /// In the order of drawing: rows from the top, from the left within a row. The last block of a
    /// row or column may reach beyond the repeats.
    std::vector<TilePlace> Blocks() const;
    /// The part of the view that the repeats take up.
    ScreenRect Tiles() const;
    /// The drawing mode's background: what the repeats leave of the view.
    std::vector<ScreenRect> Strips() const;
    /// In the order of drawing. Each line is as wide as a pixel at 96 dots an inch.
    std::vector<MarkLine> SizeMarks(ScreenScale scale = {}) const;

  private:
    std::vector<MarkLine> CropMarks(ScreenScale scale) const;
    std::vector<MarkLine> CornerCrosses(ScreenScale scale) const;
};

/// The middle of a scroll range.
int CentredScroll(int minimum, int maximum);

/// The end of the filled part of the progress bar. `left` and `right` are those of the bar inside
/// its frame; percents outside 0 to 100 are clamped.
int ProgressEnd(int left, int right, int percent);
