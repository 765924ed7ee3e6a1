// The cells of a tool palette.
#pragma once

#include "framework/dialog/DialogGeometry.h"

/// One cell of the palette's picture at 100 percent: an image of 24 by 20, and a line.
constexpr int pictureCellWidth = 25;
constexpr int pictureCellHeight = 21;
constexpr int pictureImageWidth = 24;
constexpr int pictureImageHeight = 20;

struct PaletteLayout {
    int rows = 0;
    int columns = 0;
    /// On the screen.
    int cellWidth = 0;
    int cellHeight = 0;

    int CellCount() const { return rows * columns; }
};

/// For a picture, at 100 percent, and a client area of these sizes. No cells without a picture.
PaletteLayout LayOutPalette(int pictureWidth, int pictureHeight, int clientWidth, int clientHeight);

/// The 1-based cell at a point, counted along the rows; 0 outside the cells.
int CellAt(const PaletteLayout& layout, int x, int y);
/// The cell on the screen.
ScreenRect CellBounds(const PaletteLayout& layout, int cell);
/// The cell's image in the picture, without its line; in that drawn at `percent` of its size.
ScreenRect CellImage(const PaletteLayout& layout, int cell, int percent = 100);
