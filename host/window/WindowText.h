// The window's texts, in UTF-8.
#pragma once

#include <string>

#include "host/plugin/PluginFile.h"
#include "host/record/FilterHost.h"
#include "host/window/Document.h"
#include "host/window/Viewport.h"

namespace host {

/// The name without the dots that announce a dialog.
std::string ShortName(const FilterDescription& filter);

/// "out of memory" for -108 and so on; empty for codes that have no words.
std::string ResultWords(std::int16_t result);

/// The end of an execution: "NAME: done", "NAME: cancelled", or the filter's result with its words;
/// then the number of faults. `changed` says whether the picture has changed.
std::string OutcomeText(const RunReport& report, const std::string& name, bool changed);

/// "640 × 480, 72 ppi, RGB".
std::string PictureText(const Picture& picture);

/// "10, 20 to 110, 80 (100 × 60)"; "Nothing selected". An empty rectangle gives an empty text.
std::string SelectionText(const Selection& selection);
std::string BoundsText(const hostapi::VRect& bounds);

/// "12, 34".
std::string PlaceText(Place pixel);

/// "50 %".
std::string ZoomText(double scale);

}  // namespace host
