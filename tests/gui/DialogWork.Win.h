// A user's work in dialogs beyond single clicks.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fixtures/GuiDriver.Win.h"

/// The item that has the focus; 0 for none.
int FocusedItem(const DrivenDialog& dialog);
/// Presses Tab until the item has the focus.
void TabTo(const GuiDriver& gui, const DrivenDialog& dialog, int item);
/// The items that have the focus one after the other, until Tab comes back to the first.
std::vector<int> TabOrder(const GuiDriver& gui, const DrivenDialog& dialog);

/// Types a text in place of what is in a field, with the field's focus got by Tab.
void TypeInto(const GuiDriver& gui, const DrivenDialog& dialog, int item, const std::string& text);
/// Chooses an entry of a popup by its place, from 1 on, with the arrow keys.
void ChooseEntry(const GuiDriver& gui, const DrivenDialog& dialog, int item, int place);
/// The same with the mouse in its menu.
void ChooseEntryByMouse(const GuiDriver& gui, const DrivenDialog& dialog, int item, int place);
/// The place of an entry of the open menu, on the screen.
POINT PlaceInMenu(int place);
/// Moves the pointer over an entry of a live popup whose menu is open, until it shows the entry.
void PointAtEntry(const DrivenDialog& dialog, int item, int place);
/// Opens a popup's menu with the mouse.
void OpenMenuOf(const DrivenDialog& dialog, int item);
bool HasOpenMenu(const DrivenDialog& dialog);
/// Waits until the menu is closed and the dialog has taken the choice or restored its values.
void WaitUntilMenuIsClosed(const GuiDriver& gui, const DrivenDialog& dialog);
/// The texts of a popup's entries.
std::vector<std::string> Entries(const DrivenDialog& dialog, int item);

struct SliderLimits {
    int minimum;
    int maximum;
};

/// Where a slider's thumb stands for a value.
ItemPlace PlaceOnSlider(const DrivenDialog& dialog, int item, SliderLimits limits, int value);
/// Drags a slider's thumb over some of its values and lets go. `seen` is called at each, with the
/// button still down.
void DragSlider(const DrivenDialog& dialog, int item, SliderLimits limits,
                const std::vector<int>& values, const std::function<void(int value)>& seen = {});

/// Closes an alert over `under` by one of its buttons.
/// @return the alert's text
std::string AnswerAlert(const GuiDriver& gui, const DrivenDialog& under, int item = 1);
/// Presses a button that closes the dialog, and waits until it has.
void CloseWith(const DrivenDialog& dialog, int item);

/// The whole window, with its frame, as it is on the screen.
host::Picture GrabWithFrame(const DrivenDialog& dialog);
