// Whether the parts of the editor that are given in pixels follow the resolution.
#pragma once

#include "fixtures/DrivenDialog.Win.h"

/// Scroll bars, zoom buttons, zoom readout and bar, along the edges of the drawing area.
void ExpectRowBelowView(const DrivenDialog& editor);
/// The symbols lie clear of the wells and their lines.
void ExpectWellsBesideSymbols(const DrivenDialog& editor);
