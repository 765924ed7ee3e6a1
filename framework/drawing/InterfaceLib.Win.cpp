#include "framework/drawing/InterfaceLib.Win.h"

#include <algorithm>
#include <string>

#include "base/FatalError.h"
#include "base/Module.Win.h"
#include "base/WindowContext.Win.h"
#include "framework/drawing/GdiObject.Win.h"
#include "framework/drawing/Pictures.Win.h"
#include "framework/drawing/ScreenScale.Win.h"
#include "hostapi/Results.h"

namespace {

constexpr char sourceName[] = "InterfaceLib.Win";
/// Large enough for every window.
constexpr hostapi::Rect everything{0, 0, 30000, 30000};
/// The pen's exclusive-or for areas: not (pattern xor target).
constexpr DWORD invertedPattern = 0x00A50065;
constexpr COLORREF fixedGray = RGB(0x7F, 0x7F, 0x7F);

/// An object that the system may have refused.
GdiObject Made(HGDIOBJ object, int line) {
    CheckError(object, hostapi::memFullErr, sourceName, line);
    return GdiObject(object);
}

int ModifiersBy(SHORT(WINAPI* stateOf)(int key)) {
    const auto bit = [stateOf](int key, int modifier) {
        return (stateOf(key) & 0x8000) != 0 ? modifier : 0;
    };
    return bit(VK_CONTROL, modifierControl) | bit(VK_SHIFT, modifierShift) |
           bit(VK_CAPITAL, modifierCapsLock) | bit(VK_MENU, modifierAlt);
}

/// The index of the system's colour for a number of SystemColor; -1 for an unknown number.
int SystemColorIndex(short number) {
    switch (number) {
        case systemButtonText:
            return COLOR_BTNTEXT;
        case systemGrayText:
            return COLOR_GRAYTEXT;
        case systemHighlight:
            return COLOR_HIGHLIGHT;
        case systemHighlightText:
            return COLOR_HIGHLIGHTTEXT;
        case systemActiveCaption:
        case systemCaption:
            return COLOR_ACTIVECAPTION;
        case systemWindow:
            return COLOR_WINDOW;
        default:
            return -1;
    }
}

UINT DrawTextFormat(unsigned flags) {
    UINT format = DT_NOPREFIX;
    if ((flags & textCentered) != 0) {
        format |= DT_CENTER;
    } else if ((flags & textRight) != 0) {
        format |= DT_RIGHT;
    }
    if ((flags & textNoWrap) == 0) {
        format |= DT_WORDBREAK;
    }
    return format;
}

/// The rectangle moved down so that the text stands in its middle or at its bottom; a text that is
/// higher begins at the top.
RECT PlaceText(HDC context, const char* text, RECT rect, unsigned flags) {
    RECT needed = rect;
    DrawTextA(context, text, -1, &needed, DrawTextFormat(flags) | DT_CALCRECT);
    const LONG spare = (std::max)(0L, (rect.bottom - rect.top) - (needed.bottom - needed.top));
    if ((flags & textMiddle) != 0) {
        rect.top += spare / 2;
    } else if ((flags & textBottom) != 0) {
        rect.top += spare;
    }
    return rect;
}

}  // namespace

// --- Strings and input ---

std::int16_t LoadIndexedString(char* buffer, int base, int index) {
    const UINT id = static_cast<UINT>(base + index);
    if (LoadStringA(instanceHandle, id, buffer, static_cast<int>(textBufferSize)) <= 0) {
        buffer[0] = '\0';
        return faultResourceMissing;
    }
    return 0;
}

int GetModifiers() {
    return ModifiersBy(GetAsyncKeyState);
}

int GetMessageModifiers() {
    return ModifiersBy(GetKeyState);
}

// --- Regions ---

Region::Region() : Region(hostapi::Rect{0, 0, 0, 0}) {}

Region::Region(const hostapi::Rect& rect)
    : handle(CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom)) {
    CheckError(handle, hostapi::memFullErr, sourceName, __LINE__);
}

Region::~Region() {
    DeleteObject(handle);
}

