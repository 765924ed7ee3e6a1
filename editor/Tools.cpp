#include "editor/Tools.h"

#include <algorithm>
#include <array>

#include "framework/drawing/InterfaceLib.h"

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

/// A tool's cursor is this and its number.
constexpr short cursorBase = 16000;
constexpr short cursorHandDrag = 16011;
constexpr short cursorStampSource = 16012;
constexpr short cursorMoveDrag = 16013;
constexpr short cursorZoomOut = 16014;

/// A tool's hint is this and its number; the wells' follow.
constexpr short hintBase = 16100;
constexpr short wellHintBase = 16111;

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
    return static_cast<short>(cursorBase + tool);
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
    return static_cast<short>(hintBase + toolMove + cell);
}

short ViewToolHint(short cell) {
    return static_cast<short>(hintBase + toolHand + cell);
}

short WellHint(short part) {
    return static_cast<short>(wellHintBase + part);
}
