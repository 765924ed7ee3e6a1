// Alerts on texts that a field refuses, and the texts afterwards.
#include "tests/framework/windows/FieldTest.Win.h"

namespace {

struct BadText {
    int item;
    std::string typed;
    int button;
    std::string alert;
    /// The field's text after the answer.
    std::string left;
    int hits;
};

class BadTextTest : public FieldTest {
  protected:
    void Check(const BadText& bad) {
        Run([&](Script& script) {
            script.SetTextLater(bad.item, bad.typed);
            EXPECT_EQ(script.EndAlert(bad.button), bad.alert);
            script.WaitUntil("the field's text", [&] { return script.Text(bad.item) == bad.left; });
            EXPECT_TRUE(script.IsAllSelected(bad.item)) << "to be typed over";
        });
        EXPECT_EQ(dialog.log.Count("hit " + std::to_string(bad.item)), bad.hits) << bad.typed;
    }
};

TEST_F(BadTextTest, WhatIsNoIntegerIsTakenBack) {
    Check({integerField, "x", 1, "Please enter a valid integer in the range between 1 and 100.",
           "20", 0});
}

TEST_F(BadTextTest, AFractionIsNoInteger) {
    Check({integerField, "1.5", 1, "Please enter a valid integer in the range between 1 and 100.",
           "20", 0});
}

TEST_F(BadTextTest, ADigitBehindABlankIsNoInteger) {
    Check({integerField, "12 3", 1, "Please enter a valid integer in the range between 1 and 100.",
           "20", 0});
}

TEST_F(BadTextTest, WhatIsNoRealIsTakenBack) {
    Check({realField, "1.2.3", 1,
           "Please enter a valid real number in the range between 0.1 and 7.1.", "2.5", 0});
}

TEST_F(BadTextTest, OkTakesTheMaximum) {
    Check({integerField, "500", 1,
           "An integer in the range between 1 and 100 required. Would you like to insert the "
           "closest value?",
           "100", 1});
}

TEST_F(BadTextTest, OkTakesTheMinimum) {
    Check({integerField, "-3", 1,
           "An integer in the range between 1 and 100 required. Would you like to insert the "
           "closest value?",
           "1", 1});
}

TEST_F(BadTextTest, CancelTakesTheOldValueBack) {
    Check({integerField, "500", 2,
           "An integer in the range between 1 and 100 required. Would you like to insert the "
           "closest value?",
           "20", 0});
}

TEST_F(BadTextTest, RealsHaveTheirOwnText) {
    Check({realField, "9", 1,
           "A real number in the range between 0.1 and 7.1 required. Would you like to insert the "
           "closest value?",
           "7.1", 1});
}

TEST_F(BadTextTest, ALongTextIsTakenBack) {
    more = [&] { dialog.SetText(textField, "good"); };
    Check({textField, "longer", 1, "The length of this text field must be less than 5 characters.",
           "longe", 0});
}

TEST_F(BadTextTest, WithoutLimitsOfTheDialogTheUsualOnesHold) {
    more = [&] {
        dialog.SetFormat(label, "%d");
        dialog.SetFormat(textField, "%d");
    };
    Check({textField, "40000", 1,
           "An integer in the range between -32768 and 32767 required. Would you like to insert "
           "the closest value?",
           "32767", 1});
}

}  // namespace
