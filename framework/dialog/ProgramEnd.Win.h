// The message that ends the program, WM_QUIT, while dialogs are open. It belongs to the loop of the
// host, and every loop in between has to end and to post it again. Dialogs' loops do; those of
// menus, scroll bars and window frames end, if at all, without it on some systems.
#pragma once

#include <windows.h>

class ProgramEnd {
  public:
    /// Notes from now on what is taken from the thread's queue. Where the system refuses that, its
    /// loops do what they do.
    static void Watch();
    static void Unwatch();
    /// Posts the message again if it has been taken. Does nothing else.
    static void PostAgain();

  private:
    static LRESULT CALLBACK Take(int code, WPARAM wParam, LPARAM lParam);
};
