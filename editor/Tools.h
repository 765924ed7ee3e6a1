// The editor's tools: their numbers, keys, palette buttons, cursors and hints.
#pragma once

#include "editor/ViewGeometry.h"

enum Tool : short {
    toolMove = 1,
    toolPaintbrush,
    toolEraser,
    toolPencil,
    toolGradient,
    toolRubberStamp,
    toolFill,
    toolEyedropper,
    toolHand,
    toolZoom,
};

/// The two palettes' values for a tool; the one that doesn't have it shows none.
struct PaletteValues {
    /// The palette of the eight painting tools.
    short tools;
    /// The palette of Hand and Zoom.
    short views;

    friend bool operator==(const PaletteValues&, const PaletteValues&) = default;
};
PaletteValues PalettesFor(short tool);

/// Tools that change the texture: they take an undo snapshot before the press, and do nothing in
/// the tile preview. The Eyedropper does nothing there either.
bool ToolPaints(short tool);
bool ToolWorksIn(short tool, ViewMode mode);

/// The tool of a key, in either case; 0 for any other key.
short ToolOfKey(int key);

/// The cursor over the drawing area; 0 for none of the tool's. `modifiers` are Modifier bits.
short ToolCursor(short tool, ViewMode mode, int modifiers);
/// The cursor while the tool is dragged; 0 where it stays.
short DragCursor(short tool);

/// The part under the mouse, for the help readout: parts count from 0.
/// The string of the tool in that palette cell.
short ToolHint(short cell);
short ViewToolHint(short cell);
/// The string of a part of the colour wells, 0 to 3.
short WellHint(short part);
