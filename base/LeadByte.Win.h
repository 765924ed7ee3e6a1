// Which bytes begin a double-byte character.
#pragma once

#include <windows.h>

/// In a code page that is installed; in any other no byte is one.
inline bool IsLeadByteOf(UINT codePage, unsigned char byte) {
    return IsDBCSLeadByteEx(codePage, byte) != FALSE;
}

/// In the system's code page.
inline bool IsLeadByte(unsigned char byte) {
    return IsLeadByteOf(CP_ACP, byte);
}
