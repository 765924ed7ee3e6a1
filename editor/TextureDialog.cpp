#include "editor/TextureDialog.h"

#include <algorithm>
#include <iterator>

#include "base/Platform.h"
#include "base/Progress.h"
#include "editor/Readouts.h"
#include "framework/controls/PaletteLayout.h"
#include "framework/dialog/DialogGeometry.h"
#include "resources/Ids.h"
#include "resources/Strings.h"

namespace {

using Items = TextureItems;

constexpr short fallbackSide = 128;

struct ItemRule {
    short item;
    std::uint8_t rules;
};

/// How the items follow the window's size.
constexpr ItemRule itemRules[] = {
    {Items::apply, resizeMoveRight | resizeMoveDown},
    {Items::cancel, resizeMoveRight | resizeMoveDown},
    {Items::viewPalette, resizeMoveRight | resizeMoveDown},
    {Items::helpReadout, resizeGrowRight | resizeMoveDown},
    {Items::helpFrame, resizeGrowRight | resizeMoveDown},
    {Items::tab, resizeGrowRight | resizeGrowDown},
    {Items::drawingArea, resizeGrowRight | resizeGrowDown},
    {Items::sizeMarksSymbol, resizeMoveRight},
    {Items::sizeMarks, resizeMoveRight},
};

/// The same for those that PlaceBesideView puts to their places.
constexpr ItemRule rulesBesideView[] = {
    {Items::growBox, resizeMoveRight | resizeMoveDown},
    {Items::verticalScroll, resizeMoveRight | resizeGrowDown},
    {Items::horizontalScroll, resizeGrowRight | resizeMoveDown},
    {Items::progress, resizeMoveDown},
    {Items::zoomIn, resizeMoveDown},
    {Items::zoomOut, resizeMoveDown},
    {Items::zoomReadout, resizeMoveDown},
};

}  // namespace

/// The handler of a button or a menu entry. An item or a menu command of 0 is none.
struct TextureDialog::Command {
    short item;
    short menu;
    void (TextureDialog::*run)();
};

const TextureDialog::Command TextureDialog::commands[] = {
    {Items::viewPalette, 0, &TextureDialog::ChooseViewTool},
    {Items::toolPalette, 0, &TextureDialog::ChooseTool},
    {Items::zoomIn, commandZoomIn, &TextureDialog::ZoomIn},
    {Items::zoomOut, commandZoomOut, &TextureDialog::ZoomOut},
    {0, commandActualPixels, &TextureDialog::ActualPixels},
    {Items::verticalScroll, 0, &TextureDialog::InvalidateDrawing},
    {Items::horizontalScroll, 0, &TextureDialog::InvalidateDrawing},
    {Items::drawingArea, 0, &TextureDialog::ClickDrawingArea},
    {Items::colorWells, 0, &TextureDialog::ClickWells},
    {Items::flipVertical, commandFlipVertical, &TextureDialog::FlipVertically},
    {Items::flipHorizontal, commandFlipHorizontal, &TextureDialog::FlipHorizontally},
    {Items::newTexture, commandNew, &TextureDialog::NewTexture},
    {Items::edit, commandEdit, &TextureDialog::EditTexture},
    {Items::tile, commandTile, &TextureDialog::RunTile},
    {Items::combine, commandCombine, &TextureDialog::OpenCombine},
    {Items::open, commandOpen, &TextureDialog::OpenTexture},
    {Items::save, commandSave, &TextureDialog::SaveTextureFile},
    {Items::repeatEffect, commandRepeatEffect, &TextureDialog::RepeatLastEffect},
    {Items::repeatFilter, commandRepeatFilter, &TextureDialog::RepeatLastFilter},
    {Items::addBump, commandAddBump, &TextureDialog::AddBump},
    {Items::invert, commandInvert, &TextureDialog::InvertTexture},
    {Items::sizeMarks, 0, &TextureDialog::ToggleSizeMarks},
    {Items::tab, 0, &TextureDialog::SwitchView},
    {0, commandUndo, &TextureDialog::ToggleUndo},
    {0, commandClear, &TextureDialog::ClearTexture},
    {0, commandStampSettings, &TextureDialog::OpenStampSettings},
    {0, commandFillSettings, &TextureDialog::OpenFillSettings},
    {0, commandBrushSettings, &TextureDialog::OpenBrushSettings},
    {0, commandNewAtLaunch, &TextureDialog::ToggleNewAtLaunch},
    {0, commandAbout, &TextureDialog::ShowAboutBox},
};

// --- Construction ---

