// The system's interface for screen readers (IAccessible), for the items of dialogs.
//
// A reader asks a control's window for an object, which tells the item's name, role, value and
// state and works only as long as the dialog's window is open. What the system's own controls tell
// of themselves is left to the system. Without oleacc.dll, which need not be there, readers hear
// what the system says.
#pragma once

#include <windows.h>

class NorvantaDialog;

namespace accessibility {

/// The answer to WM_GETOBJECT for a control of a dialog; 0 to leave it to the system.
LRESULT Answer(HWND control, WPARAM wParam, LPARAM lParam);

/// Has an item of the system's own class answer, too.
void Serve(HWND control);

/// The dialog's window closes: objects that readers still hold answer with an error from here on.
void Disconnect(const NorvantaDialog& dialog);

/// The last dialog is gone. Gives the libraries back. The module stays loaded for good if somebody
/// in the host's process goes on holding an object, whose code is in the module.
void Release();

/// Objects that are held by somebody.
int ObjectCount();

}  // namespace accessibility
