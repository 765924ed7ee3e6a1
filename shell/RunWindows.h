// The two windows of an interactive run, as the run sequence sees them.
//
// The plug-in fills the table with its dialogs (RunWindows.Win.cpp); programs without a window
// system have none (RunWindows.Native.cpp), and tests put in their own.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "paint/PaintClass.h"

class ImageFile;

/// Results of both windows' Run, unless an error has ended them.
constexpr int runApplied = 1;
constexpr int runCancelled = 2;

/// The New dialog. The object lives, closed, until the editor has ended.
class OpeningWindow {
  public:
    OpeningWindow() = default;
    OpeningWindow(const OpeningWindow&) = delete;
    OpeningWindow& operator=(const OpeningWindow&) = delete;
    virtual ~OpeningWindow() = default;

    /// Brackets the window's use: 0 at its beginning, 1 at its end.
    virtual void Bracket(int end) = 0;
    virtual int Run() = 0;

    // The user's choices. A window that never ran has the values that it was made with.

    /// SizeItems::blank, selection or lastTexture.
    virtual short Contents() const = 0;
    /// The name of the chosen file, if there is one.
    virtual std::string Name() const = 0;
    /// A side may be 0.
    virtual void PixelSize(short* width, short* height) = 0;
    /// Takes precedence over Contents(); null for none.
    virtual ImageFile* ChosenFile() = 0;
    virtual bool ShowNewNextTime() const = 0;
    virtual std::int32_t Units() const = 0;
};

/// The editor.
class EditorWindow {
  public:
    EditorWindow() = default;
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    /// Writes the preference file.
    virtual ~EditorWindow() = default;

    /// False without memory.
    virtual bool HasTexture() const = 0;
    virtual void SetShowNewAtLaunch(bool on) = 0;
    virtual void SetUnits(std::int32_t units) = 0;
    virtual int Run() = 0;
    /// Moves the editor's present texture out of it.
    virtual std::unique_ptr<PaintClass> TakeTexture() = 0;
};

/// The makers return null without memory for the object.
struct RunWindows {
    /// Whether the opening window is wanted.
    bool (*readLaunchFlag)();
    std::unique_ptr<OpeningWindow> (*makeOpening)(short width, short height);
    // The editor on a file, on a blank texture, and on `pic`, which it takes over. `pic` may be
    // null, and stays where it is when there is no editor.
    std::unique_ptr<EditorWindow> (*openFile)(const std::string& name, ImageFile& file);
    std::unique_ptr<EditorWindow> (*openBlank)(const std::string& name, short width, short height);
    std::unique_ptr<EditorWindow> (*openTexture)(const std::string& name,
                                                 std::unique_ptr<PaintClass>& pic);
};

extern RunWindows runWindows;
