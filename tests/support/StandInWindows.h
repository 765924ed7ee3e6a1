// The windows of a run as a script plays them, for tests without a window system.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "resources/Ids.h"
#include "shell/RunWindows.h"

/// The results of the windows, and what they were told.
struct WindowScript {
    bool launchFlag = false;
    int openingEnds = runApplied;
    short contents = SizeItems::blank;
    std::string name = "Untitled 1";
    /// The size that the user typed; the one that the window came with if not set.
    std::optional<std::pair<short, short>> size;
    ImageFile* file = nullptr;
    bool showNewNextTime = false;
    std::int32_t units = 1;
    int editorEnds = runApplied;
    /// The work of the editor's user.
    std::function<void(std::unique_ptr<PaintClass>& pic)> edit;
    bool withoutOpening = false;
    bool withoutEditor = false;

    // The events.
    std::vector<std::string> events;
    /// The size that the opening window came with.
    std::pair<short, short> offered{};
};

/// Plays the windows while it lives. Without a script of its own the New dialog is not shown, and
/// the editor's user draws Lines with the default record and applies.
class StandInWindows {
  public:
    StandInWindows();
    StandInWindows(const StandInWindows&) = delete;
    StandInWindows& operator=(const StandInWindows&) = delete;
    ~StandInWindows();

  private:
    RunWindows saved;
};

/// The script of the running test.
WindowScript& Windows();
