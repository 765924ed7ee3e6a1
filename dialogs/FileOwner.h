// A dialog of ours as the owner of the file dialogs of textures.
#pragma once

#include <optional>

#include "files/TextureFile.h"
#include "framework/dialog/NorvantaDialog.h"

class FileOwner final : public TextureFileOwner {
  public:
    explicit FileOwner(const NorvantaDialog& newDialog) : dialog(newDialog) {}

    void* Window() const override { return dialog.Window(); }
    void SuspendDialogs() override { suspension.emplace(); }
    void ResumeDialogs() override { suspension.reset(); }

  private:
    const NorvantaDialog& dialog;
    std::optional<DialogSuspension> suspension;
};