void Region::Set(const hostapi::Rect& rect) {
    SetRectRgn(static_cast<HRGN>(handle), rect.left, rect.top, rect.right, rect.bottom);
}

bool Region::Meets(const hostapi::Rect& rect) const {
    const RECT system = ToSystem(rect);
    return RectInRegion(static_cast<HRGN>(handle), &system) != FALSE;
}

// --- The port ---

struct DrawingPort::Resources {
    GdiObject clip =
        Made(CreateRectRgn(everything.left, everything.top, everything.right, everything.bottom),
             __LINE__);
    GdiObject effectiveClip = Made(CreateRectRgn(0, 0, 0, 0), __LINE__);
    /// Meets the clip while `isExtraClipped`.
    GdiObject extraClip = Made(CreateRectRgn(0, 0, 0, 0), __LINE__);
    bool isExtraClipped = false;
    Region paint;
    /// The cached picture, at the scale of its last size.
    Picture picture;
    short pictureId = 0;
    HICON icon = nullptr;
    short iconId = 0;
    ScreenScale scale;
    HFONT font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));

    ~Resources() {
        if (icon != nullptr) {
            DestroyIcon(icon);
        }
    }
    /// Null for a picture that does not exist.
    HBITMAP PictureFor(short id, SIZE size);
    HICON Icon(short id);
};

HBITMAP DrawingPort::Resources::PictureFor(short id, SIZE size) {
    if (picture.bitmap == nullptr || pictureId != id || picture.size.cx != size.cx) {
        picture = LoadPicture(id, size);
        pictureId = id;
    }
    return As<HBITMAP>(picture.bitmap);
}

HICON DrawingPort::Resources::Icon(short id) {
    if (icon == nullptr || iconId != id) {
        if (icon != nullptr) {
            DestroyIcon(icon);
        }
        icon = LoadScaledIcon(id, scale);
        iconId = id;
    }
    return icon;
}

/// A device context of the port's window, clipped and with the port's pen; given back at the end.
/// Where the system has none to give nothing is drawn: the next paint can.
///
/// The pen and the brushes are the context's own, whose colours can be set: a colour costs no
/// object of the system, of which a process may be out. Only a wide pen is made, and is thin
/// without.
class PortContext {
  public:
    explicit PortContext(const DrawingPort& port)
        : context(static_cast<HWND>(port.target.window)),
          widePen(port.penWidth > 1 ? CreatePen(port.penStyle, port.penWidth, port.foreground)
                                    : nullptr) {
        const DrawingPort::Resources& resources = *port.resources;
        SelectClipRgn(Get(), As<HRGN>(resources.effectiveClip));
        SelectObject(Get(), widePen != nullptr ? widePen.get() : GetStockObject(DC_PEN));
        SetDCPenColor(Get(), port.foreground);
        SelectObject(Get(), GetStockObject(DC_BRUSH));
        SetDCBrushColor(Get(), port.foreground);
        SelectObject(Get(), resources.font);
        SetROP2(Get(), static_cast<int>(port.penMode));
        SetTextColor(Get(), port.foreground);
        SetBkMode(Get(), TRANSPARENT);
    }
    PortContext(const PortContext&) = delete;
    PortContext& operator=(const PortContext&) = delete;
    ~PortContext() {
        // A window's own context keeps what is selected, and the pen goes.
        SelectObject(Get(), GetStockObject(BLACK_PEN));
        SelectObject(Get(), GetStockObject(WHITE_BRUSH));
        SelectObject(Get(), GetStockObject(SYSTEM_FONT));
    }
    HDC Get() const { return context.Get(); }

  private:
    WindowContext context;
    GdiObject widePen;
};

DrawingPort::DrawingPort(void* window)
    : target{window, nullptr},
      resources(std::make_unique<Resources>()),
      foreground(RGB(0, 0, 0)),
      background(GetSysColor(COLOR_BTNFACE)),
      penStyle(PS_SOLID),
      penWidth(1),
      penMode(PenMode::copy) {
    resources->scale = ScaleOf(static_cast<HWND>(window));
    target.clipRegion = resources->clip.get();
    RemakeClip();
}

DrawingPort::~DrawingPort() = default;

