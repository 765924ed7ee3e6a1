#include "framework/controls/PaletteLayout.h"

#include "framework/drawing/ScreenScale.h"

namespace {

/// To nearest, halves up.
int Quotient(int dividend, int divisor) {
    return (2 * dividend + divisor) / (2 * divisor);
}

struct CellPlace {
    int row;
    int column;
};

CellPlace PlaceOf(const PaletteLayout& layout, int cell) {
    return {(cell - 1) / layout.columns, (cell - 1) % layout.columns};
}

}  // namespace

PaletteLayout LayOutPalette(int pictureWidth, int pictureHeight, int clientWidth,
                            int clientHeight) {
    PaletteLayout layout;
    layout.rows = Quotient(pictureHeight, pictureCellHeight);
    layout.columns = Quotient(pictureWidth, pictureCellWidth);
    if (layout.CellCount() == 0) {
        return {};
    }
    layout.cellWidth = clientWidth / layout.columns;
    layout.cellHeight = clientHeight / layout.rows;
    return layout;
}

int CellAt(const PaletteLayout& layout, int x, int y) {
    if (x < 0 || y < 0 || layout.cellWidth <= 0 || layout.cellHeight <= 0) {
        return 0;
    }
    const int column = x / layout.cellWidth;
    const int row = y / layout.cellHeight;
    return column < layout.columns && row < layout.rows ? row * layout.columns + column + 1 : 0;
}

ScreenRect CellBounds(const PaletteLayout& layout, int cell) {
    const CellPlace place = PlaceOf(layout, cell);
    const int left = place.column * layout.cellWidth;
    const int top = place.row * layout.cellHeight;
    return {left, top, left + layout.cellWidth, top + layout.cellHeight};
}

ScreenRect CellImage(const PaletteLayout& layout, int cell, int percent) {
    const CellPlace place = PlaceOf(layout, cell);
    const int left = place.column * AtPercent(pictureCellWidth, percent);
    const int top = place.row * AtPercent(pictureCellHeight, percent);
    return {left, top, left + AtPercent(pictureImageWidth, percent),
            top + AtPercent(pictureImageHeight, percent)};
}
