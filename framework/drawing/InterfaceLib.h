// The thin layer through which all drawing of the program passes.
//
// Each dialog has one drawing port: a window with a clip, a pen and two colours. Rectangles are
// top, left, bottom, right with right and bottom exclusive, points vertical first, all in the
// pixels of the window's client area. Nothing is buffered: each operation takes a device context of
// the window, clips it, draws, and gives the context back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/HostServices.h"
#include "base/Rectangles.h"
#include "hostapi/HostTypes.h"

// The system's headers make these names stand for others; here they are the port's own.
#ifdef DrawText
#undef DrawText
#endif

/// The greatest length of a text, a name or a control's content, without the terminating zero.
constexpr std::size_t maximalTextLength = 255;
constexpr std::size_t textBufferSize = maximalTextLength + 1;

// --- Colours ---

/// 24 bits: red in the low byte, then green, then blue.
using Color24 = std::uint32_t;
constexpr Color24 MakeColor24(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}

/// The numbers that DrawingPort::SetSystemColor takes.
enum SystemColor : short {
    systemButtonText = 1,
    systemGrayText = 2,
    systemHighlight = 3,
    systemHighlightText = 4,
    systemActiveCaption = 5,
    /// The dark grey of drawn frames, whatever the user's colours.
    systemFixedGray = 6,
    systemWindow = 7,
    systemCaption = 8,
};

// --- Strings ---

/// Loads the string resource `base` plus `index`, at most 255 bytes, into a buffer of
/// textBufferSize. 0, or faultResourceMissing and an empty text.
std::int16_t LoadIndexedString(char* buffer, int base, int index);
/// Cuts at 255 bytes. `target` holds textBufferSize.
void CopyText(char* target, const char* source);
/// Cuts at 255 bytes in all. `target` holds textBufferSize.
void AppendText(char* target, const char* source);
/// 0 for texts that are equal whatever the case of their ASCII letters, else the sign of the first
/// difference.
int CompareIgnoringCase(const char* a, const char* b);

// --- Input ---

/// Bits of the modifiers word.
enum Modifier : int {
    modifierControl = 1,
    modifierShift = 2,
    modifierCapsLock = 4,
    modifierAlt = 8
};
/// The keys held down now: for a drag, which takes no messages meanwhile.
int GetModifiers();
/// The keys held down when the message that is being handled came: for a key, which may have been
/// let go since.
int GetMessageModifiers();

// --- Regions ---

/// A set of pixels. What cannot be made is FatalError -108.
class Region {
  public:
    /// Empty.
    Region();
    explicit Region(const hostapi::Rect& rect);
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;
    ~Region();

    void Set(const hostapi::Rect& rect);
    bool Meets(const hostapi::Rect& rect) const;
    /// HRGN.
    void* Handle() const { return handle; }

  private:
    void* handle;
};

// --- The port ---

enum class PenMode : short { copy = 13, exclusiveOr = 10 };

/// Flags of DrawingPort::DrawText.
enum TextFlag : unsigned {
    textRight = 2,
    textCentered = 4,
    textMiddle = 16,
    textBottom = 32,
    textNoWrap = 128,
};

class DrawingPort {
  public:
    /// `window` is an HWND. FatalError -108 when the system gives no region. After that no drawing
    /// fails: what the system has no object for is left out, and the next paint draws it.
    explicit DrawingPort(void* window);
    DrawingPort(const DrawingPort&) = delete;
    DrawingPort& operator=(const DrawingPort&) = delete;
    ~DrawingPort();

    /// Window and clip region, for the host's display service.
    const ViewTarget& Target() const { return target; }
    /// HWND.
    void* Window() const { return target.window; }

    void SetPenMode(PenMode mode);
    /// Style 0, width 1, copy.
    void ResetPen();
    void SetPenWidth(short width);

    /// The colour of lines, frames, text and painted rectangles. Starts as black.
    void SetForeground(Color24 color);
    Color24 Foreground() const { return foreground; }
    /// The colour of filled rectangles and under text. Starts as the system's button face.
    void SetBackground(Color24 color);
    Color24 Background() const { return background; }
    /// Makes one of the system's colours the foreground. Other numbers are FatalError 20008.
    void SetSystemColor(short number);

    /// With both ends. In exclusive-or mode without the end, so that lines which meet do not erase
    /// each other's corner.
    void DrawLine(hostapi::Point from, hostapi::Point to);
    /// With the background.
    void FillRect(const hostapi::Rect& rect);
    /// With the foreground; inverts in exclusive-or mode.
    void PaintRect(const hostapi::Rect& rect);
    /// With the foreground, inside the rectangle, as wide as the pen.
    void FrameRect(const hostapi::Rect& rect);
    /// A thin edge: the outer line of a sunken one for 0 or less, else its inner line.
    void DrawEdge(const hostapi::Rect& rect, short sign);

    /// The system's frame of what has the focus, on the background. Nothing for an empty rectangle.
    void DrawFocus(const hostapi::Rect& rect);

    /// Marks for repaint, without erasing.
    void InvalidateRect(const hostapi::Rect& rect);

    /// Drawing is clipped to the clip region and, if there is one, to the extra clip as well.
    void SetClip(const Region& region);
    void CopyClip(Region& region) const;
    /// The rectangle around the clip region.
    hostapi::Rect ClipBox() const;
    void SetClipRect(const hostapi::Rect& rect);
    /// Null takes it away.
    void SetExtraClip(const Region* region);
    /// For the part of the window that a paint is about: it has its region from the port, so that a
    /// paint needs none of the system.
    Region& PaintRegion();

    /// The bitmap resource, in the drawing nearest to the rectangle's width, scaled to it. 0, or
    /// faultResourceMissing with nothing drawn. The last picture stays loaded.
    std::int16_t DrawPicture(short id, const hostapi::Rect& rect);
    /// The icon resource, as large as it is on the window's screen, with its top left corner at
    /// `place`. As DrawPicture.
    std::int16_t DrawIcon(short id, hostapi::Point place);
    /// On the window's screen: height in v and width in h; 0 and 0 for an icon that does not exist.
    hostapi::Point IconSize(short id);

    /// Fills the rectangle with the background, then writes in the foreground. `flags` of TextFlag;
    /// without any: left aligned at the top, wrapped at words.
    void DrawText(const char* text, const hostapi::Rect& rect, unsigned flags);

    // The window's menu, by command id; an unknown id is ignored.
    void EnableMenuItem(int id, bool on);
    void CheckMenuItem(int id, bool on);
    void RenameMenuItem(int id, const char* text);

  private:
    struct Resources;

    void RemakeClip();

    ViewTarget target;
    std::unique_ptr<Resources> resources;
    Color24 foreground;
    Color24 background;
    short penStyle;
    short penWidth;
    PenMode penMode;

    friend class PortContext;
};
