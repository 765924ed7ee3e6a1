// Stories of a user, from the host's menu to the filled selection, with the pixels compared with
// those of the operations alone.
#include "paint/EffectRun.h"
#include "paint/Stroke.h"
#include "resources/Ids.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/Pictures.h"

namespace {

using Texture = TextureItems;

class StoryTest : public PluginRunTest {};

/// The whole way: New, Lines with Apply, Apply again and Cancel, Blur, the brush across the seam,
/// zoom, preview, undo and redo, Apply.
TEST_F(StoryTest, FromNewToTheFilledSelection) {
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        Keep(opening, "new");
        EXPECT_EQ(opening.Text(SizeItems::width), "150");
        EXPECT_EQ(opening.Text(SizeItems::height), "100");
        opening.PressToOpen(okItem);

        const DrivenDialog editor = gui.WaitFor(textureDialog);
        Keep(editor, "editor");
        editor.PressToOpen(Texture::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        Keep(lines, "lines");
        lines.Press(ApplyItems::apply);
        Keep(editor, "editor-lines");
        gui.HoldKey(VK_CONTROL);
        WaitUntil("Apply again", [&] { return lines.Text(ApplyItems::apply) == "Apply again"; });
        lines.Press(ApplyItems::apply);
        gui.ReleaseKey(VK_CONTROL);
        lines.Press(cancelItem);
        lines.WaitUntilClosed();

        editor.PressToOpen(Texture::blur);
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        Keep(blur, "blur");
        blur.Press(okItem);
        blur.WaitUntilClosed();
        WaitUntil("the filter", [&] { return editor.IsEnabled(Texture::repeatFilter); });
        EXPECT_FALSE(editor.IsEnabled(Texture::repeatEffect));

        gui.Type("b");
        WaitUntil("the brush", [&] { return editor.Value(Texture::toolPalette) == 2; });
        // Over the right edge of the middle tile.
        const ItemPlace from = PlaceOfPixel(editor, 150 + 140, 100 + 50);
        Stroke(editor, {from, {from.x + 20, from.y}});
        Keep(editor, "editor-brush");

        editor.Press(Texture::zoomIn);
        Keep(editor, "editor-zoomed");
        gui.Type("p");
        WaitUntil("the preview", [&] { return editor.Value(Texture::tab) == 2; });
        Keep(editor, "editor-preview");
        gui.Type("p");
        WaitUntil("the drawing", [&] { return editor.Value(Texture::tab) == 1; });

        gui.Chord({VK_CONTROL, 'Z'});
        WaitUntil("Redo", [&] { return editor.MenuText(commandUndo) == "Redo\tCtrl+Z"; });
        gui.Chord({VK_CONTROL, 'Z'});
        WaitUntil("Undo", [&] { return editor.MenuText(commandUndo) == "Undo\tCtrl+Z"; });
        editor.PressToOpen(Texture::apply);
    });
    EXPECT_TRUE(report.Succeeded());

    PaintClass expected(150, 100);
    RunBlur(expected, BlurParams{});
    const RGBColor16 black = black16;
    expected.SetColors(&black, &white16);
    {
        BrushStroke stroke(expected);
        stroke.Paint({50, 140}, {50, 160});
    }
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
    ExpectFilledWithApplied();
}

TEST_F(StoryTest, LinesByOkAndARepeatOfTheFilter) {
    const host::RunReport report = RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(Texture::lines);
        gui.WaitFor(linesDialog).Press(okItem);
        WaitUntil("the repeat", [&] { return editor.IsEnabled(Texture::repeatEffect); });
    });
    EXPECT_TRUE(report.Succeeded());
    PaintClass expected(150, 100);
    RunLines(expected, LinesParams{});
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
    ExpectFilledWithApplied();
}

TEST_F(StoryTest, CancelInTheEditorChangesNothing) {
    SkipNewDialog();
    const host::RunReport report =
        Run([&](const GuiDriver& gui) { gui.WaitFor(textureDialog).PressToOpen(cancelItem); });
    EXPECT_EQ(report.result, -128);
    EXPECT_TRUE(picture.pixels == before.pixels);
    EXPECT_EQ(BytesOf(folder.Path() / "Zandermolite3.prf").size(), 383u);
}

TEST_F(StoryTest, CancelInTheNewDialogOpensNoEditor) {
    const host::RunReport report =
        Run([&](const GuiDriver& gui) { gui.WaitFor(createrDialog).PressToOpen(cancelItem); });
    EXPECT_EQ(report.result, -128);
    EXPECT_TRUE(picture.pixels == before.pixels);
}

TEST_F(StoryTest, ALargeSelectionOpensABlankTextureOf512By300) {
    before = picture = host::MakePicture(1000, 300, 3);
    selection = {0, 0, 300, 1000};
    RunEditor([&](const GuiDriver&, const DrivenDialog& editor) {
        EXPECT_EQ(editor.Text(Texture::width), "512 pixel");
        EXPECT_EQ(editor.Text(Texture::height), "300 pixel");
    });
    EXPECT_EQ(Applied()->grX, 512);
    EXPECT_EQ(Applied()->grY, 300);
}

TEST_F(StoryTest, AHostWithoutDisplayStillFillsTheSelection) {
    settings.without[host::Service::displayPixels] = true;
    const host::RunReport report = RunEditor(
        [&](const GuiDriver&, const DrivenDialog& editor) { editor.Press(Texture::invert); });
    EXPECT_TRUE(report.Succeeded());
    EXPECT_EQ(ColorsOf(*Applied()), std::vector<Pixel>(150 * 100, Color(0, 0, 0)));
}

}  // namespace
