// The choice of a JPEG's quality: the quality dialog without its window.
#pragma once

#include <functional>

#include "files/File.h"

/// Operations of a file's callback; each comes with a quality.
enum QualityOperation : std::int16_t {
    /// The dialog is about to show this quality; the result replaces it.
    qualityShown = 100,
    /// The user has changed the quality to this one.
    qualityChanged = 101,
    /// The remembered quality; the result replaces it.
    qualityRemembered = 102,
    /// The quality to write with before any dialog. A result above 0 is used without one.
    qualityWanted = 103,
};

/// The dialog's state. Its window shows it and calls the changes.
class JPEGQualityChoice {
  public:
    static constexpr std::int16_t lowest = 20;
    static constexpr std::int16_t highest = 100;

    /// Asks the file's callback as a dialog that opens does. `applyQuality` gets the quality that
    /// is shown at first, and every new one at once.
    JPEGQualityChoice(File& choiceFile, std::function<void(std::int16_t)> applyQuality);

    std::int16_t Current() const { return current; }
    /// The quality that the button "Default" sets.
    std::int16_t Default() const;
    bool DefaultIsEnabled() const { return current != Default(); }
    /// Clamps the value to lowest and highest.
    void Change(std::int16_t quality);

  private:
    std::int16_t Ask(std::int16_t operation, std::int16_t value) const;

    File& file;
    std::function<void(std::int16_t)> apply;
    std::int16_t current;
};
