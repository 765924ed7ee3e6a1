// How the texture is combined with one from a file.
#pragma once

#include "dialogs/ApplyDialog.h"
#include "files/ImageFile.h"

/// Where the editor keeps what was last combined with.
struct CombineChoice {
    /// 1 to 3: the position in the menu, and the mode of PaintClass::Combine.
    std::int16_t& mode;
    /// 0 to 100 percent.
    std::int16_t& amount;
    /// Without a name as long as none was chosen.
    ImageFile& file;
};

/// Opens in the applied state: OK alone runs nothing before a control has changed.
class CombineDialog : public ApplyDialog {
  public:
    /// `newStored` refers to what outlives the dialog. A file stays chosen, however the dialog
    /// ends.
    CombineDialog(const ApplyContext& context, const CombineChoice& newStored);

    void Setup() override;
    short ItemHit(short item) override;
    bool ScrollChanged(short item, int value) override;
    // A mode takes effect when its menu is closed, and only if it differs from the one before.
    void PopupOpens(short item) override;
    void PopupIsClosed(short item) override;

    void StoreValues() override;

  private:
    void KeepValues() override;
    // There are no presets.
    void UsePreset(const void*) override {}
    void HoldValues() override {}
    void ShowHeldValues() override {}
    void* NewPreset() override { return nullptr; }

    void ChooseFile();
    void ShowFile();

    CombineChoice stored;
    std::int16_t mode;
    std::int16_t amount;
    /// The mode when its menu opened; nothing while the menu is closed.
    std::optional<short> modeBeforeMenu;
};
