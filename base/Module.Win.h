// What belongs to the loaded library.
#pragma once

#include <windows.h>

/// Written once, at attach; null before.
extern HINSTANCE instanceHandle;