TextureDialog::TextureDialog(const std::string& newName)
    : SmallPSDialog(textureDialog), files(*this), resolution(WholeResolution(Record()->imageHRes)) {
    files.textureName = newName;
    SetName(Items::viewPalette, "View tools");
    SetName(Items::toolPalette, "Drawing tools");
    SetName(Items::colorWells, "Colors");
    SetName(Items::paletteFrame, "Frame of the drawing tools");
    SetReadingOrder();
}

TextureDialog::TextureDialog(const std::string& newName, ImageFile& file) : TextureDialog(newName) {
    std::unique_ptr<PaintClass> loaded;
    if (!LoadTexture(loaded, files, file)) {
        // Over the host's window: there is no dialog yet.
        platformServices.showAlert(alertNotLoaded, {});
        loaded = PaintClass::Make(fallbackSide, fallbackSide);
    }
    Begin(std::move(loaded));
}

TextureDialog::TextureDialog(const std::string& newName, short width, short height)
    : TextureDialog(newName) {
    Begin(PaintClass::Make(width, height));
}

TextureDialog::TextureDialog(const std::string& newName, std::unique_ptr<PaintClass> newPic)
    : TextureDialog(newName) {
    Begin(std::move(newPic));
}

TextureDialog::~TextureDialog() {
    ShowClass::target = nullptr;
    CursorClass::target = nullptr;
    subDialog.reset();
    if (!isMade || errorCell != 0) {
        // A fault in a constructor ends an editor that was never shown; after a fault in the editor
        // nothing is written.
        return;
    }
    try {
        SavePreferences(preferences);
    } catch (...) {
        // Without a file: the user has been told, and the error cell is set. Without memory: the
        // file is as it was.
    }
}

void TextureDialog::Begin(std::unique_ptr<PaintClass> newPic) {
    if (!LoadPreferences(preferences)) {
        SetDefaultPreferences(preferences);
    }
    // The New dialog's answer, not the file's, is what counts from here on.
    preferences.launchFlag = 1;
    AdoptTexture(std::move(newPic));
    isMade = true;
}

void TextureDialog::AdoptTexture(std::unique_ptr<PaintClass> newPic) {
    pic = std::move(newPic);
    if (pic != nullptr) {
        pic->SetColors(&preferences.foreground, &preferences.background);
    }
}

// --- Set-up ---

void TextureDialog::Setup() {
    SmallPSDialog::Setup();
    UpdateRepeats();
    SetValue(Items::sizeMarks, 1);
    ShowReadouts();
    tool = toolMove;
    ShowTool();
    colorPicker = std::make_unique<ColorPicker>(
        &preferences.foreground, &preferences.background,
        WellsIn(GetBounds(Items::colorWells), GetBounds(Items::switchColors),
                GetBounds(Items::defaultColors), Scale()),
        this);
    ShowClass::target = this;
    CursorClass::target = this;
    const CursorClass busy;
    SetUpMenu();
    Center();
    SetIcon(iconEditor);
    SetButtonIcon(Items::zoomIn, iconZoomIn);
    SetButtonIcon(Items::zoomOut, iconZoomOut);
    for (const ItemRule& rule : itemRules) {
        SetResizeRule(rule.item, rule.rules);
    }
    if (preferences.editorPlace.right != 0) {
        SetPlacement(
            Rescaled(preferences.editorPlace, preferences.placeResolution, Scale().resolution));
    }
    // In the remembered size: before it they would be moved twice.
    PlaceBesideView();
    for (const ItemRule& rule : rulesBesideView) {
        SetResizeRule(rule.item, rule.rules);
    }
    UpdateScrollBars();
    UpdateScrollPositions();
    // Not the first button, Apply: a blank that is typed by habit would end the editor.
    SetFocus(Items::tab);
}

// Row by row; effects and filters are two columns. The tab comes before: it is the last window, so
// that all others are in front of it. The template has its controls in this order already.
void TextureDialog::SetReadingOrder() {
    SetTabOrder({Items::sizeMarks, Items::newTexture, Items::edit, Items::open, Items::save,
                 Items::toolPalette, Items::colorWells, Items::flipHorizontal, Items::flipVertical,
                 Items::repeatEffect, Items::lines, Items::shapes, Items::drops, Items::dividers,
                 Items::waves, Items::twirls, Items::skew, Items::combine, Items::tile,
                 Items::repeatFilter, Items::blur, Items::sharpen, Items::noise, Items::saturation,
                 Items::brightContr, Items::addColor, Items::mosaic, Items::invert, Items::addBump,
                 Items::zoomOut, Items::zoomIn, Items::viewPalette, Items::apply, Items::cancel,
                 // The others lie in front of these.
                 Items::zoomReadout, Items::drawingArea, Items::paletteFrame, Items::switchColors,
                 Items::defaultColors, Items::textureFrame, Items::effectsFrame,
                 Items::filtersFrame});
}

