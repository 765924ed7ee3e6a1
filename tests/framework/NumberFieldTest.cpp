#include "framework/fields/NumberField.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/CoreTest.h"

namespace {

ItemRecord Field(std::uint8_t letter, int decimals = 0, float minimum = -32768,
                 float maximum = 32767) {
    ItemRecord field;
    field.kind = itemEdit | letter;
    field.decimals = static_cast<std::uint8_t>(decimals);
    field.minimum = minimum;
    field.maximum = maximum;
    return field;
}

/// The number, or its status as a text.
std::string Parsed(const char* text, const ItemRecord& field) {
    double value = -1;
    const std::int16_t status = ParseNumber(text, field, &value);
    return status != 0 ? "status " + std::to_string(status) : std::to_string(value);
}

std::string Formatted(double value, const ItemRecord* field) {
    std::string text;
    const std::int16_t status = FormatNumber(value, field, &text);
    return status != 0 ? "status " + std::to_string(status) : text;
}

/// Restores the process' characters.
class NumberFieldTest : public CoreTest {
  protected:
    ~NumberFieldTest() override { numberCharacters = {}; }

    const ItemRecord integer = Field(itemInteger);
    const ItemRecord real = Field(itemReal, 1);
};

TEST_F(NumberFieldTest, ReadsIntegers) {
    EXPECT_EQ(Parsed("0", integer), "0.000000");
    EXPECT_EQ(Parsed("512", integer), "512.000000");
    EXPECT_EQ(Parsed("+7", integer), "7.000000");
    EXPECT_EQ(Parsed("-45", integer), "-45.000000");
    EXPECT_EQ(Parsed("  12  ", integer), "12.000000");
    EXPECT_EQ(Parsed("\t12\r\n", integer), "12.000000");
}

TEST_F(NumberFieldTest, ReadsReals) {
    EXPECT_EQ(Parsed("7.1", real), "7.100000");
    EXPECT_EQ(Parsed(".5", real), "0.500000");
    EXPECT_EQ(Parsed("5.", real), "5.000000");
    EXPECT_EQ(Parsed("-0.25", real), "-0.250000");
    EXPECT_EQ(Parsed("18", real), "18.000000");
}

TEST_F(NumberFieldTest, PassesOverTheThousandsSeparator) {
    EXPECT_EQ(Parsed("1,000", integer), "1000.000000");
    EXPECT_EQ(Parsed("1,0,0", integer), "100.000000");
    EXPECT_EQ(Parsed("1,000.5", real), "1000.500000");
    EXPECT_EQ(Parsed(",", integer), "0.000000");
}

TEST_F(NumberFieldTest, AFractionIsNoInteger) {
    EXPECT_EQ(Parsed("1.5", integer), "status 18013");
    EXPECT_EQ(Parsed("1.", integer), "status 18013");
}

TEST_F(NumberFieldTest, ASecondDecimalPointIsNoReal) {
    EXPECT_EQ(Parsed("1.2.3", real), "status 18014");
    EXPECT_EQ(Parsed("1..", real), "status 18014");
}

TEST_F(NumberFieldTest, OnlyBlanksMayFollowANumber) {
    EXPECT_EQ(Parsed("12 3", integer), "status 18013");
    EXPECT_EQ(Parsed("12 3", real), "status 18014");
    EXPECT_EQ(Parsed("12 .5", real), "status 18014");
    EXPECT_EQ(Parsed("- 3", integer), "status 18013");
    EXPECT_EQ(Parsed("1 -", integer), "status 18013");
}

TEST_F(NumberFieldTest, LettersAreNoNumber) {
    for (const char* const text : {"a", "1a", "12e3", "0x10", "--1", "+-1", "\xE4", "1\xA0"}) {
        EXPECT_EQ(Parsed(text, integer), "status 18013") << text;
        EXPECT_EQ(Parsed(text, real), "status 18014") << text;
    }
}

TEST_F(NumberFieldTest, NothingButBlanksIsEmpty) {
    EXPECT_EQ(Parsed("", integer), "status 18023");
    EXPECT_EQ(Parsed(" ", integer), "status 18023");
    EXPECT_EQ(Parsed(" \t ", real), "status 18023");
}

TEST_F(NumberFieldTest, ASignAloneIsZero) {
    EXPECT_EQ(Parsed("-", integer), "-0.000000");
    EXPECT_EQ(Parsed("+", integer), "0.000000");
    EXPECT_EQ(Parsed("- ", real), "-0.000000");
}

TEST_F(NumberFieldTest, KeepsTheLimits) {
    const ItemRecord percent = Field(itemInteger, 0, 0, 100);
    EXPECT_EQ(Parsed("-1", percent), "status 18021");
    EXPECT_EQ(Parsed("101", percent), "status 18020");
    EXPECT_EQ(Parsed("100", percent), "100.000000");
    EXPECT_EQ(Parsed(std::string(255, '9').c_str(), percent), "status 18020");
    EXPECT_EQ(Parsed(("-" + std::string(254, '9')).c_str(), percent), "status 18021");
    EXPECT_EQ(Parsed("40000", integer), "status 18020") << "the limits of a new record";
    EXPECT_EQ(Parsed("-32769", integer), "status 18021");
}

TEST_F(NumberFieldTest, TheLimitsHaveATolerance) {
    const ItemRecord field = Field(itemReal, 5, 20.0001F, 30.0001F);
    EXPECT_EQ(Parsed("20.00004", field), "20.000040");
    EXPECT_EQ(Parsed("19.9999", field), "status 18021");
    EXPECT_EQ(Parsed("30.00015", field), "30.000150");
    EXPECT_EQ(Parsed("30.0003", field), "status 18020");
}

TEST_F(NumberFieldTest, TextsAreNotChecked) {
    const ItemRecord text = Field(itemText);
    EXPECT_EQ(Parsed("", text), "status 18023");
    EXPECT_EQ(FaultOf([&] { Parsed("1", text); }), 18019);
    ItemRecord button;
    button.kind = itemButton;
    EXPECT_EQ(FaultOf([&] { Parsed("1", button); }), 18019);
    EXPECT_EQ(Log().faults.size(), 2u);
}

TEST_F(NumberFieldTest, WritesIntegers) {
    EXPECT_EQ(Formatted(0, nullptr), "0");
    EXPECT_EQ(Formatted(12.4, nullptr), "12");
    EXPECT_EQ(Formatted(12.5, nullptr), "13");
    EXPECT_EQ(Formatted(-12.5, nullptr), "-13");
    EXPECT_EQ(Formatted(-45, &integer), "-45");
    EXPECT_EQ(Formatted(4294967294.0, nullptr), "4294967294");
    EXPECT_EQ(Formatted(4294967294.5, nullptr), "status 18022");
    EXPECT_EQ(Formatted(-1e30, nullptr), "status 18022");
    EXPECT_EQ(Formatted(std::numeric_limits<double>::quiet_NaN(), nullptr), "status 18022");
    EXPECT_EQ(Formatted(std::numeric_limits<double>::infinity(), &real), "status 18022");
}

TEST_F(NumberFieldTest, WritesTheSignByTheNumberAndNotByItsDigits) {
    EXPECT_EQ(Formatted(-0.2, nullptr), "-0");
}

TEST_F(NumberFieldTest, WritesReals) {
    EXPECT_EQ(Formatted(7.1F, &real), "7.1");
    EXPECT_EQ(Formatted(0.05, &real), "0.1");
    EXPECT_EQ(Formatted(9.96, &real), "10.0");
    EXPECT_EQ(Formatted(-3.14159, &real), "-3.1");
    const ItemRecord three = Field(itemReal, 3);
    EXPECT_EQ(Formatted(2.0625, &three), "2.063");
    EXPECT_EQ(Formatted(0.001, &three), "0.001");
    const ItemRecord none = Field(itemReal, 0);
    EXPECT_EQ(Formatted(5, &none), "5.") << "the separator comes with the kind";
}

TEST_F(NumberFieldTest, WritesThePlusSignAndPads) {
    ItemRecord field = Field(itemReal, 1);
    field.flags = itemHasPlus;
    field.width = 6;
    EXPECT_EQ(Formatted(2.5, &field), "  +2.5");
    EXPECT_EQ(Formatted(0, &field), "  +0.0");
    EXPECT_EQ(Formatted(-2.5, &field), "  -2.5");
    EXPECT_EQ(Formatted(12345.5, &field), "+12345.5");
}

TEST_F(NumberFieldTest, WritesWhatItReads) {
    ItemRecord field = Field(itemReal, 2, -1000, 1000);
    for (int i = -100000; i <= 100000; i += 37) {
        std::string text;
        ASSERT_EQ(FormatNumber(i / 100.0, &field, &text), 0);
        double value = 0;
        ASSERT_EQ(ParseNumber(text.c_str(), field, &value), 0) << text;
        ASSERT_NEAR(value, i / 100.0, 1e-9) << text;
    }
}

TEST_F(NumberFieldTest, TakesFormats) {
    const auto parse = [](const char* text) {
        FieldFormat format;
        const std::int16_t status = ParseFormat(text, &format);
        return status != 0 ? "status " + std::to_string(status)
                           : std::string(1, static_cast<char>(format.letter)) + " " +
                                 std::to_string(format.width) + " " +
                                 std::to_string(format.decimals) + (format.hasPlus ? " +" : "");
    };
    EXPECT_EQ(parse("%d"), "d 0 0");
    EXPECT_EQ(parse("%+d"), "d 0 0 +");
    EXPECT_EQ(parse("%4d"), "d 4 0");
    EXPECT_EQ(parse("%.1f"), "f 0 1");
    EXPECT_EQ(parse("%+6.2f"), "f 6 2 +");
    EXPECT_EQ(parse("%31s"), "s 31 0");
    EXPECT_EQ(parse("%+31s"), "s 31 0 +");
    EXPECT_EQ(parse("%255s"), "s 255 0");
    for (const char* const bad : {"", "d", "%", "%x", "%.1d", "%.1s", "%.f", "%1.", "%256s", "%dd",
                                  "% d", "%-3d", "%.256f", "%99999999999d"}) {
        EXPECT_EQ(parse(bad), "status 18018") << bad;
    }
}

TEST_F(NumberFieldTest, StoresLimits) {
    ItemRecord field;
    StoreLimits(field, 10, 5);
    EXPECT_EQ(field.minimum, 10);
    EXPECT_EQ(field.maximum, 10);
    StoreLimits(field, -5e29, 7);
    EXPECT_EQ(field.minimum, 10) << "no limit leaves the stored one";
    EXPECT_EQ(field.maximum, 7);
    StoreLimits(field, 1, 5e29);
    EXPECT_EQ(field.minimum, 1);
    EXPECT_EQ(field.maximum, 7);
    ItemRecord fresh;
    StoreLimits(fresh, -1e30, 1e30);
    EXPECT_EQ(fresh.minimum, -32768);
    EXPECT_EQ(fresh.maximum, 32767);
}

TEST_F(NumberFieldTest, StepsWithinTheLimits) {
    ItemRecord field = Field(itemInteger, 0, 1, 100);
    field.value = 20;
    EXPECT_EQ(StepValue(field, true, false), 21);
    EXPECT_EQ(StepValue(field, false, false), 19);
    EXPECT_EQ(StepValue(field, true, true), 30);
    EXPECT_EQ(StepValue(field, false, true), 10);
    field.value = 95;
    EXPECT_EQ(StepValue(field, true, true), 100);
    field.value = 1;
    EXPECT_EQ(StepValue(field, false, false), 1);
    ItemRecord tenths = Field(itemReal, 1, 0, 1);
    tenths.value = 0.5F;
    EXPECT_DOUBLE_EQ(StepValue(tenths, true, false), 0.6);
    EXPECT_DOUBLE_EQ(StepValue(tenths, false, true), 0);
}

TEST_F(NumberFieldTest, ChangesBelowTheLastDigitAreNone) {
    ItemRecord field = Field(itemReal, 1);
    field.value = 5;
    EXPECT_FALSE(IsVisibleChange(field, 5.04));
    EXPECT_FALSE(IsVisibleChange(field, 5.09));
    EXPECT_TRUE(IsVisibleChange(field, 5.1));
    EXPECT_TRUE(IsVisibleChange(field, 4.9));
}

TEST_F(NumberFieldTest, TypingAndSettingPartAtTheSmallestChange) {
    const ItemRecord field = Field(itemInteger, 0);
    EXPECT_TRUE(IsVisibleChange(field, 0.95));
    EXPECT_FALSE(IsShownAnew(field, 0.95));
    EXPECT_FALSE(IsVisibleChange(field, 0.94));
    EXPECT_TRUE(IsShownAnew(field, 0.96));
    EXPECT_TRUE(IsShownAnew(field, -0.96));
}

TEST_F(NumberFieldTest, RefusesWhatNoNumberHas) {
    std::string refused;
    std::string refusedByReals;
    for (int c = 0; c < 256; ++c) {
        if (IsRefusedCharacter(integer, c)) {
            refused += static_cast<char>(c);
        }
        if (IsRefusedCharacter(real, c)) {
            refusedByReals += static_cast<char>(c);
        }
        EXPECT_FALSE(IsRefusedCharacter(Field(itemText), c));
    }
    constexpr char letters[] =
        "/:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz";
    EXPECT_EQ(refusedByReals, "!\"#$%&'()*" + std::string(letters) + "{|}~");
    EXPECT_EQ(refused, "!\"#$%&'()*." + std::string(letters) + "{|}~");
}

TEST_F(NumberFieldTest, TakesUsableLocaleCharacters) {
    const NumberCharacters german = TakeLocaleCharacters({}, {',', '.', '+', '-'});
    EXPECT_EQ(german.decimal, ',');
    EXPECT_EQ(german.thousands, '.');
    const NumberCharacters same = TakeLocaleCharacters({}, {',', ',', 'p', 'm'});
    EXPECT_EQ(same.decimal, '.') << "equal separators leave both";
    EXPECT_EQ(same.thousands, ',');
    EXPECT_EQ(same.plus, 'p');
    EXPECT_EQ(same.minus, 'm');
    const NumberCharacters unusable = TakeLocaleCharacters({}, {' ', '.', ' ', '\0'});
    EXPECT_EQ(unusable.decimal, '.');
    EXPECT_EQ(unusable.thousands, ',');
    EXPECT_EQ(unusable.plus, '+');
    EXPECT_EQ(unusable.minus, '-');
}

TEST_F(NumberFieldTest, UsesTheCharactersOfTheProcess) {
    numberCharacters = {',', '.', '#', '~'};
    EXPECT_EQ(Parsed("1.234,5", real), "1234.500000");
    EXPECT_EQ(Parsed("~3", integer), "-3.000000");
    EXPECT_EQ(Parsed("-3", integer), "status 18013");
    EXPECT_EQ(Formatted(-2.5, &real), "~2,5");
    EXPECT_FALSE(IsRefusedCharacter(real, ','));
    EXPECT_TRUE(IsRefusedCharacter(integer, ','));
}

}  // namespace
