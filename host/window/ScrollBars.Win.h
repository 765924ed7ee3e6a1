// The two scroll bars of a window that shows a part of something larger.
#pragma once

#include <windows.h>

#include "host/window/Viewport.h"

namespace host {

/// Pixels that one line scrolls.
constexpr int scrolledLine = 32;

/// The size of the window without scroll bars.
Size RoomOf(HWND window);
/// The part of `room` that shows `content` beside the bars that it needs then.
Size PageFor(Size content, Size room);
/// Sets one bar, SB_HORZ or SB_VERT: shows it if the page is shorter than the length, else hides
/// it.
void UpdateScrollBar(HWND window, int bar, int length, int page, int position);
/// The position that a bar's message asks for; may be outside its range.
int RequestedPosition(HWND window, int bar, int request);

}  // namespace host
