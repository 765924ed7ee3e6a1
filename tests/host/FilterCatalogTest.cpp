#include "host/plugin/FilterCatalog.h"

#include <gtest/gtest.h>

namespace host {

namespace {

ListedFilter Filter(const std::string& file, const std::string& category, const std::string& name) {
    ListedFilter filter;
    filter.file = file;
    filter.description.category = category;
    filter.description.name = name;
    return filter;
}

/// "Category: name, name; Category: name".
std::string Listed(const FilterCatalog& catalog) {
    std::string text;
    for (const CatalogGroup& group : catalog.Groups()) {
        text += (text.empty() ? "" : "; ") + group.category + ":";
        for (std::size_t position : group.entries) {
            text += " " + catalog.At(position).description.name;
        }
    }
    return text;
}

}  // namespace

TEST(FilterCatalogTest, SortsWithoutRegardToCase) {
    FilterCatalog catalog;
    EXPECT_TRUE(catalog.IsEmpty());
    catalog.Add(Filter("a", "stylize", "wind"));
    catalog.Add(Filter("b", "Render", "Clouds"));
    catalog.Add(Filter("c", "stylize", "Emboss"));
    catalog.Add(Filter("d", "Blur", "Box"));
    EXPECT_EQ(Listed(catalog), "Blur: Box; Render: Clouds; stylize: Emboss wind");
}

TEST(FilterCatalogTest, PositionsStay) {
    FilterCatalog catalog;
    EXPECT_EQ(catalog.Add(Filter("z", "Z", "Last")), 0u);
    EXPECT_EQ(catalog.Add(Filter("a", "A", "First")), 1u);
    EXPECT_EQ(catalog.At(0).description.name, "Last");
    EXPECT_EQ(catalog.Groups()[0].entries, std::vector<std::size_t>{1});
}

TEST(FilterCatalogTest, TheSameFilterComesInOnce) {
    FilterCatalog catalog;
    catalog.Add(Filter("a", "A", "One"));
    catalog.Add(Filter("a", "A", "Two"));
    EXPECT_EQ(catalog.Add(Filter("a", "A", "One")), 0u);
    // The same name in another file is another filter.
    EXPECT_EQ(catalog.Add(Filter("b", "A", "One")), 2u);
    EXPECT_EQ(catalog.Count(), 3u);
    EXPECT_EQ(Listed(catalog), "A: One One Two");
}

TEST(FilterCatalogTest, AFilterWithoutACategoryStandsUnderOther) {
    FilterCatalog catalog;
    catalog.Add(Filter("a", "", "Lonely"));
    catalog.Add(Filter("b", "Other", "Friend"));
    EXPECT_EQ(Listed(catalog), "Other: Friend Lonely");
}

}  // namespace host
