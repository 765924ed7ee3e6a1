// One long afternoon of a user: a texture made of a selection with effects, tools and another
// texture, and a picture painted over with it, beside a recipe that does the same.
#include "fixtures/FileDialog.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "paint/math/Random.h"
#include "tests/gui/DialogRun.Win.h"
#include "tests/gui/RecipeRun.Win.h"

namespace {

using Texture = TextureItems;

class LongStoryTest : public DialogRunTest {
  protected:
    LongStoryTest() {
        GetCurrentDirectoryA(sizeof currentFolder, currentFolder);
        before = picture = host::LoadPicture("samples/room.jpg");
        selection = canvas;
        feather = 12;
        StoreSettings();
    }
    // The system's dialogs leave the process in the folder of the choice.
    ~LongStoryTest() override { SetCurrentDirectoryA(currentFolder); }

    /// The canvas on the wall.
    static constexpr hostapi::VRect canvas{70, 141, 263, 428};

    /// In the middle tile, as the tools see it.
    static hostapi::Point InTile(int x, int y) {
        return {static_cast<short>(hostapi::Height(canvas) + y),
                static_cast<short>(hostapi::Width(canvas) + x)};
    }

    /// The colours of a texture that the recipe ends with, and the picture with the selection's
    /// rectangle filled with it.
    struct Told {
        std::vector<Pixel> texture;
        host::Picture filled;
    };
    Told TellRecipe();
    void WorkInTheEditor(const GuiDriver& gui, const DrivenDialog& editor);

    std::filesystem::path PathOf(const std::string& name) const { return folder.Path() / name; }

    char currentFolder[MAX_PATH];
    const hostapi::Point source = InTile(110, 100);
    const std::vector<hostapi::Point> stamped{InTile(180, 130), InTile(200, 145), InTile(225, 140)};
    const hostapi::Point rampFrom = InTile(30, 60);
    const hostapi::Point rampTo = InTile(62, 60);