void DrawingPort::RemakeClip() {
    const HRGN effective = As<HRGN>(resources->effectiveClip);
    const HRGN clip = As<HRGN>(resources->clip);
    if (resources->isExtraClipped) {
        CombineRgn(effective, clip, As<HRGN>(resources->extraClip), RGN_AND);
    } else {
        CombineRgn(effective, clip, nullptr, RGN_COPY);
    }
}

void DrawingPort::SetPenMode(PenMode mode) {
    penMode = mode;
}

void DrawingPort::ResetPen() {
    penStyle = PS_SOLID;
    penWidth = 1;
    penMode = PenMode::copy;
}

void DrawingPort::SetPenWidth(short width) {
    penWidth = width > 1 ? width : short{1};
}

void DrawingPort::SetForeground(Color24 color) {
    foreground = color;
}

void DrawingPort::SetBackground(Color24 color) {
    background = color;
}

void DrawingPort::SetSystemColor(short number) {
    if (number == systemFixedGray) {
        SetForeground(fixedGray);
        return;
    }
    const int index = SystemColorIndex(number);
    if (index < 0) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    SetForeground(GetSysColor(index));
}

void DrawingPort::DrawLine(hostapi::Point from, hostapi::Point to) {
    const PortContext context(*this);
    MoveToEx(context.Get(), from.h, from.v, nullptr);
    LineTo(context.Get(), to.h, to.v);
    // The system leaves the last pixel out.
    if (penMode == PenMode::copy && penWidth == 1) {
        SetPixelV(context.Get(), to.h, to.v, foreground);
    }
}

