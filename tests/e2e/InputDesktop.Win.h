// A desktop of the test's own, with a mouse and a keyboard.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Moves this thread to a new desktop, so that tests that run at the same time don't take the focus
/// from each other. Programs started on it share its input. Call before the thread has windows.
/// Answers the desktop's name.
const std::wstring& EnterOwnDesktop();

/// One key's press or release.
struct KeyEvent {
    WORD key;
    bool isPressed;
};

void SendKey(const KeyEvent& event);
/// Of each chord the keys are pressed in their order and released in the opposite one. All at once:
/// nothing that the program does comes in between.
void SendChords(const std::vector<std::vector<WORD>>& chords);

/// In pixels of the screen.
void MoveMouse(POINT place);
void PressMouse();
void ReleaseMouse();
/// Towards the user, so that what lies below comes up.
void TurnWheel(int notches);
