// A screen reader: asks windows what they are, by the system's interface.
#pragma once

#include <windows.h>

#include <oleacc.h>

#include <string>
#include <vector>

/// A control, or a part of one, as the reader is told of it.
struct Heard {
    long role = 0;
    std::string name;
    std::string value;
    long state = 0;
    std::string shortcut;
    std::vector<Heard> parts;

    bool Is(long flag) const { return (state & flag) != 0; }
};

/// One in its own thread, beside that of the windows.
class ScreenReader {
  public:
    ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;
    ~ScreenReader();

    /// Throws GuiError if the window gives no object or one that fails.
    Heard Hear(HWND control) const;
    /// The object itself, which the caller releases; null if there is none.
    IAccessible* ObjectOf(HWND control) const;
};

/// The item itself.
VARIANT WholeItem();
