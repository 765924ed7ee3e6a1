// The choice of a JPEG's quality: what the quality dialog does beside showing it.
#pragma once

#include <functional>

#include "files/File.h"

/// What the callback of a file is told or asked, beside a quality.
enum QualityOperation : std::int16_t {
    /// The dialog is about to show this quality; the answer replaces it.
    qualityShown = 100,
    /// The user has changed it to this.
    qualityChanged = 101,
    /// The quality that is remembered; the answer replaces it.
    qualityRemembered = 102,
    /// Which quality to write with, before any dialog; an answer above 0 is taken without one.
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
    /// Where the button "Default" leads.
    std::int16_t Default() const;
    bool DefaultIsEnabled() const { return current != Default(); }
    /// Values outside lowest to highest become the nearest of these.
    void Change(std::int16_t quality);

  private:
    std::int16_t Ask(std::int16_t operation, std::int16_t value) const;

    File& file;
    std::function<void(std::int16_t)> apply;
    std::int16_t current;
};
