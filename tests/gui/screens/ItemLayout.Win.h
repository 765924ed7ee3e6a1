// Whether the items of a window stand as they do at 96 dots an inch: nothing stands over anything
// that it does not stand over there.
#pragma once

#include <vector>

#include "fixtures/DrivenDialog.Win.h"

LONG StyleOf(HWND control);
/// A static control of this type (SS_ICON and so on).
bool IsStatic(HWND control, LONG type);
/// In their order.
std::vector<int> VisibleItems(const DrivenDialog& dialog);

/// No two items, but for those that hold others and those that stand over each other at 96.
void ExpectNoOthersMeet(const DrivenDialog& dialog, int dialogId);
/// Inside the client area.
void ExpectAllInside(const DrivenDialog& dialog, int dialogId);
