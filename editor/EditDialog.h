// The size and the name of a texture: for New and for Edit.
#pragma once

#include <cstdint>
#include <string>

#include "framework/dialog/SmallPSDialog.h"

class EditDialog : public SmallPSDialog {
  public:
    /// The size is in pixels. `newPlacement` is where the dialogs of the class were last; all 0 for
    /// never.
    EditDialog(NorvantaDialog* newOwner, hostapi::Rect& newPlacement, short newWidth,
               short newHeight);

    void Setup() override;
    short ItemHit(short item) override;

    // Before Run.
    void SetWidth(double pixels) { width = pixels; }
    void SetHeight(double pixels) { height = pixels; }
    void SetTextureName(const std::string& newName) { name = newName; }
    /// The window says "New".
    void SetTitleNew() { titleAsNew = true; }

    /// Before Run, or at once in an open dialog, which converts its fields.
    void SetUnits(std::int32_t newUnits);
    std::int32_t Units() const { return units; }

    /// The size in pixels; a side may be 0.
    void PixelSize(short* pixelWidth, short* pixelHeight);
    std::string Name() const;

  protected:
    EditDialog(short newResourceId, NorvantaDialog* newOwner, hostapi::Rect& newPlacement,
               short newWidth, short newHeight);

    /// Reads what is kept when the window has gone. Returns `item`, which closes the dialog.
    virtual short Leave(short item);

  private:
    void SetUpFields();
    void ReadSize();
    void ChangeUnits(std::int32_t newUnits);
    void ConvertFields(std::int32_t newUnits);
    void ShowMemory();

    hostapi::Rect& placement;
    short resolution;
    std::int32_t units;
    /// In pixels until the window opens, in `units` from then on.
    double width;
    double height;
    std::string name;
    bool titleAsNew = false;
};