void TextureDialog::SetUpMenu() {
    Port().CheckMenuItem(commandNewAtLaunch, preferences.launchFlag != 0);
    for (const int command : {commandCut, commandCopy, commandPaste}) {
        Port().EnableMenuItem(command, false);
    }
}

void TextureDialog::ShowReadouts() {
    SetText(Items::name, files.textureName.c_str());
    SetText(Items::width, SideText(pic->grX, units, resolution).c_str());
    SetText(Items::height, SideText(pic->grY, units, resolution).c_str());
    SetText(Items::resolution, ResolutionText(resolution).c_str());
    SetText(Items::size, MemoryText(Kilobytes(pic->grX, pic->grY)).c_str());
}

void TextureDialog::UpdateRepeats() {
    const auto enable = [this](short item, bool on) {
        if (IsEnabled(item) != on) {
            Enable(item, on);
        }
    };
    enable(Items::repeatFilter, lastFilter != 0);
    enable(Items::repeatEffect, lastEffect != 0);
}

// --- Commands ---

short TextureDialog::ItemHit(short item) {
    if (item == okItem || item == cancelItem) {
        preferences.editorPlace = Placement();
        preferences.placeResolution = static_cast<std::int16_t>(Scale().resolution);
        return item;
    }
    const auto command = std::find_if(std::begin(commands), std::end(commands),
                                      [item](const Command& row) { return row.item == item; });
    if (command != std::end(commands)) {
        (this->*command->run)();
    } else if (const Operation* operation = OperationOfItem(item); operation != nullptr) {
        OpenOperation(*operation);
    }
    // A fault in a child dialog closes this one, too.
    if (IsOpen()) {
        UpdateRepeats();
    }
    return 0;
}

// A command that has a button runs through the button's handler.
void TextureDialog::MenuCommand(short id) {
    const auto command =
        std::find_if(std::begin(commands), std::end(commands),
                     [id](const Command& row) { return id != 0 && row.menu == id; });
    if (id == commandRepeatEffect && lastEffect == 0) {
        return;
    }
    if (id == commandRepeatFilter && lastFilter == 0) {
        return;
    }
    if (command != std::end(commands)) {
        if (command->item != 0) {
            ItemHit(command->item);
        } else {
            (this->*command->run)();
        }
    } else if (const Operation* operation = OperationOfMenuCommand(id); operation != nullptr) {
        ItemHit(operation->item);
    } else {
        SmallPSDialog::MenuCommand(id);
    }
}

void TextureDialog::UpdateMenus() {
    SmallPSDialog::UpdateMenus();
    Port().EnableMenuItem(commandClear, true);
    Port().EnableMenuItem(commandAbout, true);
}

void TextureDialog::ToggleSizeMarks() {
    SetValue(Items::sizeMarks, GetShort(Items::sizeMarks) != 0 ? 0 : 1);
    InvalidateDrawing();
}

void TextureDialog::ToggleNewAtLaunch() {
    SetShowNewAtLaunch(preferences.launchFlag == 0);
    Port().CheckMenuItem(commandNewAtLaunch, preferences.launchFlag != 0);
}

void TextureDialog::ShowAboutBox() {
    const DialogSuspension suspension;
    platformServices.showAbout();
}

// --- What the window asks ---

void TextureDialog::Resize(short widthChange, short heightChange) {
    SmallPSDialog::Resize(widthChange, heightChange);
    for (const short item : {Items::zoomIn, Items::zoomOut, Items::viewPalette, Items::apply,
                             Items::cancel, Items::helpFrame}) {
        InvalidateItem(item);
    }
    UpdateScrollBars();
    // A centred image stands elsewhere now.
    InvalidateDrawing();
}

bool TextureDialog::ScrollChanged(short item, int value) {
    if (item != Items::verticalScroll && item != Items::horizontalScroll) {
        return SmallPSDialog::ScrollChanged(item, value);
    }
    SetValue(item, value);
    RedrawAll();
    return true;
}

// The host draws the view whole, whichever part of it is due, so what lies over the view must be
// drawn whole, too: the region chooses the items and clips none.
void TextureDialog::Paint(const Region& region) {
    Port().SetExtraClip(nullptr);
    SmallPSDialog::Paint(region);
}

