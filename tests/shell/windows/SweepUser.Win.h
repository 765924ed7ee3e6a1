// A user who goes through a run in which anything may fail.
#pragma once

#include <filesystem>
#include <string>

#include "fixtures/GuiDriver.Win.h"

/// The steps of the user in a run.
struct SweepWork {
    /// All of it: two effects with a preset saved, a filter, a stroke, the texture saved. Otherwise
    /// what is there is applied at once.
    bool isFull;
    /// The texture begins with the host's selection, and otherwise blank.
    bool takesSelection;
    /// The side of a blank texture, in pixels.
    int blankWidth;
    int blankHeight;
    std::string presetName;
    /// The texture's file.
    std::filesystem::path savedFile;
};

/// Takes whatever comes: an alert or a fault is read and closed, what does not open is left, and
/// what does not go on is cancelled.
class SweepUser {
  public:
    SweepUser(const GuiDriver& newGui, const SweepWork& newWork) : gui(newGui), work(newWork) {}

    /// Until no dialog is left. Throws GuiError if they have no end.
    void Work();
    /// Whether the texture's file was named and the dialog for it not left.
    bool HasEnteredFile() const { return hasEnteredFile; }

  private:
    void Answer(const DrivenDialog& dialog);
    void FillNew(const DrivenDialog& dialog) const;
    void WorkInEditor(const DrivenDialog& editor);
    void WorkInLines(const DrivenDialog& dialog);
    void EnterFile(const DrivenDialog& dialog);
    void Stroke(const DrivenDialog& editor) const;

    const GuiDriver& gui;
    const SweepWork& work;
    /// Steps taken in the editor.
    int step = 0;
    bool hasSavedPreset = false;
    bool hasEnteredFile = false;
};
