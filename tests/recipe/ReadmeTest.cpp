// The table of keys in recipe/README.md says what the catalogue and the tools' records say.
#include <gtest/gtest.h>

#include <charconv>
#include <string>
#include <vector>

#include "paint/Catalog.h"
#include "paint/records/FilterParams.h"
#include "paint/records/ToolParams.h"
#include "recipe/language/Wording.h"
#include "tests/recipe/TemporaryFolder.h"

namespace {

std::string Code(const std::string& text) {
    return "`" + text + "`";
}

std::string Decimal(double number) {
    char digits[32];
    return {std::begin(digits), std::to_chars(std::begin(digits), std::end(digits), number).ptr};
}

std::string ChoicesOf(const Field& field) {
    std::vector<std::string> choices;
    for (const FieldWord& choice : field.words) {
        const std::string number = std::to_string(choice.value);
        choices.push_back(*choice.word == 0 ? number : number + " " + Code(choice.word));
    }
    return recipe::ListOf(choices);
}

/// The range and the default of a field.
std::string RangeOf(const Field& field, const void* defaults) {
    if (field.type == FieldType::color) {
        const RGBColor16 color = ReadColor(field, defaults);
        EXPECT_EQ(color, (RGBColor16{0x7FFF, 0x7FFF, 0x7FFF}));
        return "(0x7FFF each)";
    }
    const std::string range =
        field.words.empty() ? Decimal(field.low) + " to " + Decimal(field.high) : ChoicesOf(field);
    return range + " (" + Decimal(ReadNumber(field, defaults)) + ")";
}

/// The cell of the table: fields one after the other with the same range stand together.
std::string KeysOf(const CatalogRow& row) {
    std::string keys;
    std::string lastRange;
    for (const Field& field : row.fields) {
        const std::string range = RangeOf(field, row.defaults);
        if (range == lastRange) {
            keys.resize(keys.size() - range.size() - 1);
            keys += ", " + Code(field.name) + " " + range;
        } else {
            keys += (keys.empty() ? "" : "; ") + Code(field.name) + " " + range;
        }
        lastRange = range;
    }
    return keys;
}

TEST(Readme, ListsEveryFieldWithItsRangeAndDefault) {
    const std::string readme = ReadFile(std::string(SOURCE_FOLDER) + "/recipe/README.md");
    for (const CatalogRow& row : Catalog()) {
        const std::string cells = "| " + Code(row.name) + " | " + KeysOf(row);
        const std::size_t place = readme.find(cells);
        ASSERT_NE(place, std::string::npos) << "it should say\n" << cells;
        // Skew has a key that is not of its record.
        const std::string rest = readme.substr(place + cells.size(), 2);
        EXPECT_TRUE(rest == " |" || (rest == "; " && std::string(row.name) == "skew")) << row.name;
    }
}

/// Whether the operation's row lists the field with its range and default.
template <typename Record, typename Type>
bool RowHas(const std::string& operation, Type Record::*member) {
    static const std::string readme = ReadFile(std::string(SOURCE_FOLDER) + "/recipe/README.md");
    const std::size_t start = readme.find("| " + Code(operation) + " |");
    const Record defaults;
    const Field& field = FieldFor(member);
    return readme.substr(start, readme.find('\n', start) - start)
               .find(Code(field.name) + " " + RangeOf(field, &defaults)) != std::string::npos;
}

TEST(Readme, ListsTheFieldsOfToolsAndOfRecordsThatNoFileKeeps) {
    EXPECT_TRUE(RowHas("brush", &BrushSettings::size));
    EXPECT_TRUE(RowHas("stamp", &StampSettings::size));
    EXPECT_TRUE(RowHas("fill", &FillSettings::tolerance));
    EXPECT_TRUE(RowHas("fill", &FillSettings::antiAlias));
    EXPECT_TRUE(RowHas("combine", &CombineParams::mode));
    EXPECT_TRUE(RowHas("combine", &CombineParams::amount));
    EXPECT_TRUE(RowHas("tile", &TileParams::vertical));
}

}  // namespace
