#include "framework/drawing/InterfaceLib.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr unsigned char LowerCase(char c) {
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

/// Copies up to `room` bytes of `source` and a zero.
void CopyAtMost(char* target, const char* source, std::size_t room) {
    const std::size_t length = std::min(std::strlen(source), room);
    std::memmove(target, source, length);
    target[length] = '\0';
}

}  // namespace

void CopyText(char* target, const char* source) {
    CopyAtMost(target, source, maximalTextLength);
}

void AppendText(char* target, const char* source) {
    const std::size_t length = std::strlen(target);
    CopyAtMost(target + length, source, maximalTextLength - length);
}

int CompareIgnoringCase(const char* a, const char* b) {
    for (; *a != '\0' && LowerCase(*a) == LowerCase(*b); ++a, ++b) {
    }
    return LowerCase(*a) - LowerCase(*b);
}
