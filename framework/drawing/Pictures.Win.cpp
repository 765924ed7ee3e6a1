#include "framework/drawing/Pictures.Win.h"

#include <utility>

#include "base/Module.Win.h"
#include "framework/drawing/InterfaceLib.Win.h"
#include "resources/Ids.h"

namespace {

GdiObject LoadDrawing(int id) {
    return GdiObject(
        LoadImageA(instanceHandle, ResourceName(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
}

/// The directory of an icon, as the format of resources has it; the first icon only.
#pragma pack(push, 2)
struct IconDirectory {
    WORD reserved;
    WORD type;
    WORD count;
    BYTE width;
    BYTE height;
};
#pragma pack(pop)

/// At 100 percent; 0 by 0 for none.
SIZE PlainIconSize(int id) {
    const HRSRC found =
        FindResourceA(instanceHandle, ResourceName(id), reinterpret_cast<LPCSTR>(RT_GROUP_ICON));
    const HGLOBAL loaded = found != nullptr ? LoadResource(instanceHandle, found) : nullptr;
    const auto* const directory =
        loaded != nullptr ? static_cast<const IconDirectory*>(LockResource(loaded)) : nullptr;
    if (directory == nullptr || SizeofResource(instanceHandle, found) < sizeof *directory ||
        directory->count == 0) {
        return {0, 0};
    }
    return {directory->width, directory->height};
}

HICON LoadIconOf(int id, SIZE size, UINT flags) {
    return static_cast<HICON>(LoadImageA(instanceHandle, ResourceName(id), IMAGE_ICON,
                                         static_cast<int>(size.cx), static_cast<int>(size.cy),
                                         flags));
}

SIZE Scaled(SIZE plain, ScreenScale scale) {
    return {scale.Pixels(static_cast<int>(plain.cx)), scale.Pixels(static_cast<int>(plain.cy))};
}

Picture LoadPlain(int id) {
    Picture picture{LoadDrawing(id), 100, {}, {}};
    picture.plain = BitmapSize(As<HBITMAP>(picture.bitmap));
    return picture;
}

/// Takes the drawing nearest to the size, if there is another one than that at 100 percent.
void Fit(Picture& picture, int id, SIZE size) {
    picture.size = size;
    const int index =
        NearestPictureScale(static_cast<int>(picture.plain.cx), static_cast<int>(size.cx));
    if (picture.bitmap == nullptr || index == 0) {
        return;
    }
    if (GdiObject drawing = LoadDrawing(id + index * pictureStep); drawing != nullptr) {
        picture.bitmap = std::move(drawing);
        picture.percent = pictureScales[static_cast<std::size_t>(index)];
    }
}

}  // namespace

Picture LoadPicture(int id, ScreenScale scale) {
    Picture picture = LoadPlain(id);
    Fit(picture, id, Scaled(picture.plain, scale));
    return picture;
}

Picture LoadPicture(int id, SIZE size) {
    Picture picture = LoadPlain(id);
    Fit(picture, id, size);
    return picture;
}

GdiObject ScaledPart(HDC like, HBITMAP picture, const RECT& part, SIZE size) {
    const int width = static_cast<int>(part.right - part.left);
    const int height = static_cast<int>(part.bottom - part.top);
    GdiObject scaled(CreateCompatibleBitmap(like, size.cx, size.cy));
    const MemoryContext from(like, picture);
    const MemoryContext to(like, As<HBITMAP>(scaled));
    SetStretchBltMode(to.Get(), HALFTONE);
    SetBrushOrgEx(to.Get(), 0, 0, nullptr);
    StretchBlt(to.Get(), 0, 0, size.cx, size.cy, from.Get(), part.left, part.top, width, height,
               SRCCOPY);
    return scaled;
}

SIZE IconSize(int id, ScreenScale scale) {
    return Scaled(PlainIconSize(id), scale);
}

HICON LoadSharedIcon(int id) {
    return LoadIconOf(id, PlainIconSize(id), LR_SHARED);
}

HICON LoadScaledIcon(int id, ScreenScale scale) {
    return LoadIconOf(id, IconSize(id, scale), 0);
}
