#include "framework/InterfaceLib.h"

#include <algorithm>
#include <cstring>

namespace {

std::int16_t Sum(int a, int b) {
    return static_cast<std::int16_t>(std::clamp(a + b, INT16_MIN, INT16_MAX));
}

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

hostapi::Rect Inset(const hostapi::Rect& rect, int horizontal, int vertical) {
    return {Sum(rect.top, vertical), Sum(rect.left, horizontal), Sum(rect.bottom, -vertical),
            Sum(rect.right, -horizontal)};
}

hostapi::Rect Offset(const hostapi::Rect& rect, int horizontal, int vertical) {
    return {Sum(rect.top, vertical), Sum(rect.left, horizontal), Sum(rect.bottom, vertical),
            Sum(rect.right, horizontal)};
}

bool IsEqual(const hostapi::Rect& a, const hostapi::Rect& b) {
    return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

bool IsEmpty(const hostapi::Rect& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

bool Contains(const hostapi::Rect& rect, hostapi::Point point) {
    return point.h >= rect.left && point.h < rect.right && point.v >= rect.top &&
           point.v < rect.bottom;
}

bool Meet(const hostapi::Rect& a, const hostapi::Rect& b) {
    return !IsEmpty({std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
                     std::min(a.right, b.right)});
}

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
