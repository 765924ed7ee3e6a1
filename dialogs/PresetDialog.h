// Asks for the name of a new preset.
#pragma once

#include <string>

#include "framework/dialog/SmallPSDialog.h"

class PresetDialog : public SmallPSDialog {
  public:
    explicit PresetDialog(NorvantaDialog* newOwner);

    void Setup() override;
    short ItemHit(short item) override;
    /// Swallows the characters that a preset's name must not be typed with.
    short KeyDown(int key, int modifiers) override;

    /// The name that the dialog was closed with.
    const std::string& Name() const { return name; }

  private:
    std::string name;
};
