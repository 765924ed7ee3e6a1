// Fields: keys, checks, values.
#include "tests/framework/windows/FieldTest.Win.h"
#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/fields/NumberField.h"

namespace {

TEST_F(FieldTest, ProgramTextsAreNoHits) {
    Run([&](Script& script) {
        EXPECT_EQ(script.Text(integerField), "20");
        EXPECT_EQ(script.Text(realField), "2.5");
    });
    EXPECT_EQ(dialog.log.Count("hit 3"), 0);
    EXPECT_EQ(dialog.log.Count("hit 4"), 0);
}

TEST_F(FieldTest, EachGoodChangeIsAHit) {
    double value = 0;
    dialog.atHit = [&](short item) {
        value = dialog.GetValue(integerField);
        return item <= 2 ? item : short{0};
    };
    Run([&](Script& script) {
        Fill(script, integerField, "45");
        script.WaitFor("hit 3", 2);
    });
    EXPECT_EQ(value, 45);
    EXPECT_EQ(dialog.log.Count("hit 3"), 2) << "4, then 45";
}

TEST_F(FieldTest, AChangeThatTheFieldDoesNotShowIsNone) {
    Run([&](Script& script) {
        script.SetText(realField, "2.54");
        script.SetText(realField, "2.50");
        script.SetText(realField, "2.6");
        script.WaitFor("hit 4");
    });
    EXPECT_EQ(dialog.log.Count("hit 4"), 1);
}

TEST_F(FieldTest, LettersAreRefusedWithABeep) {
    Run([&](Script& script) {
        Fill(script, integerField, "1a2.");
        EXPECT_EQ(script.Text(integerField), "12");
        EXPECT_EQ(Log().beeps, 2);
        Fill(script, textField, "a.1");
        EXPECT_EQ(script.Text(textField), "a.1");
        EXPECT_EQ(Log().beeps, 2);
    });
}

TEST_F(FieldTest, ArrowsStepTheNumber) {
    Run([&](Script& script) {
        script.Click(script.Middle(integerField));
        script.Keys({{VK_UP}});
        EXPECT_EQ(script.Text(integerField), "21");
        script.Keys({{VK_SHIFT, VK_DOWN}});
        EXPECT_EQ(script.Text(integerField), "11");
        script.Keys({{VK_SHIFT, VK_DOWN}, {VK_SHIFT, VK_DOWN}});
        EXPECT_EQ(script.Text(integerField), "1");
        script.Keys({{VK_DOWN}});
        EXPECT_EQ(script.Text(integerField), "1");
        script.Click(script.Middle(realField));
        script.Keys({{VK_UP}, {VK_UP}});
        EXPECT_EQ(script.Text(realField), "2.7");
        script.Keys({{VK_SHIFT, VK_UP}});
        EXPECT_EQ(script.Text(realField), "3.7");
        DWORD begin = 9;
        DWORD end = 9;
        SendMessageA(script.Item(realField), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                     reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(begin, 0u);
        EXPECT_EQ(end, 3u) << "selected, to be typed over";
    });
    EXPECT_EQ(dialog.log.Count("hit 3"), 3) << "not where nothing changed";
    EXPECT_EQ(dialog.log.Count("hit 4"), 3);
}

TEST_F(FieldTest, AMinusSignIsTypedAndItsNumberRefused) {
    more = [&] { dialog.SetRange(integerField, 0, 100); };
    Run([&](Script& script) {
        Fill(script, integerField, "-");
        EXPECT_EQ(script.Text(integerField), "-");
        EXPECT_EQ(Log().beeps, 0);
        SendChords({{'5'}});
        EXPECT_EQ(script.EndAlert(1),
                  "An integer in the range between 0 and 100 required. Would you like to insert "
                  "the closest value?");
        EXPECT_EQ(script.Text(integerField), "0");
    });
}

TEST_F(FieldTest, ThousandsAreSeparatedAsTheUserLikes) {
    double value = 0;
    more = [&] { dialog.SetRange(integerField, 0, 30000); };
    dialog.atHit = [&](short item) {
        value = dialog.GetValue(integerField);
        return item <= 2 ? item : short{0};
    };
    Run([&](Script& script) {
        script.SetText(integerField, "1,000");
        script.WaitFor("hit 3");
        EXPECT_EQ(script.Text(integerField), "1,000") << "left as typed";
    });
    EXPECT_EQ(value, 1000);
}

/// The user's decimal separator, for a time.
class DecimalSeparator {
  public:
    explicit DecimalSeparator(const char* text) {
        GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before, sizeof before);
        EXPECT_TRUE(SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text));
    }
    DecimalSeparator(const DecimalSeparator&) = delete;
    DecimalSeparator& operator=(const DecimalSeparator&) = delete;
    ~DecimalSeparator() { SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before); }

  private:
    char before[8] = "";
};