void DrawingPort::FillRect(const hostapi::Rect& rect) {
    const PortContext context(*this);
    const RECT system = ToSystem(rect);
    SetDCBrushColor(context.Get(), background);
    ::FillRect(context.Get(), &system, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void DrawingPort::PaintRect(const hostapi::Rect& rect) {
    const PortContext context(*this);
    const RECT system = ToSystem(rect);
    if (penMode == PenMode::exclusiveOr) {
        InvertRect(context.Get(), &system);
    } else {
        ::FillRect(context.Get(), &system, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
}

void DrawingPort::FrameRect(const hostapi::Rect& rect) {
    if (IsEmpty(rect)) {
        return;
    }
    const PortContext context(*this);
    const DWORD operation = penMode == PenMode::copy ? PATCOPY : invertedPattern;
    // Each pixel once, or exclusive-or would take the corners away again.
    const int horizontal = (std::min)(static_cast<int>(penWidth), (Width(rect) + 1) / 2);
    const int vertical = (std::min)(static_cast<int>(penWidth), (Height(rect) + 1) / 2);
    const int lower = rect.bottom - vertical > rect.top ? rect.bottom - vertical : rect.bottom;
    const int right = rect.right - horizontal > rect.left ? rect.right - horizontal : rect.right;
    const int sideTop = rect.top + vertical;
    PatBlt(context.Get(), rect.left, rect.top, Width(rect), vertical, operation);
    PatBlt(context.Get(), rect.left, lower, Width(rect), rect.bottom - lower, operation);
    PatBlt(context.Get(), rect.left, sideTop, horizontal, lower - sideTop, operation);
    PatBlt(context.Get(), right, sideTop, rect.right - right, lower - sideTop, operation);
}

void DrawingPort::DrawEdge(const hostapi::Rect& rect, short sign) {
    const PortContext context(*this);
    RECT system = ToSystem(rect);
    ::DrawEdge(context.Get(), &system, sign <= 0 ? BDR_SUNKENOUTER : BDR_SUNKENINNER, BF_RECT);
}

void DrawingPort::DrawFocus(const hostapi::Rect& rect) {
    if (IsEmpty(rect)) {
        return;
    }
    const PortContext context(*this);
    const RECT frame = ToSystem(rect);
    // The system's frame inverts, and would be gone where it is drawn twice.
    ::FrameRect(context.Get(), &frame, GetSysColorBrush(COLOR_BTNFACE));
    SetTextColor(context.Get(), RGB(0, 0, 0));
    SetBkColor(context.Get(), RGB(255, 255, 255));
    DrawFocusRect(context.Get(), &frame);
}

void DrawingPort::InvalidateRect(const hostapi::Rect& rect) {
    const HWND window = static_cast<HWND>(target.window);
    // A hidden window is drawn whole when it is shown: the system's server is not called.
    if (IsWindowVisible(window)) {
        const RECT system = ToSystem(rect);
        ::InvalidateRect(window, &system, FALSE);
    }
}

void DrawingPort::SetClip(const Region& region) {
    CombineRgn(As<HRGN>(resources->clip), static_cast<HRGN>(region.Handle()), nullptr, RGN_COPY);
    RemakeClip();
}

void DrawingPort::CopyClip(Region& region) const {
    CombineRgn(static_cast<HRGN>(region.Handle()), As<HRGN>(resources->clip), nullptr, RGN_COPY);
}

hostapi::Rect DrawingPort::ClipBox() const {
    RECT box{};
    GetRgnBox(As<HRGN>(resources->clip), &box);
    return RectFromSystem(box);
}

Region& DrawingPort::PaintRegion() {
    return resources->paint;
}

void DrawingPort::SetClipRect(const hostapi::Rect& rect) {
    SetRectRgn(As<HRGN>(resources->clip), rect.left, rect.top, rect.right, rect.bottom);
    RemakeClip();
}

void DrawingPort::SetExtraClip(const Region* region) {
    resources->isExtraClipped = region != nullptr;
    if (region != nullptr) {
        CombineRgn(As<HRGN>(resources->extraClip), static_cast<HRGN>(region->Handle()), nullptr,
                   RGN_COPY);
    }
    RemakeClip();
}

std::int16_t DrawingPort::DrawPicture(short id, const hostapi::Rect& rect) {
    const HBITMAP picture = resources->PictureFor(id, {Width(rect), Height(rect)});
    if (picture == nullptr) {
        return faultResourceMissing;
    }
    const PortContext context(*this);
    const MemoryContext source(context.Get(), picture);
    const SIZE size = BitmapSize(picture);
    SetStretchBltMode(context.Get(), HALFTONE);
    SetBrushOrgEx(context.Get(), 0, 0, nullptr);
    StretchBlt(context.Get(), rect.left, rect.top, Width(rect), Height(rect), source.Get(), 0, 0,
               size.cx, size.cy, SRCCOPY);
    return 0;
}

std::int16_t DrawingPort::DrawIcon(short id, hostapi::Point place) {
    const HICON icon = resources->Icon(id);
    if (icon == nullptr) {
        return faultResourceMissing;
    }
    const PortContext context(*this);
    DrawIconEx(context.Get(), place.h, place.v, icon, 0, 0, 0, nullptr, DI_NORMAL);
    return 0;
}

hostapi::Point DrawingPort::IconSize(short id) {
    const SIZE size = ::IconSize(id, resources->scale);
    return {static_cast<std::int16_t>(size.cy), static_cast<std::int16_t>(size.cx)};
}

void DrawingPort::DrawText(const char* text, const hostapi::Rect& rect, unsigned flags) {
    FillRect(rect);
    const PortContext context(*this);
    RECT place = PlaceText(context.Get(), text, ToSystem(rect), flags);
    DrawTextA(context.Get(), text, -1, &place, DrawTextFormat(flags));
}

void DrawingPort::EnableMenuItem(int id, bool on) {
    ::EnableMenuItem(GetMenu(static_cast<HWND>(target.window)), static_cast<UINT>(id),
                     MF_BYCOMMAND | static_cast<UINT>(on ? MF_ENABLED : MF_GRAYED));
}

void DrawingPort::CheckMenuItem(int id, bool on) {
    ::CheckMenuItem(GetMenu(static_cast<HWND>(target.window)), static_cast<UINT>(id),
                    MF_BYCOMMAND | static_cast<UINT>(on ? MF_CHECKED : MF_UNCHECKED));
}

void DrawingPort::RenameMenuItem(int id, const char* text) {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    std::string name(text);
    info.dwTypeData = name.data();
    SetMenuItemInfoA(GetMenu(static_cast<HWND>(target.window)), static_cast<UINT>(id), FALSE,
                     &info);
}
