// Types of files as tests write them.
#pragma once

#include "files/File.h"

constexpr FileType Type(const char (&text)[5]) {
    return hostapi::FourCharacters(text[0], text[1], text[2], text[3]);
}
