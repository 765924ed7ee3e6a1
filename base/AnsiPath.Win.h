// Paths for the system's calls that take them in its 8-bit code page.
#pragma once

#include <windows.h>

#include <string>

/// The path in the system's code page; its short form where it has characters that the code page
/// lacks. What it leads to must exist then. Empty if there is no such path.
std::string AnsiPath(const std::wstring& path);

/// The same of a loaded module's file. Empty if the system does not tell it.
std::string AnsiPathOf(HMODULE module);
