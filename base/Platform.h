// The whole boundary between the neutral code and the system it runs on.
//
// One table of functions, filled at link time by the platform file that goes into a program:
// Platform.Win.cpp for the plug-in, Platform.Native.cpp for the recipe tool and the unit tests.
// Tests exchange single members (see PlatformOverride in tests/).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

struct FileDialog;
class JPEGQualityChoice;

struct PlatformServices {
    /// The clock's time in seconds; SeedRandom reads it.
    std::uint32_t (*clockSeconds)();
    /// Milliseconds from an arbitrary start, wrapping at 2 to the 32nd; BusyTick reads it.
    std::uint32_t (*tickCount)();
    void (*showWaitCursor)();
    void (*showArrowCursor)();
    void (*beep)();
    /// Tells the user of a fault before it is thrown. `file` is a source file or, for a failed
    /// assertion, its text with -1 as the line. Never called for ids outside 1 to 32511.
    void (*reportFault)(std::int16_t id, const char* file, int line);
    /// Writes the system's temporary folder, zero-terminated, and returns its length. Less than 1
    /// or not less than `size` is a failure.
    int (*temporaryPath)(char* buffer, int size);
    void (*showAbout)();
    /// The character between a folder and a file name.
    char pathSeparator;
    /// Runs the alert of this id over the program's window, with the texts for ^0 to ^3 of which
    /// any can be null. Returns the button that ended it, 1 or 2.
    int (*showAlert)(std::int16_t id, const std::array<const char*, 4>& texts);
    /// Runs the system's file dialog and stores the choice in it. False if there was none.
    bool (*runFileDialog)(FileDialog& dialog);
    /// Runs the dialog in which the user chooses the quality of a JPEG. 0, fileCancelled, or
    /// memFullErr where there is no such dialog.
    std::int16_t (*runQualityDialog)(JPEGQualityChoice& choice);
};

extern PlatformServices platformServices;
