#include "editor/Tools.h"

#include <gtest/gtest.h>

#include "framework/drawing/InterfaceLib.h"

namespace {

TEST(Tools, HaveKeysInBothCases) {
    const char* keys = "VBENGSKIHZ";
    for (short tool = toolMove; tool <= toolZoom; ++tool) {
        const int key = keys[tool - 1];
        EXPECT_EQ(ToolOfKey(key), tool);
        EXPECT_EQ(ToolOfKey(key - 'A' + 'a'), tool);
    }
}

TEST(Tools, OtherKeysChooseNone) {
    for (const int key : std::initializer_list<int>{'D', 'X', 'M', 'P', 'A', '1', ' ', 0, 30, 31,
                                                    -1, 256 + 'V', 0xD6}) {
        EXPECT_EQ(ToolOfKey(key), 0) << key;
    }
}

TEST(Tools, StandInOneOfTwoPalettes) {
    EXPECT_EQ(PalettesFor(toolMove), (PaletteValues{1, 0}));
    EXPECT_EQ(PalettesFor(toolEyedropper), (PaletteValues{8, 0}));
    EXPECT_EQ(PalettesFor(toolHand), (PaletteValues{0, 1}));
    EXPECT_EQ(PalettesFor(toolZoom), (PaletteValues{0, 2}));
}

TEST(Tools, PaintersTakeASnapshot) {
    for (short tool = toolMove; tool <= toolZoom; ++tool) {
        EXPECT_EQ(ToolPaints(tool), tool <= 7) << tool;
    }
}

TEST(Tools, InThePreviewOnlyHandAndZoomWork) {
    for (short tool = toolMove; tool <= toolZoom; ++tool) {
        EXPECT_TRUE(ToolWorksIn(tool, viewDrawing));
        EXPECT_EQ(ToolWorksIn(tool, viewTilePreview), tool >= 9) << tool;
    }
}

TEST(Tools, HaveCursorsByNumber) {
    for (short tool = toolMove; tool <= toolZoom; ++tool) {
        EXPECT_EQ(ToolCursor(tool, viewDrawing, 0), 16000 + tool);
        EXPECT_EQ(ToolCursor(tool, viewDrawing, modifierControl | modifierShift), 16000 + tool);
        EXPECT_EQ(ToolCursor(tool, viewTilePreview, 0), tool >= 9 ? 16000 + tool : 0);
    }
}

TEST(Tools, AltChangesTwoCursors) {
    for (short tool = toolMove; tool <= toolZoom; ++tool) {
        const int expected = tool == toolZoom          ? 16014
                             : tool == toolRubberStamp ? 16012
                                                       : 16000 + tool;
        EXPECT_EQ(ToolCursor(tool, viewDrawing, modifierAlt), expected);
        EXPECT_EQ(ToolCursor(tool, viewDrawing, modifierAlt | modifierShift), expected);
    }
    EXPECT_EQ(ToolCursor(toolZoom, viewTilePreview, modifierAlt), 16014);
    EXPECT_EQ(ToolCursor(toolRubberStamp, viewTilePreview, modifierAlt), 0);
}

TEST(Tools, TwoHaveCursorsWhileTheyDrag) {
    for (short tool = toolMove; tool <= toolZoom; ++tool) {
        const int expected = tool == toolMove ? 16013 : tool == toolHand ? 16011 : 0;
        EXPECT_EQ(DragCursor(tool), expected) << tool;
    }
}

TEST(Tools, HintsFollowTheCells) {
    EXPECT_EQ(ToolHint(0), 16101);
    EXPECT_EQ(ToolHint(7), 16108);
    EXPECT_EQ(ViewToolHint(0), 16109);
    EXPECT_EQ(ViewToolHint(1), 16110);
    EXPECT_EQ(WellHint(0), 16111);
    EXPECT_EQ(WellHint(3), 16114);
}

}  // namespace
