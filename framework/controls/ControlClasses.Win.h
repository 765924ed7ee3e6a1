// The window classes of the program's own controls, and the protocol that they share.
#pragma once

#include <windows.h>

#include <vector>

#include "framework/dialog/ItemRecord.h"

/// Messages of the family.
enum ControlMessage : UINT {
    controlGetValue = WM_USER,
    /// Returns 0.
    controlGetMinimum = WM_USER + 1,
    /// Returns the number of cells.
    controlGetCount = WM_USER + 2,
    controlSetValue = WM_USER + 5,
    /// The minimum in the low and the maximum in the high 16 bits.
    controlSetRange = WM_USER + 6,
};

/// Called before the first dialog of the process, and after the last.
void RegisterControlClasses();
void UnregisterControlClasses();

/// Stacks the children of a window from the top as `wanted` has them. Those that stand so already
/// are left alone: a dialog has dozens, and each move is a call of the system's server. `stacking`
/// has all children from the top, before and after: to ask for them is as many calls.
void StackInOrder(const std::vector<void*>& wanted, std::vector<void*>& stacking);

/// The flags of SetWindowPos for a control that is moved: in a hidden dialog there is nothing to
/// draw or to erase, and the system's server is not asked what.
UINT RedrawOfMoved(HWND control);

bool IsUserItem(HWND control);
/// The dialog draws a user item anew, and the frame of its focus, on a new background.
void EraseUserItem(HWND control);

/// Brings the controls of a dialog that has just opened into shape: visual themes are off, edit
/// fields take 255 bytes, tabs get their names.
void PrepareControls(const std::vector<ItemRecord>& items);
