// The pictures among the resources, drawn for several scales.
//
// A bitmap has a resource for each of `pictureScales`: the id that is asked for, and that plus
// pictureStep and twice pictureStep. One that has none of the others is taken at 100 percent. An
// icon has all of its sizes in one resource, the smallest first.
#pragma once

#include <windows.h>

#include "framework/drawing/GdiObject.Win.h"
#include "framework/drawing/ScreenScale.h"

/// One of the drawings of a picture. Null and 0 by 0 without such a resource.
struct Picture {
    GdiObject bitmap;
    /// The scale of this drawing: one of pictureScales.
    int percent = 100;
    /// The size of the drawing at 100 percent.
    SIZE plain{};
    /// The size on the screen; to show the picture, scale the bitmap to it.
    SIZE size{};
};
/// The drawing nearest to the scale.
Picture LoadPicture(int id, ScreenScale scale);
/// The drawing nearest to a width on the screen, for a place of this size.
Picture LoadPicture(int id, SIZE size);

/// The part of a bitmap as one of its own of another size. Null where the system makes none.
GdiObject ScaledPart(HDC like, HBITMAP picture, const RECT& part, SIZE size);

/// The icon's size on the screen; 0 by 0 without such a resource.
SIZE IconSize(int id, ScreenScale scale);
/// The icon in its size at 100 percent. It stays the system's, which keeps it. Null without such a
/// resource.
HICON LoadSharedIcon(int id);
/// The icon in that size, the caller's to destroy. Null without such a resource.
HICON LoadScaledIcon(int id, ScreenScale scale);
