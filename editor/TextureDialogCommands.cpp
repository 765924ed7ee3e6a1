// The editor's commands on the texture.
#include <algorithm>

#include "base/FatalError.h"
#include "dialogs/filters/TileDialog.h"
#include "editor/EditDialog.h"
#include "editor/TextureDialog.h"
#include "paint/EffectRun.h"
#include "resources/Ids.h"
#include "resources/Strings.h"

namespace {

using Items = TextureItems;

/// The kinds of texture file that `fileFormat` can name. The second does nothing.
enum FileFormat : std::int32_t { formatJPEG = 0, formatNone = 1 };

/// At least one pixel each way.
void ReadSize(EditDialog& dialog, short* width, short* height) {
    dialog.PixelSize(width, height);
    *width = std::max(*width, short{1});
    *height = std::max(*height, short{1});
}

}  // namespace

// --- New textures ---

void TextureDialog::NewTexture() {
    EditDialog dialog(this, dialogPlaces[placedEdit], pic->grX, pic->grY);
    dialog.SetTitleNew();
    dialog.SetUnits(units);
    if (dialog.Run() != okItem) {
        return;
    }
    short width;
    short height;
    ReadSize(dialog, &width, &height);
    std::unique_ptr<PaintClass> fresh = PaintClass::Make(width, height);
    if (fresh == nullptr) {
        Alert(this, alertOutOfMemory);
        return;
    }
    fresh->FillWhite();
    units = dialog.Units();
    files.textureName = dialog.Name();
    ReplaceTexture(std::move(fresh));
}

void TextureDialog::EditTexture() {
    EditDialog dialog(this, dialogPlaces[placedEdit], pic->grX, pic->grY);
    dialog.SetTextureName(files.textureName);
    dialog.SetUnits(units);
    if (dialog.Run() != okItem) {
        return;
    }
    short width;
    short height;
    ReadSize(dialog, &width, &height);
    units = dialog.Units();
    files.textureName = dialog.Name();
    ShowReadouts();
    if (width != pic->grX || height != pic->grY) {
        ReplaceBy(RunResize(*pic, width, height));
    }
}

// The undo store comes with the new texture.
void TextureDialog::ReplaceBy(std::unique_ptr<PaintClass> made) {
    if (made == nullptr) {
        Alert(this, alertOutOfMemory);
        return;
    }
    ReplaceTexture(std::move(made));
}

void TextureDialog::ReplaceTexture(std::unique_ptr<PaintClass> newPic) {
    AdoptTexture(std::move(newPic));
    ShowUndoEntry(false);
    ShowReadouts();
    ZoomChanged();
}

// The old texture is gone: Undo leads back to the tiled one only.
void TextureDialog::RunTile() {
    TileDialog dialog(this, dialogPlaces[placedTile]);
    if (dialog.Run() == okItem) {
        ReplaceBy(::RunTile(*pic, dialog.Counts().horizontal, dialog.Counts().vertical));
    }
}

void TextureDialog::FlipTexture(short mode) {
    TakeUndoSnapshot();
    pic->Flip(mode);
    InvalidateDrawing();
}

void TextureDialog::FlipVertically() {
    FlipTexture(0);
}

void TextureDialog::FlipHorizontally() {
    FlipTexture(1);
}

void TextureDialog::AddBump() {
    TakeUndoSnapshot();
    pic->AddBump();
    InvalidateDrawing();
}

void TextureDialog::InvertTexture() {
    TakeUndoSnapshot();
    pic->Invert();
    InvalidateDrawing();
}

// White, whatever the background colour.
void TextureDialog::ClearTexture() {
    TakeUndoSnapshot();
    pic->FillWhite();
    InvalidateDrawing();
}

// --- Files ---

void TextureDialog::OpenTexture() {
    if (fileFormat == formatNone) {
        return;
    }
    Assert(fileFormat == formatJPEG, "TextureDialog / Zeile 1279 !(false)");
    std::unique_ptr<PaintClass> opened;
    if (!OpenTextureFile(opened, files)) {
        Alert(this, alertNotLoaded);
        return;
    }
    // Null after a Cancel, which leaves everything as it was.
    if (opened != nullptr) {
        ReplaceTexture(std::move(opened));
    }
}

