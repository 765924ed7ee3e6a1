// Whether the pictures of a window are as large as its resolution asks for, and stand in their
// places.
#pragma once

#include "fixtures/DrivenDialog.Win.h"

SIZE IconSize(HICON icon);
/// The box around what differs from the face of a button or a palette within a part of the client
/// area.
RECT InkIn(const host::Picture& client, const RECT& part);

/// How many pictures the window has. Cards fill their items; symbols have the size that they have
/// at 96, scaled, and room for it.
int CountFittingPictures(const DrivenDialog& dialog, int dialogId);
/// 3 pixels from the left, in the middle and one higher. For the editor with nothing to repeat.
void ExpectButtonPictures(const DrivenDialog& editor);
void ExpectPalettePictures(const DrivenDialog& editor);
/// The knob is coral; so is nothing else on a dial.
void ExpectKnob(const DrivenDialog& dialog, int item);