  private:
    void StoreSettings();
    std::unique_ptr<PaintClass> Selected() const;
    std::vector<ItemPlace> PlacesOf(const DrivenDialog& editor,
                                    const std::vector<hostapi::Point>& points) const;
    void SaveAs(const GuiDriver& gui, const DrivenDialog& editor, const std::string& name) const;
};

void LongStoryTest::StoreSettings() {
    stored.launchFlag = 1;
    stored.foreground = {0xC400, 0x5200, 0x2600};
    stored.background = {0xF200, 0xE400, 0xC800};
    stored.shapes.kind = shapeRing;
    stored.shapes.bevel = 40;
    stored.shapes.material = 60;
    stored.shapes.transparency = 15;
    stored.shapes.contrast = 65;
    stored.shapes.sizeX = 0.86;
    stored.shapes.sizeY = 0.86;
    stored.shapes.repeatX = 6;
    stored.shapes.repeatY = 4;
    stored.shapes.color = {0x2A00, 0x7A00, 0x8A00};
    stored.drops.count = 30;
    stored.drops.size = 40;
    stored.dividers.lines = 9;
    stored.dividers.randomColors = 0;
    stored.dividers.transparent = 1;
    stored.dividers.lineWidth = 2;
    stored.dividers.foreground = stored.foreground;
    stored.dividers.background = stored.background;
    stored.twirls.quantity = 8;
    stored.twirls.size = 35;
    stored.twirls.intensity = 45;
}

/// The texture that New makes of the selection, white where nothing is selected.
std::unique_ptr<PaintClass> LongStoryTest::Selected() const {
    const host::Selection selected = host::SelectEllipse(selection, *feather);
    auto texture = std::make_unique<PaintClass>(static_cast<short>(hostapi::Width(canvas)),
                                                static_cast<short>(hostapi::Height(canvas)));
    for (short y = 0; y < texture->grY; ++y) {
        for (short x = 0; x < texture->grX; ++x) {
            const int column = selection.left + x;
            const int row = selection.top + y;
            const double white = (255 - selected.Coverage(column, row)) * (1.0 / 255.0);
            const auto overWhite = [&](int color) {
                return static_cast<std::uint8_t>(255 * white + color * (1 - white));
            };
            const std::uint8_t* const pixel = before.Pixel(column, row);
            texture->SetRGB(x, y, overWhite(pixel[0]), overWhite(pixel[1]), overWhite(pixel[2]));
        }
    }
    return texture;
}

LongStoryTest::Told LongStoryTest::TellRecipe() {
    host::SavePicture(before, PathOf("room.png"));
    RecipeRun recipe([&] { return Selected(); }, folder.Path());
    recipe.Run("colors foreground=" + RecipeValue(stored.foreground) +
               " background=" + RecipeValue(stored.background));
    recipe.Run(RecipeLine(CatalogRowOf(shapesDialog), &stored.shapes));
    recipe.Run(RecipeLine(CatalogRowOf(dropsDialog), &stored.drops));
    recipe.Run("save file=told.jpg");
    recipe.Run(RecipeLine(CatalogRowOf(devidersDialog), &stored.dividers));
    recipe.Run(RecipeLine(CatalogRowOf(twirlsDialog), &stored.twirls));
    const hostapi::Point offset{static_cast<short>(source.v - stamped[1].v),
                                static_cast<short>(source.h - stamped[1].h)};
    recipe.Run("stamp offset=" + RecipeValue(offset) + " path=" + RecipeValue(stamped[0]) + ";" +
               RecipeValue(stamped[1]) + ";" + RecipeValue(stamped[2]));
    recipe.Run("gradient from=" + RecipeValue(rampFrom) + " to=" + RecipeValue(rampTo));
    recipe.Run("combine file=told.jpg mode=1 amount=35");
    recipe.Run("tile horizontal=2 vertical=3");
    recipe.Run("save file=told-tiles.jpg");
    recipe.Run("apply image=room.png file=filled.png selection=" + std::to_string(selection.left) +
               "," + std::to_string(selection.top) + "," + std::to_string(selection.right) + "," +
               std::to_string(selection.bottom));
    return {recipe.Colors(), host::LoadPicture(PathOf("filled.png"))};
}

std::vector<ItemPlace> LongStoryTest::PlacesOf(const DrivenDialog& editor,
                                               const std::vector<hostapi::Point>& points) const {
    std::vector<ItemPlace> places;
    for (const hostapi::Point& point : points) {
        places.push_back(PlaceOfPixel(editor, point.h, point.v));
    }
    return places;
}

void LongStoryTest::SaveAs(const GuiDriver& gui, const DrivenDialog& editor,
                           const std::string& name) const {
    editor.PressToOpen(Texture::save);
    ChooseFile(gui, "Save As", PathOf(name));
    WaitUntil("the name", [&] { return editor.Text(Texture::name) == name; });
}

void LongStoryTest::WorkInTheEditor(const GuiDriver& gui, const DrivenDialog& editor) {
    const auto useDialog = [&](int item, int dialogId) {
        editor.PressToOpen(item);
        CloseWith(gui.WaitFor(dialogId), okItem);
        editor.Settle();
    };
    useDialog(Texture::shapes, shapesDialog);
    useDialog(Texture::drops, dropsDialog);
    SaveAs(gui, editor, "rings.jpg");
    useDialog(Texture::dividers, devidersDialog);
    useDialog(Texture::twirls, twirlsDialog);

    ChooseTool(gui, editor, 's', 6);
    TakeStampSource(gui, editor, PlacesOf(editor, {source}).front());
    DragStamp(gui, editor, PlacesOf(editor, stamped));
    ChooseTool(gui, editor, 'g', 5);
    editor.WaitUntilPainted();
    // The drag is not quite level; the ramp is.
    const hostapi::Point dragged{static_cast<short>(rampTo.v + 6), rampTo.h};
    editor.Drag(Texture::drawingArea, PlacesOf(editor, {rampFrom, dragged}),
                [&] { editor.Settle(); });
    editor.Settle();

    editor.PressToOpen(Texture::combine);
    const DrivenDialog combine = gui.WaitFor(combineDialog);
    combine.PressToOpen(CombineItems::choose);
    ChooseFile(gui, "Open", PathOf("rings.jpg"));
    WaitUntil("OK", [&] { return combine.IsEnabled(okItem); });
    TypeInto(gui, combine, CombineItems::amount, "35");
    CloseWith(combine, okItem);

    editor.PressToOpen(Texture::tile);
    const DrivenDialog tile = gui.WaitFor(tileDialog);
    TypeInto(gui, tile, TileItems::vertical, "3");
    CloseWith(tile, okItem);
    SaveAs(gui, editor, "tiles.jpg");
}

/// The picture where nothing is selected, the other where all is, and between the two their mean by
/// the selection, rounded.
host::Picture Masked(const host::Picture& picture, const host::Picture& other,
                     const host::Selection& selected) {
    host::Picture mixed = picture;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const int share = selected.Coverage(x, y);
            for (int plane = 0; plane < 3; ++plane) {
                const int sum =
                    picture.Pixel(x, y)[plane] * (255 - share) + other.Pixel(x, y)[plane] * share;
                mixed.Pixel(x, y)[plane] = static_cast<std::uint8_t>((2 * sum + 255) / (2 * 255));
            }
        }
    }
    return mixed;
}

TEST_F(LongStoryTest, OfACanvas) {
    const Told told = TellRecipe();
    ASSERT_TRUE(SavePreferences(stored));
    SetSeed(RecipeRun::seed);
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        opening.Press(SizeItems::selection);
        CloseWith(opening, okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        WorkInTheEditor(gui, editor);
        CloseWith(editor, Texture::apply);
    });
    SetCurrentDirectoryA(currentFolder);
    KeepPicture(picture, "story");
    EXPECT_TRUE(report.Succeeded());
    EXPECT_TRUE(BytesOf(PathOf("rings.jpg")) == BytesOf(PathOf("told.jpg")));
    EXPECT_TRUE(BytesOf(PathOf("tiles.jpg")) == BytesOf(PathOf("told-tiles.jpg")));
    EXPECT_TRUE(ColorsOf(*Applied()) == told.texture);
    const host::Picture expected =
        Masked(before, told.filled, host::SelectEllipse(selection, *feather));
    EXPECT_TRUE(picture.pixels == expected.pixels);
    EXPECT_FALSE(expected.pixels == before.pixels);
}

}  // namespace
