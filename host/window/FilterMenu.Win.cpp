#include "host/window/FilterMenu.Win.h"

#include "host/window/NativeWindow.Win.h"
#include "host/window/WindowResources.h"

namespace host {

namespace {

// After "Last Filter" and its separator.
constexpr int firstCategoryPosition = 2;
// The separator and "Add Filter Folder..." after the categories.
constexpr int itemsBehindCategories = 2;

// A name in which no character is taken for the sign of a key.
std::wstring MenuText(const std::string& name) {
    std::wstring text;
    for (wchar_t character : WideFromAnsi(name)) {
        if (character == L'&') {
            text += L'&';
        }
        text += character;
    }
    return text;
}

void AppendFilters(HMENU menu, const FilterCatalog& catalog, const CatalogGroup& group,
                   int firstCommand) {
    for (std::size_t position : group.entries) {
        AppendMenuW(menu, MF_STRING, static_cast<UINT>(firstCommand) + position,
                    MenuText(catalog.At(position).description.name).c_str());
    }
}

void RemoveItems(HMENU menu, int first, int end) {
    for (int position = end - 1; position >= first; --position) {
        DeleteMenu(menu, static_cast<UINT>(position), MF_BYPOSITION);
    }
}

void FillFilterMenu(HMENU menu, const FilterCatalog& catalog) {
    RemoveItems(menu, firstCategoryPosition, GetMenuItemCount(menu) - itemsBehindCategories);
    UINT position = firstCategoryPosition;
    for (const CatalogGroup& group : catalog.Groups()) {
        HMENU submenu = CreatePopupMenu();
        AppendFilters(submenu, catalog, group, COMMAND_FIRST_FILTER);
        InsertMenuW(menu, position++, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(submenu),
                    MenuText(group.category).c_str());
    }
    if (catalog.IsEmpty()) {
        InsertMenuW(menu, position, MF_BYPOSITION | MF_GRAYED, 0, L"(No filters found)");
    }
}

void FillAboutMenu(HMENU menu, const FilterCatalog& catalog) {
    RemoveItems(menu, 0, GetMenuItemCount(menu));
    for (const CatalogGroup& group : catalog.Groups()) {
        AppendFilters(menu, catalog, group, COMMAND_FIRST_ABOUT_FILTER);
    }
    if (catalog.IsEmpty()) {
        AppendMenuW(menu, MF_GRAYED, 0, L"(No filters found)");
    }
}

}  // namespace

void FillFilterMenus(HMENU menuBar, const FilterCatalog& catalog) {
    FillFilterMenu(GetSubMenu(menuBar, MENU_POSITION_FILTER), catalog);
    FillAboutMenu(GetSubMenu(GetSubMenu(menuBar, MENU_POSITION_HELP), 0), catalog);
}

std::optional<std::size_t> FilterOfCommand(int command) {
    if (command < COMMAND_FIRST_FILTER || command >= COMMAND_FIRST_ABOUT_FILTER) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(command - COMMAND_FIRST_FILTER);
}

std::optional<std::size_t> FilterOfAboutCommand(int command) {
    if (command < COMMAND_FIRST_ABOUT_FILTER || command > COMMAND_LAST_ABOUT_FILTER) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(command - COMMAND_FIRST_ABOUT_FILTER);
}

void SetItemText(HMENU menu, UINT command, const std::wstring& text) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    std::wstring buffer = text;
    info.dwTypeData = buffer.data();
    SetMenuItemInfoW(menu, command, FALSE, &info);
}

}  // namespace host
