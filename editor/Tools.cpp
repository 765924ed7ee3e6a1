#include "editor/Tools.h"

#include <algorithm>
#include <array>

#include "framework/drawing/InterfaceLib.h"
#include "resources/Ids.h"

namespace {

struct ToolKey {
    char key;
    Tool tool;
};

constexpr std::array toolKeys = {
    ToolKey{'V', toolMove},   ToolKey{'B', toolPaintbrush}, ToolKey{'E', toolEraser},
    ToolKey{'N', toolPencil}, ToolKey{'G', toolGradient},   ToolKey{'S', toolRubberStamp},
    ToolKey{'K', toolFill},   ToolKey{'I', toolEyedropper}, ToolKey{'H', toolHand},
    ToolKey{'Z', toolZoom},
};

char UpperCase(int key) {
    return static_cast<char>(key >= 'a' && key <= 'z' ? key - 'a' + 'A' : key);
}

}  // namespace

PaletteValues PalettesFor(short tool) {
    if (tool < toolHand) {
        return {tool, 0};
    }
    return {0, static_cast<short>(tool - toolEyedropper)};
}

bool ToolPaints(short tool) {
    return tool >= toolMove && tool <= toolFill;
}

bool ToolWorksIn(short tool, ViewMode mode) {
    return mode == viewDrawing || tool == toolHand || tool == toolZoom;
}

short ToolOfKey(int key) {
    if (key < 0 || key > 127) {
        return 0;
    }
    const char letter = UpperCase(key);
    const auto found = std::find_if(toolKeys.begin(), toolKeys.end(),
                                    [letter](const ToolKey& entry) { return entry.key == letter; });
    return found != toolKeys.end() ? static_cast<short>(found->tool) : short{0};
}

short ToolCursor(short tool, ViewMode mode, int modifiers) {
    if (!ToolWorksIn(tool, mode)) {
        return 0;
    }
    const bool alt = (modifiers & modifierAlt) != 0;
    if (alt && tool == toolZoom) {
        return cursorZoomOut;
    }
    if (alt && tool == toolRubberStamp) {
        return cursorStampSource;
    }
    return static_cast<short>(cursorTool + tool);
}

short DragCursor(short tool) {
    switch (tool) {
        case toolMove:
            return cursorMoveDrag;
        case toolHand:
            return cursorHandDrag;
        default:
            return 0;
    }
}

short ToolHint(short cell) {
    return static_cast<short>(stringToolHelp + short{toolMove} + cell);
}

short ViewToolHint(short cell) {
    return static_cast<short>(stringToolHelp + short{toolHand} + cell);
}

short WellHint(short part) {
    return static_cast<short>(stringWellHelp + part);
}
