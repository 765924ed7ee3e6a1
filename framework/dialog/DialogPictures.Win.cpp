// The pictures that the system's own controls show in a dialog, as its screen needs them, and the
// size of its layout.
#include <windows.h>

#include "base/Module.Win.h"
#include "base/WindowContext.Win.h"
#include "framework/dialog/DialogResource.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "framework/drawing/Pictures.Win.h"

namespace {

HBITMAP BitmapOf(HWND control) {
    return reinterpret_cast<HBITMAP>(SendMessageA(control, STM_GETIMAGE, IMAGE_BITMAP, 0));
}

/// Shows the nearest drawing in the control's size, which grows with the dialog's font. The bitmap
/// is the control's; FreePictures frees it. One that cannot be made leaves the control with its
/// own, which it stretches.
void FitBitmap(HWND control, int id) {
    RECT client{};
    GetClientRect(control, &client);
    const SIZE loaded = BitmapSize(BitmapOf(control));
    if (loaded.cx == client.right && loaded.cy == client.bottom) {
        return;
    }
    const Picture picture = LoadPicture(id, SIZE{client.right, client.bottom});
    const HBITMAP drawn = As<HBITMAP>(picture.bitmap);
    if (drawn == nullptr) {
        return;
    }
    const WindowContext context(control);
    const SIZE size = BitmapSize(drawn);
    GdiObject fitted = ScaledPart(context.Get(), drawn, {0, 0, size.cx, size.cy}, picture.size);
    if (fitted != nullptr) {
        DeleteObject(reinterpret_cast<HGDIOBJ>(SendMessageA(
            control, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(fitted.release()))));
    }
}

struct ResourceBytes {
    const std::uint8_t* bytes = nullptr;
    std::size_t size = 0;
};

ResourceBytes DialogResourceBytes(short dialogId) {
    const HRSRC found =
        FindResourceA(instanceHandle, ResourceName(dialogId), MAKEINTRESOURCEA(5 /* RT_DIALOG */));
    const HGLOBAL loaded = found != nullptr ? LoadResource(instanceHandle, found) : nullptr;
    if (loaded == nullptr) {
        return {};
    }
    return {static_cast<const std::uint8_t*>(LockResource(loaded)),
            SizeofResource(instanceHandle, found)};
}

void DestroyOwnIcon(void* icon) {
    DestroyIcon(static_cast<HICON>(icon));
}

}  // namespace

/// The client area for which the controls were laid out, in pixels: on a small screen the system
/// has cut the window to that already.
SIZE DialogWindow::LayoutSize(const NorvantaDialog& dialog) {
    const ResourceBytes resource = DialogResourceBytes(dialog.resourceId);
    const TemplateSize units = SizeOfTemplate(resource.bytes, resource.size);
    RECT pixels{0, 0, units.width, units.height};
    MapDialogRect(Window(dialog), &pixels);
    return {pixels.right, pixels.bottom};
}

/// An icon for the dialog's screen; null where the system makes none. The system keeps those in
/// their plain size from one window to the next. Others are the dialog's own: the system keeps one
/// size of an icon only.
HICON DialogWindow::FittedIcon(NorvantaDialog& dialog, int id) {
    if (dialog.scale.resolution == plainResolution) {
        return LoadSharedIcon(id);
    }
    NorvantaDialog::OwnedIcon icon(LoadScaledIcon(id, dialog.scale), DestroyOwnIcon);
    const HICON shown = static_cast<HICON>(icon.get());
    if (icon != nullptr) {
        dialog.icons.push_back(std::move(icon));
    }
    return shown;
}

void DialogWindow::FitPictures(NorvantaDialog& dialog) {
    const ResourceBytes resource = DialogResourceBytes(dialog.resourceId);
    for (const TemplatePicture& picture : PicturesOfTemplate(resource.bytes, resource.size)) {
        const auto item = static_cast<short>(picture.control);
        const HWND control = dialog.IsItem(item) ? static_cast<HWND>(dialog.Record(item).control)
                                                 : GetDlgItem(Window(dialog), picture.control);
        const LONG type = GetWindowLongA(control, GWL_STYLE) & SS_TYPEMASK;
        if (type == SS_BITMAP) {
            FitBitmap(control, picture.picture);
        } else if (type == SS_ICON && dialog.scale.resolution != plainResolution) {
            if (const HICON icon = FittedIcon(dialog, picture.picture)) {
                SendMessageA(control, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
            }
        }
    }
}

/// The bitmaps that static controls have, and the dialog's own icons. Not every system frees them
/// when the controls go.
void DialogWindow::FreePictures(NorvantaDialog& dialog) {
    for (const ItemRecord& record : dialog.items) {
        const HWND control = static_cast<HWND>(record.control);
        const LONG style = GetWindowLongA(control, GWL_STYLE);
        if (record.kind == itemText && (style & SS_TYPEMASK) == SS_BITMAP) {
            DeleteObject(
                reinterpret_cast<HGDIOBJ>(SendMessageA(control, STM_SETIMAGE, IMAGE_BITMAP, 0)));
        }
    }
    dialog.icons.clear();
}

void NorvantaDialog::SetButtonIcon(short item, short icon) {
    SendMessageA(static_cast<HWND>(Record(item).control), BM_SETIMAGE, IMAGE_ICON,
                 reinterpret_cast<LPARAM>(DialogWindow::FittedIcon(*this, icon)));
}
