// The window's side of a dialog: what the system calls, and what becomes of it.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include "framework/dialog/NorvantaDialog.h"
#include "framework/drawing/InterfaceLib.Win.h"

/// Private messages.
enum DialogMessage : UINT {
    /// From a custom control: it was clicked, and nothing changed.
    messageClicked = WM_APP,
    /// To the dialog: its cancel item is hit.
    messageCancel = WM_APP + 2,
    /// From a popup: its menu opens, and is closed again. Each is sent once, with all of the
    /// popup's notifications of the entries in between.
    messageMenuOpens = WM_APP + 3,
    messageMenuIsClosed = WM_APP + 4,
    /// To the dialog: its window is maximised again.
    messageMaximize = WM_APP + 5,
    /// To the dialog: a part of an item is to be used. The item, and the part from 1 on.
    messageUsePart = WM_APP + 6,
};

class DialogWindow {
  public:
    /// For the dialog resources; the parameter of the first message is the NorvantaDialog.
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    /// Stands before the system's own procedure, and keeps it from drawing the caption.
    static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    static void InstallFilter();
    static void RemoveFilter();

    /// The live dialog with this window; null for other windows.
    static NorvantaDialog* Of(HWND window);
    /// The window over which a dialog opens.
    static HWND OwnerOf(const NorvantaDialog& dialog);
    /// The window of the newest open dialog; without one that of the host.
    static HWND InFront();
    /// The window that the host has named, or that which was active when the first dialog was made,
    /// or is now; null for none.
    static HWND OfHost();
    static HWND Window(const NorvantaDialog& dialog) { return static_cast<HWND>(dialog.Window()); }

    // Parts of NorvantaDialog::Setup.
    static void CountItems(NorvantaDialog& dialog);
    static void OrderControls(NorvantaDialog& dialog);
    static void FitPictures(NorvantaDialog& dialog);
    static SIZE LayoutSize(const NorvantaDialog& dialog);
    static void MeasureText(NorvantaDialog& dialog);
    static void NoteFirstSize(NorvantaDialog& dialog);
    // Part of NorvantaDialog::SetPlacement.
    static void FitToScreen(NorvantaDialog& dialog);
    // Parts of NorvantaDialog::Close.
    static void EndScrolling(NorvantaDialog& dialog);
    // Part of NorvantaDialog::Run.
    static void TakeQuit(NorvantaDialog& dialog);
    static void Forget(const NorvantaDialog& dialog);
    static void FreePictures(NorvantaDialog& dialog);
    static HICON FittedIcon(NorvantaDialog& dialog, int id);

  private:
    static void NoteClientRectangle(NorvantaDialog& dialog);
    static void NoteClientPlace(NorvantaDialog& dialog);
    static bool Open(HWND window, NorvantaDialog& dialog);
    static void GiveUp(NorvantaDialog& dialog, std::int16_t id);
    /// Tells the user of a throw that was no fault.
    static void Tell(NorvantaDialog* dialog, std::int16_t id);
    static bool Handle(NorvantaDialog& dialog, UINT message, WPARAM wParam, LPARAM lParam);
    static void HitIfInFront(NorvantaDialog& dialog, short item);
    static bool Translate(NorvantaDialog& dialog, UINT message, WPARAM wParam, LPARAM lParam);
    static void Refresh(NorvantaDialog& dialog, UINT message);
    static void RefreshCursorAndHelp(POINT screen);
    static bool IsUsable(NorvantaDialog& dialog, hostapi::Point place);

    static bool TakeCommand(NorvantaDialog& dialog, WPARAM wParam, LPARAM lParam);
    static bool TakeNotification(NorvantaDialog& dialog, WPARAM wParam, LPARAM lParam);
    static bool TakeScroll(NorvantaDialog& dialog, int code, int place, HWND control);
    static void TakeSize(NorvantaDialog& dialog, WPARAM wParam);
    static void TakeActivation(NorvantaDialog& dialog, bool on);
    static void TakeDroppedFiles(NorvantaDialog& dialog, HDROP drop);

    static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam);
    static bool FilterMessage(const MSG& message);
    static void TrackFocus();
    static bool FilterKey(NorvantaDialog& dialog, const MSG& message);
    static bool FollowMnemonic(NorvantaDialog& dialog, const MSG& message);
    static short ItemOfLabel(const NorvantaDialog& dialog, short label);
    static bool ChooseInGroup(NorvantaDialog& dialog, const MSG& message);
    static bool PressFocused(NorvantaDialog& dialog, const MSG& message);
    static bool UseItem(NorvantaDialog& dialog, const MSG& message);
    static bool FilterSystemKey(NorvantaDialog& dialog, int character);
};
