// For programs without windows: an interactive run ends for lack of an editor.
#include "shell/RunWindows.h"

RunWindows runWindows = {
    [] { return false; }, [](short, short) { return std::unique_ptr<OpeningWindow>(); },
    [](const std::string&, ImageFile&) { return std::unique_ptr<EditorWindow>(); },
    [](const std::string&, short, short) { return std::unique_ptr<EditorWindow>(); },
    [](const std::string&, std::unique_ptr<PaintClass>&) {
        return std::unique_ptr<EditorWindow>();
    }};
