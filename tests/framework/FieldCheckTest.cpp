#include "framework/fields/FieldCheck.h"

#include <gtest/gtest.h>

#include "framework/fields/NumberField.h"

namespace {

ItemRecord FieldOf(std::uint8_t letter, float minimum, float maximum) {
    ItemRecord record;
    record.kind = itemEdit | letter;
    record.decimals = letter == itemReal ? 1 : 0;
    record.minimum = minimum;
    record.maximum = maximum;
    return record;
}

constexpr float none = 1e30F;

std::string AlertFor(const ItemRecord& record, std::int16_t status) {
    const FieldAlert alert = ChooseFieldAlert(record, status);
    return std::to_string(alert.id) + " (" + alert.texts[0] + ") (" + alert.texts[1] + ")";
}

TEST(FieldCheckTest, AGoodNumberIsAChangeOrNone) {
    ItemRecord record = FieldOf(itemInteger, 0, 100);
    record.value = 5;
    EXPECT_EQ(CheckNumberText("6", record).outcome, NumberCheck::Outcome::changed);
    EXPECT_EQ(CheckNumberText("6", record).value, 6);
    EXPECT_EQ(CheckNumberText("5", record).outcome, NumberCheck::Outcome::unchanged);
    EXPECT_EQ(CheckNumberText(" 5 ", record).outcome, NumberCheck::Outcome::unchanged);
}

TEST(FieldCheckTest, AnEmptyFieldHasNothingToSay) {
    const ItemRecord record = FieldOf(itemInteger, 1, 100);
    EXPECT_EQ(CheckNumberText("", record).outcome, NumberCheck::Outcome::emptied);
    EXPECT_EQ(CheckNumberText("  ", record).outcome, NumberCheck::Outcome::emptied);
}

TEST(FieldCheckTest, AMinusSignOffersTheMinimumZero) {
    const ItemRecord record = FieldOf(itemInteger, 0, 100);
    const NumberCheck check = CheckNumberText("-1", record);
    EXPECT_EQ(check.outcome, NumberCheck::Outcome::bad);
    EXPECT_EQ(check.status, 18021);
    EXPECT_EQ(ClosestValue(record, check.status), 0);
    EXPECT_FALSE(IsRefusedCharacter(record, '-'));
}

TEST(FieldCheckTest, EveryFieldAndLimitHasItsAlert) {
    const ItemRecord integer = FieldOf(itemInteger, 1, 100);
    EXPECT_EQ(AlertFor(integer, 18013), "18001 (1) (100)");
    EXPECT_EQ(AlertFor(FieldOf(itemInteger, 1, none), 18013), "18002 (1) ()");
    EXPECT_EQ(AlertFor(FieldOf(itemInteger, -none, 100), 18013), "18003 (100) ()");
    EXPECT_EQ(AlertFor(FieldOf(itemInteger, -none, none), 18013), "18013 () ()");
    const ItemRecord real = FieldOf(itemReal, 0.1F, 7.1F);
    EXPECT_EQ(AlertFor(real, 18014), "18004 (0.1) (7.1)");
    EXPECT_EQ(AlertFor(FieldOf(itemReal, 0.1F, none), 18014), "18005 (0.1) ()");
    EXPECT_EQ(AlertFor(FieldOf(itemReal, -none, 7.1F), 18014), "18006 (7.1) ()");
    EXPECT_EQ(AlertFor(FieldOf(itemReal, -none, none), 18014), "18014 () ()");
}

TEST(FieldCheckTest, BeyondALimitTheAlertOffersTheClosestValue) {
    for (const std::int16_t status : {fieldAboveMaximum, fieldBelowMinimum}) {
        EXPECT_EQ(AlertFor(FieldOf(itemInteger, 1, 100), status), "18007 (1) (100)");
        EXPECT_EQ(AlertFor(FieldOf(itemInteger, 1, none), status), "18008 (1) ()");
        EXPECT_EQ(AlertFor(FieldOf(itemInteger, -none, 100), status), "18009 (100) ()");
        EXPECT_EQ(AlertFor(FieldOf(itemReal, 1, 7), status), "18010 (1.0) (7.0)");
        EXPECT_EQ(AlertFor(FieldOf(itemReal, 1, none), status), "18011 (1.0) ()");
        EXPECT_EQ(AlertFor(FieldOf(itemReal, -none, 7), status), "18012 (7.0) ()");
        EXPECT_EQ(AlertFor(FieldOf(itemInteger, -none, none), status), "18013 () ()");
        EXPECT_EQ(AlertFor(FieldOf(itemReal, -none, none), status), "18014 () ()");
        EXPECT_TRUE(ChooseFieldAlert(FieldOf(itemInteger, 1, 100), status).offersClosest);
        EXPECT_FALSE(ChooseFieldAlert(FieldOf(itemInteger, -none, none), status).offersClosest);
    }
    EXPECT_FALSE(ChooseFieldAlert(FieldOf(itemInteger, 1, 100), fieldNotInteger).offersClosest);
    EXPECT_FALSE(ChooseFieldAlert(FieldOf(itemReal, 1, 100), fieldNotReal).offersClosest);
    EXPECT_EQ(ClosestValue(FieldOf(itemInteger, 1, 100), fieldAboveMaximum), 100);
    EXPECT_EQ(ClosestValue(FieldOf(itemInteger, 1, 100), fieldBelowMinimum), 1);
}

TEST(FieldCheckTest, ALimitThatNoFieldCanShowIsLeftOut) {
    const ItemRecord record = FieldOf(itemInteger, 1, 1e10F);
    EXPECT_EQ(AlertFor(record, 18013), "18002 (1) ()");
    EXPECT_FALSE(ChooseFieldAlert(record, fieldAboveMaximum).offersClosest);
    EXPECT_TRUE(ChooseFieldAlert(record, fieldBelowMinimum).offersClosest);
    const ItemRecord noneShown = FieldOf(itemInteger, -1e20F, 1e10F);
    EXPECT_EQ(AlertFor(noneShown, fieldAboveMaximum), "18013 () ()");
    EXPECT_FALSE(ChooseFieldAlert(noneShown, fieldAboveMaximum).offersClosest);
}

TEST(FieldCheckTest, TextsHaveAWidth) {
    ItemRecord record = FieldOf(itemText, 0, 0);
    EXPECT_FALSE(IsTooLong(record, std::string(255, 'x')));
    record.width = 31;
    EXPECT_FALSE(IsTooLong(record, std::string(31, 'x')));
    EXPECT_TRUE(IsTooLong(record, std::string(32, 'x')));
}

}  // namespace
