// The windows in a dialog.
#pragma once

#include <windows.h>

#include <vector>

/// The children of a window from the top, without their own children. As many calls of the system's
/// server as there are children. Throws std::bad_alloc.
std::vector<void*> ChildrenOf(HWND parent);
