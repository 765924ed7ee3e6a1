#include <windows.h>

#include "base/Rectangles.h"
#include "host/record/DisplayPixels.h"

namespace host {

hostapi::VRect VisiblePart(const hostapi::VRect& rect, void* context) {
    RECT clip{};
    const int kind = GetClipBox(static_cast<HDC>(context), &clip);
    // Without an answer all of it is drawn, and the system cuts it off.
    return kind == ERROR
               ? rect
               : Intersect(rect, hostapi::VRect{clip.top, clip.left, clip.bottom, clip.right});
}

void DrawRows(const DisplayRows& rows, std::int32_t row, std::int32_t column, void* context) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = rows.width;
    info.bmiHeader.biHeight = -rows.height;  // From the top.
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(static_cast<HDC>(context), column, row, static_cast<DWORD>(rows.width),
                      static_cast<DWORD>(rows.height), 0, 0, 0, static_cast<UINT>(rows.height),
                      rows.bytes.data(), &info, DIB_RGB_COLORS);
}

}  // namespace host