void TextureDialog::SaveTextureFile() {
    if (fileFormat == formatNone) {
        return;
    }
    Assert(fileFormat == formatJPEG, "TextureDialog / Zeile 1312 !(false)");
    if (!SaveTexture(pic.get(), files)) {
        Alert(this, alertNotSaved);
        return;
    }
    ShowReadouts();
    InvalidateDrawing();
}

// --- Effects and filters ---

void TextureDialog::OpenOperation(const Operation& operation) {
    TakeUndoSnapshot();
    const PresetEffect list = operation.Row().presets;
    SimpleLink* const presets = list != presetEffectCount ? &preferences.presets[list] : nullptr;
    const ApplyContext context{this, dialogPlaces[operation.place], presets};
    subDialog = operation.makeDialog(context, preferences);
    if (RunSubDialog()) {
        Remember(operation);
    }
}

/// Runs the dialog in `subDialog`, after OK also the operation if it is still due, and takes the
/// texture back after Cancel. True after OK.
bool TextureDialog::RunSubDialog() {
    const int ended = subDialog->Run();
    if (ended == okItem && subDialog->WasApplied()) {
        subDialog->StoreValues();
        RunOperation(subDialog->ResourceId());
    } else if (ended == cancelItem) {
        RevertToUndo();
    }
    subDialog.reset();
    return ended == okItem;
}

// Never remembered for Repeat.
void TextureDialog::OpenCombine() {
    TakeUndoSnapshot();
    const ApplyContext context{this, dialogPlaces[placedCombine], nullptr};
    subDialog = std::make_unique<CombineDialog>(context, preferences.combine, combineFile);
    RunSubDialog();
}

void TextureDialog::RunCombine() {
    if (!combineFile.HasName()) {
        return;
    }
    const std::unique_ptr<PaintClass> other = ReadTextureImage(combineFile);
    if (other == nullptr) {
        Alert(Active(), alertNotLoaded);
        return;
    }
    if (combineFile.Exists() != 0) {
        return;
    }
    if (!::RunCombine(*pic, *other, preferences.combine.amount, preferences.combine.mode)) {
        Alert(Active(), alertSizesDiffer);
        return;
    }
    ShowResult();
}

void TextureDialog::RunOperation(short id) {
    if (id == combineDialog) {
        RunCombine();
        return;
    }
    const Operation& operation = *OperationWithId(id);
    if (operation.redrawsFirst(preferences)) {
        RedrawAll();
    }
    operation.Run(*pic, preferences);
    ShowResult();
}

/// The bar is empty again, and the drawing area shows the texture at once.
void TextureDialog::ShowResult() {
    InvalidateItem(Items::progress);
    InvalidateDrawing();
    UpdateNow();
}

void TextureDialog::Remember(const Operation& operation) {
    (operation.Row().kind == OperationKind::effect ? lastEffect : lastFilter) = operation.id;
}

void TextureDialog::RepeatEffect(short effect) {
    Assert(effect != 0, "TextureDialog / Zeile 1806 !(effect != 0)");
    RepeatOperation(effect);
}

void TextureDialog::RepeatFilter(short filter) {
    Assert(filter != 0, "TextureDialog / Zeile 1762 !(filter != 0)");
    RepeatOperation(filter);
}

void TextureDialog::RepeatOperation(short id) {
    TakeUndoSnapshot();
    OperationWithId(id)->Run(*pic, preferences);
    ShowResult();
}

void TextureDialog::RepeatLastEffect() {
    RepeatEffect(lastEffect);
}

void TextureDialog::RepeatLastFilter() {
    RepeatFilter(lastFilter);
}

// --- Undo ---

// Where neither memory nor disk takes the pixels, Undo is not available. The user gets no message.
void TextureDialog::TakeUndoSnapshot() {
    ShowUndoEntry(false);
    pic->SaveUndo();
}

void TextureDialog::ShowUndoEntry(bool isRedo) {
    undoIsRedo = isRedo;
    Port().RenameMenuItem(commandUndo, StringText(isRedo ? stringRedo : stringUndo));
}

void TextureDialog::ToggleUndo() {
    ShowUndoEntry(!undoIsRedo);
    pic->SwapUndo();
    InvalidateDrawing();
}

// The store keeps its contents: an Undo after this swaps two equal states.
void TextureDialog::RevertToUndo() {
    if (pic->undo != nullptr) {
        pic->undo->Restore(pic.get());
    }
    InvalidateDrawing();
}
