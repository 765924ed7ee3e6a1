// How the texture is combined with one from a file.
#pragma once

#include "dialogs/ParamsDialog.h"
#include "files/ImageFile.h"
#include "paint/records/FilterParams.h"

/// Opens in the applied state: OK alone runs nothing before a control has changed.
class CombineDialog : public ParamsDialog<CombineParams> {
  public:
    /// `newFile` outlives the dialog. It has no name as long as none was chosen, and a file stays
    /// chosen however the dialog ends.
    CombineDialog(const ApplyContext& context, CombineParams& newStored, ImageFile& newFile);

    void Setup() override;
    short ItemHit(short item) override;
    // A mode takes effect when its menu is closed, and only if it differs from the one before.
    void PopupOpens(short item) override;
    void PopupIsClosed(short item) override;

  private:
    void ChooseFile();
    void ShowFile();

    ImageFile& file;
    /// The mode when its menu opened; nothing while the menu is closed.
    std::optional<short> modeBeforeMenu;
};
