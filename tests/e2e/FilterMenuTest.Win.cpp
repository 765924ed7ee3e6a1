// The program's own menu, filled with the filters of real files.
#include "host/window/FilterMenu.Win.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "host/plugin/PluginFile.Win.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/WindowResources.h"

namespace host {

namespace {

class FilterMenuTest : public testing::Test {
  protected:
    FilterMenuTest()
        : program(LoadLibraryExW(Wide(HOST_PROGRAM).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)),
          bar(LoadMenuW(program, MAKEINTRESOURCEW(MENU_WINDOW))) {
        if (bar == nullptr)
            throw std::runtime_error("the program has no menu");
    }
    ~FilterMenuTest() override {
        DestroyMenu(bar);
        FreeLibrary(program);
    }

    HMENU Filters() const { return GetSubMenu(bar, MENU_POSITION_FILTER); }
    HMENU About() const { return GetSubMenu(GetSubMenu(bar, MENU_POSITION_HELP), 0); }

    /// All items; separators are empty.
    static std::vector<std::wstring> Items(HMENU menu) {
        std::vector<std::wstring> items;
        for (int position = 0; position < GetMenuItemCount(menu); ++position) {
            wchar_t text[128] = L"";
            GetMenuStringW(menu, static_cast<UINT>(position), text, 128, MF_BYPOSITION);
            items.push_back(text);
        }
        return items;
    }

    HMODULE program;
    HMENU bar;
};

ListedFilter Filter(const std::string& category, const std::string& name) {
    ListedFilter filter;
    filter.description.category = category;
    filter.description.name = name;
    return filter;
}

using Texts = std::vector<std::wstring>;

}  // namespace

TEST_F(FilterMenuTest, HoldsThePluginUnderItsCategory) {
    FilterCatalog catalog;
    for (const ListedFilter& filter : ListFile(PLUGIN_FILE))
        catalog.Add(filter);
    FillFilterMenus(bar, catalog);
    EXPECT_EQ(Items(Filters()),
              (Texts{L"&Last Filter\tCtrl+F", L"", L"Brenvalder", L"", L"&Add Filter Folder..."}));
    HMENU category = GetSubMenu(Filters(), 2);
    EXPECT_EQ(Items(category), Texts{L"Zandermolite 3.0..."});
    EXPECT_EQ(FilterOfCommand(static_cast<int>(GetMenuItemID(category, 0))), 0u);
    EXPECT_EQ(Items(About()), Texts{L"Zandermolite 3.0..."});
    EXPECT_EQ(FilterOfAboutCommand(static_cast<int>(GetMenuItemID(About(), 0))), 0u);
}

TEST_F(FilterMenuTest, SaysWhenThereAreNoFilters) {
    FillFilterMenus(bar, FilterCatalog());
    EXPECT_EQ(Items(Filters())[2], L"(No filters found)");
    EXPECT_EQ(GetMenuState(Filters(), 2, MF_BYPOSITION) & MF_GRAYED, UINT{MF_GRAYED});
    EXPECT_EQ(Items(About()), Texts{L"(No filters found)"});
}

TEST_F(FilterMenuTest, FillingAgainReplacesWhatWasThere) {
    FilterCatalog catalog;
    FillFilterMenus(bar, catalog);
    catalog.Add(Filter("Stylize", "Wind"));
    FillFilterMenus(bar, catalog);
    catalog.Add(Filter("Black & White", "Dots"));
    FillFilterMenus(bar, catalog);
    EXPECT_EQ(Items(Filters()), (Texts{L"&Last Filter\tCtrl+F", L"", L"Black && White", L"Stylize",
                                       L"", L"&Add Filter Folder..."}));
    EXPECT_EQ(Items(About()), (Texts{L"Dots", L"Wind"}));
    // Commands follow the catalog, not the menu's order.
    EXPECT_EQ(FilterOfAboutCommand(static_cast<int>(GetMenuItemID(About(), 0))), 1u);
}

TEST_F(FilterMenuTest, OtherCommandsAreNoFilters) {
    EXPECT_FALSE(FilterOfCommand(COMMAND_OPEN));
    EXPECT_FALSE(FilterOfCommand(COMMAND_FIRST_ABOUT_FILTER));
    EXPECT_FALSE(FilterOfAboutCommand(COMMAND_FIRST_FILTER));
    EXPECT_FALSE(FilterOfAboutCommand(COMMAND_LAST_ABOUT_FILTER + 1));
}

}  // namespace host
