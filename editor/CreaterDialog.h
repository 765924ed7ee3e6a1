// The dialog that opens the plug-in: the first texture's size, and what it starts from.
#pragma once

#include "editor/EditDialog.h"
#include "files/ImageFile.h"

class CreaterDialog final : public EditDialog {
  public:
    CreaterDialog(hostapi::Rect& newPlacement, short newWidth, short newHeight);

    void Setup() override;
    short ItemHit(short item) override;

    /// The item of the contents choice: SizeItems::blank, selection or lastTexture.
    short Contents() const { return contents; }
    /// The file that the user chose in place of all contents; null without one.
    ImageFile* ChosenFile() { return file.HasName() ? &file : nullptr; }
    /// That file's name, or the one in the dialog.
    std::string TextureName() const { return file.HasName() ? file.GetFileName() : Name(); }
    /// False in a dialog that never ran.
    bool ShowNewNextTime() const { return showNextTime; }

  private:
    short Leave(short item) override;
    void ChooseContents(short radio);
    short ChooseFile();

    ImageFile file;
    short contents;
    bool showNextTime = false;
};