void TextureDialog::DrawItem(short item) {
    switch (item) {
        case Items::drawingArea:
            RedrawAll();
            break;
        case Items::zoomReadout:
            DrawZoomReadout();
            break;
        case Items::progress:
            shownProgress.reset();
            DrawProgress(0);
            break;
        case Items::colorWells:
            colorPicker->Draw();
            FrameAround(item);
            break;
        case Items::paletteFrame:
            FrameAround(item);
            break;
        default:
            SmallPSDialog::DrawItem(item);
    }
}

/// A line outside the item.
void TextureDialog::FrameAround(short item) {
    const int line = Scale().Pixels(1);
    Port().SetPenWidth(static_cast<short>(line));
    Port().FrameRect(Inset(GetBounds(item), -line, -line));
    Port().SetPenWidth(1);
}

std::uint32_t TextureDialog::HelpAt(short item) {
    // The readout fills its frame, which is what has the text.
    const short shown = item == Items::helpReadout ? short{Items::helpFrame} : item;
    if (const short stringId = help.Follow(shown, HintAt(item)); stringId != 0) {
        SetText(Items::helpReadout, StringText(static_cast<StringId>(stringId)));
    }
    return 0;
}

namespace {

/// The cells of the drawing tools; those of the view are one row.
constexpr int toolColumns = 2;
constexpr int toolRows = 4;

PaletteLayout LayoutOf(const hostapi::Rect& palette, int columns, int rows) {
    PaletteLayout layout;
    layout.rows = rows;
    layout.columns = columns;
    layout.cellWidth = Width(palette) / columns;
    layout.cellHeight = Height(palette) / rows;
    return layout;
}

/// The cells of a palette and their hints, of which the first one is `firstHint`.
std::vector<ItemPart> PaletteParts(const hostapi::Rect& palette, int columns, int rows,
                                   short firstHint, int chosen) {
    const PaletteLayout layout = LayoutOf(palette, columns, rows);
    std::vector<ItemPart> parts;
    for (int cell = 1; cell <= layout.CellCount(); ++cell) {
        const std::string hint = StringText(static_cast<StringId>(firstHint + cell - 1));
        parts.push_back({FirstSentence(hint), "", cell == chosen,
                         Offset(ToRect(CellBounds(layout, cell)), palette.left, palette.top),
                         KeyInHint(hint)});
    }
    return parts;
}

}  // namespace

ItemDescription TextureDialog::Describe(short item) const {
    ItemDescription description = SmallPSDialog::Describe(item);
    if (description.role == ItemRole::system) {
        return description;
    }
    description.help = StringText(static_cast<StringId>(stringItemHelp + item));
    switch (item) {
        case Items::progress:
            description.role = ItemRole::progress;
            break;
        case Items::zoomReadout:
            description.role = ItemRole::text;
            description.value = ZoomText(zoom);
            break;
        case Items::colorWells:
            description.role = ItemRole::group;
            if (colorPicker != nullptr) {
                description.parts = colorPicker->Parts();
                description.focusedPart = focusedWell + 1;
            }
            break;
        case Items::toolPalette:
            description.parts =
                PaletteParts(GetBounds(item), toolColumns, toolRows, ToolHint(0), GetShort(item));
            break;
        case Items::viewPalette:
            description.parts =
                PaletteParts(GetBounds(item), toolColumns, 1, ViewToolHint(0), GetShort(item));
            break;
        case Items::paletteFrame:
            description.role = ItemRole::border;
            break;
        default:
            break;
    }
    // Buttons with a symbol or a picture, and items without a text.
    constexpr std::size_t symbol = 1;
    if (description.name.size() <= symbol) {
        description.name = FirstSentence(description.help);
    }
    return description;
}

namespace {

/// The cell of a palette under a point, from 0 on; -1 outside.
int PaletteCell(const hostapi::Rect& palette, int columns, int rows, hostapi::Point place) {
    return CellAt(LayoutOf(palette, columns, rows), place.h - palette.left, place.v - palette.top) -
           1;
}

}  // namespace

/// The string of the part of an item under the mouse, if the item has parts.
short TextureDialog::HintAt(short item) const {
    const hostapi::Point place = Mouse();
    if (item == Items::toolPalette || item == Items::viewPalette) {
        const bool tools = item == Items::toolPalette;
        const int cell = PaletteCell(GetBounds(item), toolColumns, tools ? toolRows : 1, place);
        if (cell < 0) {
            return HelpReadout::noHint;
        }
        return tools ? ToolHint(static_cast<short>(cell)) : ViewToolHint(static_cast<short>(cell));
    }
    if (item == Items::colorWells) {
        const WellPart part = colorPicker->PartAt(place.h, place.v);
        return part != wellNone ? WellHint(part) : HelpReadout::noHint;
    }
    return HelpReadout::noHint;
}
