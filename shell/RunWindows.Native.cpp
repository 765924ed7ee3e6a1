// For programs without windows: an interactive run ends for lack of an editor.
#include "shell/RunWindows.h"

RunWindows runWindows = {
    [] { return false; },
    [](hostapi::FilterRecord*, short, short) { return std::unique_ptr<OpeningWindow>(); },
    [](hostapi::FilterRecord*, const std::string&, ImageFile&) {
        return std::unique_ptr<EditorWindow>();
    },
    [](hostapi::FilterRecord*, const std::string&, short, short) {
        return std::unique_ptr<EditorWindow>();
    },
    [](hostapi::FilterRecord*, const std::string&, std::unique_ptr<PaintClass>&) {
        return std::unique_ptr<EditorWindow>();
    }};
