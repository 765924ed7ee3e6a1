// Where windows stand on the screens: arithmetic alone.
#pragma once

/// In pixels of a window, or on the screens: several of them can lie beyond what 16 bits hold, and
/// those to the left of the primary one, or above it, have negative coordinates. Right and bottom
/// are exclusive.
struct ScreenRect {
    int left;
    int top;
    int right;
    int bottom;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    friend bool operator==(const ScreenRect&, const ScreenRect&) = default;
};

struct Screen {
    ScreenRect whole;
    /// Without the bars of the system.
    ScreenRect work;
};

/// How far an alert or a file dialog stays from the edges of the work area, in pixels.
constexpr int alertMargin = 2;

ScreenRect Moved(const ScreenRect& rect, int horizontal, int vertical);
/// `rect` moved so that its middle lies on that of `around`.
ScreenRect CenteredOn(const ScreenRect& rect, const ScreenRect& around);
/// `rect` moved into `area`; what is too large keeps its top and left inside.
ScreenRect PushedInto(const ScreenRect& rect, const ScreenRect& area);
/// The same, and cut to the area's size first.
ScreenRect FittedInto(const ScreenRect& rect, const ScreenRect& area);
ScreenRect Shrunk(const ScreenRect& rect, int margin);

/// An alert over `around`, inside the screen's work area; what is too large keeps its bottom and
/// right inside, where the buttons are.
ScreenRect AlertPlace(const ScreenRect& alert, const ScreenRect& around, const Screen& screen);

/// A window's normal place as the system keeps it, which counts from the work area of the window's
/// screen instead of from the screen itself, as a place on the screens.
ScreenRect FromWorkspace(const ScreenRect& place, const Screen& screen);
