#include "tests/gui/DialogRun.Win.h"

namespace {

/// A block in the tile's middle, away from the size marks.
constexpr RECT middle{55, 30, 95, 70};

std::vector<Pixel> MiddleOf(const PaintClass& texture) {
    std::vector<Pixel> colors;
    for (LONG y = middle.top; y < middle.bottom; ++y) {
        for (LONG x = middle.left; x < middle.right; ++x) {
            colors.push_back(texture.GetPixel(static_cast<short>(x), static_cast<short>(y)) &
                             0x00FFFFFF);
        }
    }
    return colors;
}

}  // namespace

host::RunReport DialogRunTest::RunBlank(const EditorUser& user) {
    return RunWith(false, user);
}

host::RunReport DialogRunTest::RunOnSelection(const EditorUser& user) {
    return RunWith(true, user);
}

host::RunReport DialogRunTest::RunWith(bool fromSelection, const EditorUser& user) {
    stored.launchFlag = fromSelection ? 1 : 0;
    EXPECT_TRUE(SavePreferences(stored));
    return Run([&](const GuiDriver& gui) {
        if (fromSelection) {
            const DrivenDialog opening = gui.WaitFor(createrDialog);
            opening.Press(SizeItems::selection);
            CloseWith(opening, okItem);
        }
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        user(gui, editor);
        CloseWith(editor, TextureItems::apply);
    });
}

std::unique_ptr<PaintClass> DialogRunTest::Blank() {
    return std::make_unique<PaintClass>(width, height);
}

std::unique_ptr<PaintClass> DialogRunTest::Noise() const {
    auto texture = std::make_unique<PaintClass>(static_cast<short>(hostapi::Width(selection)),
                                                static_cast<short>(hostapi::Height(selection)));
    for (short y = 0; y < texture->grY; ++y) {
        for (short x = 0; x < texture->grX; ++x) {
            const std::uint8_t* const pixel = before.Pixel(selection.left + x, selection.top + y);
            texture->SetRGB(x, y, pixel[0], pixel[1], pixel[2]);
        }
    }
    return texture;
}

void DialogRunTest::TakeStampSource(const GuiDriver& gui, const DrivenDialog& editor,
                                    ItemPlace place) {
    gui.HoldKey(VK_MENU);
    editor.Point(TextureItems::drawingArea, place);
    WaitUntil("the cursor of the source",
              [] { return GuiDriver::CursorId() == cursorStampSource; });
    editor.Drag(TextureItems::drawingArea, {place}, [&] { editor.Settle(); });
    ReleaseAlt(gui);
}

void DialogRunTest::ReleaseAlt(const GuiDriver& gui) {
    gui.Chord({VK_CONTROL});
    gui.ReleaseKey(VK_MENU);
}

void DialogRunTest::DragStamp(const GuiDriver& gui, const DrivenDialog& editor,
                              const std::vector<ItemPlace>& places,
                              const std::function<void()>& beforeLast) {
    editor.WaitUntilPainted();
    editor.Point(TextureItems::drawingArea, places.front());
    gui.PressMouse();
    WaitUntil("the stroke to begin", [&] { return HasCapture(editor.Window()); });
    editor.Settle();
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (i + 1 == places.size() && beforeLast) {
            beforeLast();
        }
        const int drawnBefore = Displays();
        editor.Point(TextureItems::drawingArea, places[i]);
        WaitUntil("the stamp to be drawn", [&] { return Displays() > drawnBefore; });
        editor.Settle();
    }
    gui.ReleaseMouse();
    // By more than a texture pixel at any zoom.
    editor.Point(TextureItems::drawingArea, {places.back().x + 8, places.back().y});
    WaitUntil("the stroke to end", [&] { return !HasCapture(editor.Window()); });
    editor.Settle();
}

DrivenDialog DialogRunTest::OpenDialog(const GuiDriver& gui, const DrivenDialog& editor, int item,
                                       int dialogId) {
    editor.PressToOpen(item);
    const DrivenDialog dialog = gui.WaitFor(dialogId);
    RECT frame;
    GetWindowRect(editor.Window(), &frame);
    SetWindowPos(dialog.Window(), nullptr, 0, frame.top + 380, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    dialog.Settle();
    return dialog;
}

std::vector<Pixel> DialogRunTest::ShownMiddle(const DrivenDialog& editor) const {
    const host::Picture shown = editor.Grab();
    const RECT area = editor.Bounds(TextureItems::drawingArea);
    const ItemPlace first = PlaceOfPixel(editor, width + static_cast<int>(middle.left),
                                         height + static_cast<int>(middle.top));
    std::vector<Pixel> colors;
    for (LONG y = 0; y < middle.bottom - middle.top; ++y) {
        for (LONG x = 0; x < middle.right - middle.left; ++x) {
            const std::uint8_t* const pixel = shown.Pixel(static_cast<int>(area.left + x) + first.x,
                                                          static_cast<int>(area.top + y) + first.y);
            colors.push_back(Color(pixel[0], pixel[1], pixel[2]));
        }
    }
    return colors;
}

void DialogRunTest::ExpectShown(const DrivenDialog& editor, const PaintClass& texture) const {
    const std::vector<Pixel> expected = MiddleOf(texture);
    WaitUntil("the texture to be shown", [&] { return ShownMiddle(editor) == expected; });
}

void DialogRunTest::ExpectApplied(const PaintClass& expected) const {
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
    ExpectFilledWithApplied();
}

std::int16_t WriteTexture(ImageFile& file, const PaintClass& texture, std::uint16_t resolution) {
    constexpr std::int16_t planes = 3;
    std::vector<std::uint8_t> colors;
    for (const Pixel color : ColorsOf(texture)) {
        for (const int shift : {0, 8, 16}) {
            colors.push_back(static_cast<std::uint8_t>(color >> shift));
        }
    }
    ImageInfo layout;
    layout.mode = hostapi::imageModeRGB;
    layout.planes = planes;
    layout.colBytes = planes;
    layout.rowBytes = planes * texture.grX;
    layout.right = texture.grX;
    layout.bottom = texture.grY;
    if (resolution != 0) {
        layout.resolutionUnit = dotsPerInch;
        layout.xResolution = layout.yResolution = resolution;
    }
    const std::int16_t status = file.SetImageLayout(&layout);
    return status != 0 ? status : file.WriteImagePixels(colors.data());
}
