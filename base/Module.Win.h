// The loaded library's handle.
#pragma once

#include <windows.h>

/// Written once, at attach; null before.
extern HINSTANCE instanceHandle;
