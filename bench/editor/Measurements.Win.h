// The measurements of bench-editor: the real windows, in a host of our own, with real input, for
// which they need the mouse for themselves. Each prints its figures; see bench/README.md.
#pragma once

/// How soon the editor is on the screen.
void MeasureOpenings();
/// How closely a stroke of the brush follows the mouse.
void MeasureStrokes();
/// How soon each dialog's Apply shows its result.
void MeasureApplies();
/// How long the texture takes into a large selection.
void MeasureTransfer();
/// How long the settings take to a file and back, as many as there can be.
void MeasurePresets();