// The decimal separator is read for both, so none is ever taken.
TEST_F(FieldTest, OneSeparatorForBothIsNotTakenFromTheLocale) {
    const DecimalSeparator odd(";");
    more = [] {
        EXPECT_EQ(numberCharacters.decimal, '.');
        EXPECT_EQ(numberCharacters.thousands, ',');
        EXPECT_EQ(numberCharacters.plus, '+');
        EXPECT_EQ(numberCharacters.minus, '-');
    };
    Run([](Script& script) { EXPECT_EQ(script.Text(realField), "2.5"); });
}

TEST_F(FieldTest, AValueThatShowsAlikeLeavesTheTextAlone) {
    more = [&] {
        dialog.SetText(realField, "2.50");
        dialog.SetValue(realField, 2.54);
        EXPECT_EQ(dialog.GetText(realField), "2.50");
        EXPECT_NEAR(dialog.GetValue(realField), 2.54, 1e-6) << "stored all the same";
        dialog.SetValue(realField, 2.65);
        EXPECT_EQ(dialog.GetText(realField), "2.7");
    };
    Run([](Script&) {});
}

TEST_F(FieldTest, ANewValueCanBeSelected) {
    DWORD begin = 9;
    DWORD end = 9;
    more = [&] {
        dialog.SetValue(integerField, 77, true);
        SendMessageA(GetDlgItem(static_cast<HWND>(dialog.Window()), integerField), EM_GETSEL,
                     reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    };
    Run([](Script&) {});
    EXPECT_EQ(begin, 0u);
    EXPECT_EQ(end, 2u);
}

TEST_F(FieldTest, APlusInTheFormatShowsTheSign) {
    more = [&] {
        dialog.SetFormat(integerField, "%+4d", -100, 100);
        dialog.SetValue(integerField, 5);
        EXPECT_EQ(dialog.GetText(integerField), "  +5");
        dialog.SetValue(integerField, -5);
        EXPECT_EQ(dialog.GetText(integerField), "  -5");
    };
    Run([](Script&) {});
}

TEST_F(FieldTest, TextsAreCutAt255Bytes) {
    more = [&] {
        dialog.SetFormat(textField, "%s");
        dialog.SetText(textField, std::string(300, 'x').c_str());
        EXPECT_EQ(dialog.GetText(textField), std::string(255, 'x'));
    };
    Run([](Script&) {});
}

TEST_F(FieldTest, AFieldTakesNoMoreThan255BytesFromTheUser) {
    more = [&] { dialog.SetFormat(textField, "%s"); };
    Run([&](Script& script) {
        const std::string pasted(300, 'x');
        SendMessageA(script.Item(textField), EM_REPLACESEL, TRUE,
                     reinterpret_cast<LPARAM>(pasted.c_str()));
        EXPECT_EQ(SendMessageA(script.Item(textField), WM_GETTEXTLENGTH, 0, 0), 255);
        script.Click(script.Middle(textField));
        script.Keys({{VK_END}, {'Y'}});
        EXPECT_EQ(SendMessageA(script.Item(textField), WM_GETTEXTLENGTH, 0, 0), 255);
        EXPECT_EQ(script.Text(textField), std::string(255, 'x'));
    });
}

TEST_F(FieldTest, ValuesAreRoundedHalfAwayFromZero) {
    more = [&] {
        dialog.SetFormat(realField, "%.1f", -10, 10);
        for (const auto& [value, rounded] :
             std::vector<std::pair<double, short>>{{2.5, 3}, {-2.5, -3}, {2.25, 2}, {-0.5, -1}}) {
            dialog.SetValue(realField, value);
            EXPECT_EQ(dialog.GetShort(realField), rounded);
        }
    };
    Run([](Script&) {});
}

TEST_F(FieldTest, ALongTypedTextGoesBackToTheLastGoodOne) {
    Run([&](Script& script) {
        Fill(script, textField, "abcde");
        SendChords({{'F'}});
        EXPECT_EQ(script.EndAlert(1),
                  "The length of this text field must be less than 5 characters.");
        EXPECT_EQ(script.Text(textField), "abcde");
    });
}

TEST_F(FieldTest, EveryAlertHasItsText) {
    const std::vector<std::pair<short, std::string>> alerts = {
        {18001, "Please enter a valid integer in the range between 5 and 6."},
        {18002, "Please enter a valid integer larger than 5."},
        {18003, "Please enter a valid integer less than 5."},
        {18004, "Please enter a valid real number in the range between 5 and 6."},
        {18005, "Please enter a valid real number larger than 5."},
        {18006, "Please enter a valid real number less than 5."},
        {18007,
         "An integer in the range between 5 and 6 required. Would you like to insert the closest "
         "value?"},
        {18008, "An integer larger than 5 required. Would you like to insert the closest value?"},
        {18009, "An integer smaller than 5 required. Would you like to insert the closest value?"},
        {18010,
         "A real number in the range between 5 and 6 required. Would you like to insert the "
         "closest value?"},
        {18011,
         "A real number larger than 5 required. Would you like to insert the closest value?"},
        {18012,
         "A real number larger than 5 required. Would you like to insert the closest value?"},
        {18013, "Please enter a valid integer."},
        {18014, "Please enter a valid real number."},
        {18015, "The length of this text field must be less than 5 characters."}};
    std::vector<short> answers;
    dialog.atHit = [&](short item) {
        if (item == check) {
            for (const auto& alert : alerts) {
                answers.push_back(Alert(&dialog, alert.first, "5", "6"));
            }
        }
        return item <= 2 ? item : short{0};
    };
    Run([&](Script& script) {
        script.Click(script.Middle(check));
        for (const auto& alert : alerts) {
            const bool hasCancel = GetDlgItem(script.WaitForOther(), 2) != nullptr;
            EXPECT_EQ(hasCancel, alert.first >= 18007 && alert.first <= 18012) << alert.first;
            EXPECT_EQ(script.EndAlert(hasCancel ? 2 : 1), alert.second) << alert.first;
        }
        script.WaitUntil("all answers", [&] { return answers.size() == alerts.size(); });
    });
    EXPECT_EQ(answers, (std::vector<short>{1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 1, 1, 1}));
}

TEST_F(FieldTest, AnEmptiedFieldGetsItsTextBackWhenItIsLeft) {
    Run([&](Script& script) {
        script.Click(script.Middle(integerField));
        script.Keys({{VK_HOME}, {VK_SHIFT, VK_END}, {VK_DELETE}});
        EXPECT_EQ(script.Text(integerField), "");
        script.Keys({{VK_TAB}});
        script.WaitUntil("the text again", [&] { return script.Text(integerField) == "20"; });
    });
    EXPECT_EQ(dialog.log.Count("hit 3"), 0);
}

TEST_F(FieldTest, BlanksAloneAreAnEmptyField) {
    Run([&](Script& script) {
        Fill(script, integerField, "  ");
        script.Keys({{VK_TAB}});
        script.WaitUntil("the text again", [&] { return script.Text(integerField) == "20"; });
    });
    EXPECT_EQ(dialog.log.Count("hit 3"), 0);
}

TEST_F(FieldTest, ARequiredTextKeepsOkDisabledWhileItIsEmpty) {
    more = [&] { dialog.SetFormat(textField, "%+31s"); };
    Run([&](Script& script) {
        EXPECT_FALSE(IsWindowEnabled(script.Item(1)));
        Fill(script, textField, "a");
        script.WaitFor("hit 5");
        EXPECT_TRUE(IsWindowEnabled(script.Item(1)));
        script.Keys({{VK_BACK}});
        script.WaitFor("hit 5", 2);
        EXPECT_FALSE(IsWindowEnabled(script.Item(1)));
    });
}

TEST_F(FieldTest, OkComesBackWhenNoTextIsRequiredAnyMore) {
    more = [&] {
        dialog.SetFormat(textField, "%+s");
        EXPECT_FALSE(dialog.IsEnabled(1));
        dialog.SetFormat(textField, "%s");
        EXPECT_TRUE(dialog.IsEnabled(1));
        dialog.Enable(1, false);
        dialog.SetFormat(textField, "%s");
        EXPECT_FALSE(dialog.IsEnabled(1)) << "that was the dialog's own wish";
    };
    Run([](Script&) {});
}

TEST_F(FieldTest, ABlankFieldShowsTheValueItIsGiven) {
    more = [&] {
        dialog.SetFormat(textField, "%d");
        EXPECT_EQ(dialog.GetText(textField), "");
        dialog.SetValue(textField, 0);
        EXPECT_EQ(dialog.GetText(textField), "0") << "though it had that value before";
    };
    Run([](Script&) {});
}

TEST_F(FieldTest, TabAndSetFocusSelectTheText) {
    Run([&](Script& script) {
        script.Click(script.Middle(integerField));
        script.Keys({{VK_TAB}});
        EXPECT_EQ(script.Focus(), realField);
        EXPECT_TRUE(script.IsAllSelected(realField));
        script.Keys({{VK_END}, {VK_SHIFT, VK_TAB}});
        EXPECT_EQ(script.Focus(), integerField);
        EXPECT_TRUE(script.IsAllSelected(integerField));
    });
}

TEST_F(FieldTest, CopyAndClearWorkFromTheMenu) {
    more = [&] { dialog.SetText(textField, "abc"); };
    Run([&](Script& script) {
        const auto choose = [&](int id) {
            SendMessageA(script.Dialog(), WM_COMMAND, static_cast<WPARAM>(id), 0);
        };
        script.Click(script.Middle(textField));
        choose(18209);
        choose(18205);
        EXPECT_EQ(dialog.log.Count("hit 5"), 0) << "copying changes nothing";
        choose(18207);
        EXPECT_EQ(script.Text(textField), "");
        EXPECT_EQ(dialog.log.Count("hit 5"), 1);
        choose(18206);
        EXPECT_EQ(script.Text(textField), "abc");
        EXPECT_EQ(dialog.log.Count("hit 5"), 2);
        choose(18208);
        EXPECT_EQ(script.Text(textField), "abc");
        EXPECT_EQ(dialog.log.Count("hit 5"), 2) << "no such command";
    });
}

TEST_F(FieldTest, WithoutAFieldTheEditCommandsDoNothing) {
    Run([&](Script& script) {
        script.Click(script.Middle(check));
        SendMessageA(script.Dialog(), WM_COMMAND, 18207, 0);
    });
    EXPECT_EQ(dialog.log.All(), (std::vector<std::string>{"hit 7", "menu 18207", "hit 2"}));
}

TEST_F(FieldTest, ValuesGoInAndOut) {
    std::vector<double> values;
    more = [&] {
        dialog.SetFormat(label, "%.2f");
        dialog.SetRange(10, 0, 300);
        dialog.SetRange(14, -50, 50);
        SendMessageA(GetDlgItem(static_cast<HWND>(dialog.Window()), 9), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>("one"));
        SendMessageA(GetDlgItem(static_cast<HWND>(dialog.Window()), 9), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>("two"));
        const std::vector<std::pair<short, double>> sets = {{3, 33}, {4, 3.26}, {6, 1.5},  {7, 1},
                                                            {8, 5},  {9, 2},    {10, 250}, {11, 3},
                                                            {12, 4}, {14, -20}, {15, 7},   {18, 2}};
        for (const auto& [item, value] : sets) {
            dialog.SetValue(item, value);
            values.push_back(dialog.GetValue(item));
        }
        values.push_back(dialog.GetShort(4));
        EXPECT_EQ(dialog.GetText(6), "1.50");
        EXPECT_EQ(dialog.GetText(4), "3.3");
    };
    Run([](Script&) {});
    const std::vector<double> expected = {33, 3.26F, 1.5, 1, 1, 2, 250, 3, 4, -20, 1, 2, 3};
    EXPECT_EQ(values, expected);
    EXPECT_EQ(dialog.log.All(), (std::vector<std::string>{"hit 2"})) << "only the end";
}

TEST_F(FieldTest, FormatsAndRangesThatFitNoItemAreFaults) {
    std::vector<int> faults;
    more = [&] {
        faults = {FaultOf([&] { dialog.SetFormat(3, "%x"); }),
                  FaultOf([&] { dialog.SetFormat(3, "%.2d"); }),
                  FaultOf([&] { dialog.SetFormat(7, "%d"); }),
                  FaultOf([&] { dialog.SetRange(7, 0, 1); }),
                  FaultOf([&] { dialog.Port().SetSystemColor(99); }),
                  FaultOf([&] { dialog.SetValue(3, 1e30); })};
        errorCell = 0;
    };
    Run([](Script&) {});
    EXPECT_EQ(faults, (std::vector<int>{18018, 18018, 18018, 20008, 20008, 18022}));
}

TEST_F(FieldTest, AnItemOfAnUnknownKindHasNoValue) {
    TestDialog other(mixed);
    std::vector<int> faults;
    other.atSetup = [&] {
        faults = {FaultOf([&] { other.SetValue(listBox, 1); }),
                  FaultOf([&] { other.GetValue(listBox); }),
                  FaultOf([&] { other.SetRange(listBox, 0, 1); }),
                  FaultOf([&] { other.SetFormat(listBox, "%d"); })};
        errorCell = 0;
    };
    RunWithScript(other, [](Script&) {});
    EXPECT_EQ(faults, (std::vector<int>{20008, 20008, 20008, 18018}));
}

TEST_F(FieldTest, AnEmptyScrollBarIsDisabled) {
    bool first = true;
    bool second = false;
    more = [&] {
        dialog.SetRange(10, 0, 0);
        first = dialog.IsEnabled(10);
        dialog.SetRange(10, 0, 5);
        second = dialog.IsEnabled(10);
    };
    Run([](Script&) {});
    EXPECT_FALSE(first);
    EXPECT_TRUE(second);
}

TEST_F(FieldTest, TheEditCommandsWorkOnTheField) {
    more = [&] {
        dialog.SetText(textField, "abc");
        // Another test's text would be pasted after a cut that keeps none.
        EXPECT_TRUE(OpenClipboard(nullptr));
        EXPECT_TRUE(EmptyClipboard());
        CloseClipboard();
    };
    Run([&](Script& script) {
        script.Click(script.Middle(textField));
        script.Keys({{VK_CONTROL, 'A'}, {VK_CONTROL, 'X'}});
        script.WaitUntil("the cut", [&] { return script.Text(textField).empty(); });
        script.WaitFor("hit 5");
        script.Keys({{VK_CONTROL, 'Z'}});
        script.WaitFor("hit 5", 2);
        EXPECT_EQ(script.Text(textField), "abc");
        script.Keys({{VK_END}, {VK_BACK}, {VK_BACK}, {VK_CONTROL, 'V'}});
        script.WaitFor("hit 5", 5);
        EXPECT_EQ(script.Text(textField), "aabc");
    });
    EXPECT_EQ(dialog.log.All(),
              (std::vector<std::string>{"menu 18209", "menu 18204", "hit 5", "menu 18201", "hit 5",
                                        "key 8 0", "hit 5", "key 8 0", "hit 5", "menu 18206",
                                        "hit 5", "hit 2"}));
}

}  // namespace
