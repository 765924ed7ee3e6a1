#include "framework/controls/PopupEntries.Win.h"

#include <algorithm>

#include "base/Module.Win.h"
#include "base/Screens.Win.h"
#include "base/WindowContext.Win.h"
#include "framework/controls/ControlSupport.Win.h"
#include "framework/controls/PopupSteps.h"
#include "framework/drawing/InterfaceLib.Win.h"

namespace {

constexpr std::size_t maximalPictures = 32;

// A menu underlines what follows an ampersand; a doubled one stands for the character.

std::string MenuTextOf(const char* text) {
    std::string menuText;
    for (; *text != '\0'; ++text) {
        menuText.append(*text == '&' ? 2 : 1, *text);
    }
    return menuText;
}

std::string TextOfMenu(const char* menuText) {
    std::string text;
    for (; *menuText != '\0'; ++menuText) {
        text += *menuText;
        menuText += menuText[0] == '&' && menuText[1] == '&' ? 1 : 0;
    }
    return text;
}

/// 0 if it cannot be found.
int EntryHeight(HWND control, HMENU menu) {
    RECT rect{};
    return GetMenuItemRect(control, menu, 0, &rect) ? static_cast<int>(rect.bottom - rect.top) : 0;
}

/// The picture as large as a check mark.
GdiObject MarkOf(int resourceId) {
    const WindowContext screen = WindowContext::OfScreen();
    const Picture picture = LoadPicture(
        resourceId, SIZE{GetSystemMetrics(SM_CXMENUCHECK), GetSystemMetrics(SM_CYMENUCHECK)});
    const HBITMAP bitmap = As<HBITMAP>(picture.bitmap);
    const SIZE drawn = BitmapSize(bitmap);
    return ScaledPart(screen.Get(), bitmap, {0, 0, drawn.cx, drawn.cy}, picture.size);
}

}  // namespace

PopupEntries::~PopupEntries() {
    if (resource != nullptr) {
        DestroyMenu(resource);
    }
}

bool PopupEntries::Load(HWND control) {
    resource = LoadMenuA(instanceHandle, ResourceName(PictureId(control)));
    menu = resource != nullptr ? GetSubMenu(resource, 0) : nullptr;
    if (menu == nullptr) {
        return false;
    }
    scale = ScaleOf(control);
    entriesInColumn =
        PopupEntriesInColumn(ScreenOf(control).whole.Height(), EntryHeight(control, menu));
    return true;
}

// --- What there is ---

bool PopupEntries::IsSelectable(int entry) const {
    constexpr UINT unusable = MF_GRAYED | MF_DISABLED | MF_SEPARATOR | MF_POPUP;
    const UINT state = GetMenuState(menu, static_cast<UINT>(entry - 1), MF_BYPOSITION);
    return state != 0xFFFFFFFF && (state & unusable) == 0;
}

int PopupEntries::WithId(UINT id) const {
    for (int entry = 1; entry <= Count(); ++entry) {
        if (IdOf(entry) == id) {
            return entry;
        }
    }
    return 0;
}

std::string PopupEntries::Text(int entry) const {
    char menuText[2 * textBufferSize] = "";
    GetMenuStringA(menu, static_cast<UINT>(entry - 1), menuText, static_cast<int>(sizeof menuText),
                   MF_BYPOSITION);
    return TextOfMenu(menuText);
}

HBITMAP PopupEntries::Picture(int entry) const {
    const UINT id = IdOf(entry);
    const auto found = std::find_if(pictures.begin(), pictures.end(),
                                    [id](const EntryPicture& picture) { return picture.id == id; });
    return found != pictures.end() ? As<HBITMAP>(found->picture) : nullptr;
}

LRESULT PopupEntries::ReadText(int position, char* text) const {
    if (!IsPosition(position)) {
        return CB_ERR;
    }
    const std::string read = Text(position + 1);
    CopyText(text, read.c_str());
    return static_cast<LRESULT>(read.size());
}

// --- Changes ---

LRESULT PopupEntries::Insert(int position, const char* text) {
    const int place = position < 0 || position > Count() ? Count() : position;
    InsertMenuA(menu, static_cast<UINT>(place), MF_BYPOSITION | MF_STRING, NewId(),
                MenuTextOf(text).c_str());
    LayOutColumns();
    return place;
}

LRESULT PopupEntries::Delete(int position) {
    if (!IsPosition(position)) {
        return CB_ERR;
    }
    const UINT id = IdOf(position + 1);
    std::erase_if(pictures, [id](const EntryPicture& picture) { return picture.id == id; });
    DeleteMenu(menu, static_cast<UINT>(position), MF_BYPOSITION);
    LayOutColumns();
    return Count();
}

LRESULT PopupEntries::SetData(int position, LPARAM data) {
    if (!IsPosition(position)) {
        return CB_ERR;
    }
    if (data == 0 || data == 1) {
        EnableMenuItem(menu, static_cast<UINT>(position),
                       MF_BYPOSITION | static_cast<UINT>(data == 1 ? MF_ENABLED : MF_GRAYED));
        return 0;
    }
    return SetPicture(position, static_cast<int>(data)) ? 0 : CB_ERR;
}

UINT PopupEntries::NewId() const {
    UINT largest = 0;
    for (int entry = 1; entry <= Count(); ++entry) {
        const UINT id = IdOf(entry);
        if (id != 0xFFFFFFFF) {
            largest = (std::max)(largest, id);
        }
    }
    return largest + 1;
}

void PopupEntries::LayOutColumns() {
    for (int entry = 1; entry <= Count(); ++entry) {
        MENUITEMINFOA info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE;
        GetMenuItemInfoA(menu, static_cast<UINT>(entry - 1), TRUE, &info);
        info.fType &= ~static_cast<UINT>(MFT_MENUBREAK);
        if (StartsPopupColumn(entry, entriesInColumn)) {
            info.fType |= MFT_MENUBREAK;
        }
        SetMenuItemInfoA(menu, static_cast<UINT>(entry - 1), TRUE, &info);
    }
}

bool PopupEntries::SetPicture(int position, int resourceId) {
    GdiObject picture = LoadPicture(resourceId, scale).bitmap;
    const UINT id = IdOf(position + 1);
    const auto before = std::find_if(pictures.begin(), pictures.end(),
                                     [id](const EntryPicture& other) { return other.id == id; });
    const bool isNew = before == pictures.end();
    if (picture == nullptr || (isNew && pictures.size() >= maximalPictures)) {
        return false;
    }
    GdiObject mark = MarkOf(resourceId);
    SetMenuItemBitmaps(menu, static_cast<UINT>(position), MF_BYPOSITION, As<HBITMAP>(mark),
                       As<HBITMAP>(mark));
    // The menu has the new mark; only now may the old one go.
    EntryPicture entry{id, std::move(mark), std::move(picture)};
    if (isNew) {
        pictures.push_back(std::move(entry));
    } else {
        *before = std::move(entry);
    }
    return true;
}
