// Every control of every operation's dialog, by mouse and keyboard: it changes the record and its
// partners, and takes an applied result back. Dials and swatches, which the dialogs paint, are in
// ControlDialsTest.Win.cpp.
#include <cmath>
#include <numbers>
#include <tuple>

#include "fixtures/InputDesktop.Win.h"
#include "tests/gui/ControlsRun.Win.h"

namespace {

INSTANTIATE_TEST_SUITE_P(Of, EveryDialogTest, testing::ValuesIn(IdsOfDialogs()), NameOfRow);

class FieldTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, FieldTest,
                         testing::ValuesIn(IdsWith<NumberRow>(
                             numberRows, [](const NumberRow& number) { return number.item != 0; })),
                         NameOfRow);

class SliderTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, SliderTest,
                         testing::ValuesIn(IdsWith<NumberRow>(numberRows,
                                                              [](const NumberRow& number) {
                                                                  return number.slider != 0;
                                                              })),
                         NameOfRow);

class RadioTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, RadioTest, testing::ValuesIn(IdsWith(radioRows)), NameOfRow);

class BoxTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, BoxTest, testing::ValuesIn(IdsWith(boxRows)), NameOfRow);

class PopupTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, PopupTest, testing::ValuesIn(IdsWith(popupRows)), NameOfRow);

// --- The tables ---

/// The controls that a user can work with.
std::vector<int> WorkingItems(const DrivenDialog& dialog) {
    std::vector<int> items;
    for (int item = 1; GetDlgItem(dialog.Window(), item) != nullptr; ++item) {
        const HWND control = dialog.Control(item);
        const std::string name = ClassOf(control);
        const LONG style = GetWindowLongA(control, GWL_STYLE);
        const bool isFrame = name == "Button" && (style & BS_TYPEMASK) == BS_GROUPBOX;
        const bool isText = name == "Static" && (style & SS_NOTIFY) == 0;
        if (!isFrame && !isText) {
            items.push_back(item);
        }
    }
    return items;
}

TEST_P(EveryDialogTest, HasControlsForAllFieldsAndNoOthers) {
    std::vector<int> items{okItem, cancelItem, ApplyItems::apply};
    if (row.presets != presetEffectCount) {
        items.insert(items.end(), {ApplyItems::presets, ApplyItems::save, ApplyItems::remove});
    }
    std::vector<std::string> fields;
    const auto note = [&](std::string_view field, std::initializer_list<int> its) {
        fields.emplace_back(field);
        std::copy_if(its.begin(), its.end(), std::back_inserter(items),
                     [](int item) { return item != 0; });
    };
    for (const NumberRow& number : Rows(numberRows)) {
        note(number.field, {number.item, number.slider, number.dial});
    }
    for (const BoxRow& box : Rows(boxRows)) {
        note(box.field, {box.item});
    }
    for (const RadioRow& radio : Rows(radioRows)) {
        note(radio.field, {radio.item, radio.picture});
    }
    for (const PopupRow& popup : Rows(popupRows)) {
        note(popup.field, {popup.item});
    }
    for (const SwatchRow& swatch : Rows(swatchRows)) {
        note(swatch.field, {swatch.item});
    }
    for (const PictureRow& picture : Rows(pictureRows)) {
        note(picture.field, {picture.item});
    }
    for (const Field& field : row.fields) {
        const bool isShown = std::find(fields.begin(), fields.end(), field.name) != fields.end();
        EXPECT_EQ(isShown, std::string(field.name) != "interpolate") << field.name;
    }
    std::sort(items.begin(), items.end());
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        EXPECT_EQ(WorkingItems(dialog), items);
    });
}

// --- Numbers ---

TEST_P(FieldTest, FieldsTakeTheirLowestAndHighestNumber) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const NumberRow& number : Rows(numberRows)) {
            for (const int value : {LimitsOf(number).high, LimitsOf(number).low}) {
                if (number.item != 0) {
                    ExpectTaken(dialog, number.field, number.Stored(value), [&] {
                        TypeInto(gui, dialog, number.item, std::to_string(value));
                        ExpectPartners(dialog, number, value);
                    });
                }
            }
        }
    });
}

/// Types over what is in the field; the last key brings an alert.
std::string AlertAfter(const GuiDriver& gui, const DrivenDialog& dialog, int item,
                       const std::string& text, int answer) {
    TabTo(gui, dialog, item);
    gui.Chord({VK_HOME});
    gui.Chord({VK_SHIFT, VK_END});
    gui.Type(text);
    return AnswerAlert(gui, dialog, answer);
}

TEST_P(FieldTest, OneBeyondTheLimitsOfAFieldAsks) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const NumberRow& number : Rows(numberRows)) {
            if (number.item == 0) {
                continue;
            }
            const auto [low, high] = LimitsOf(number);
            const std::string range = std::to_string(low) + " and " + std::to_string(high);
            const std::string question = "An integer in the range between " + range +
                                         " required. Would you like to insert the closest value?";
            EXPECT_EQ(AlertAfter(gui, dialog, number.item, std::to_string(high + 1), okItem),
                      question);
            ExpectPartners(dialog, number, high);
            ExpectRead(dialog, number.field, number.Stored(high));
            EXPECT_EQ(AlertAfter(gui, dialog, number.item, std::to_string(low - 1), okItem),
                      question);
            ExpectPartners(dialog, number, low);
            ExpectRead(dialog, number.field, number.Stored(low));
            TypeInto(gui, dialog, number.item, std::to_string(high));
            gui.Type("0");
            EXPECT_EQ(AnswerAlert(gui, dialog, cancelItem), question);
            ExpectPartners(dialog, number, high);
            gui.Type("1-");
            EXPECT_EQ(AnswerAlert(gui, dialog),
                      "Please enter a valid integer in the range between " + range + ".");
            ExpectPartners(dialog, number, 1);
            ExpectRead(dialog, number.field, number.Stored(1));
        }
    });
}

TEST_P(FieldTest, ArrowsStepTheFields) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const NumberRow& number : Rows(numberRows)) {
            if (number.item == 0) {
                continue;
            }
            const auto [low, high] = LimitsOf(number);
            TypeInto(gui, dialog, number.item, std::to_string(low));
            ExpectTaken(dialog, number.field, number.Stored(low + 1), [&] {
                gui.Chord({VK_UP});
                ExpectPartners(dialog, number, low + 1);
            });
            gui.Chord({VK_SHIFT, VK_UP});
            ExpectPartners(dialog, number, std::min(low + 11, high));
            gui.Chord({VK_DOWN});
            ExpectPartners(dialog, number, std::min(low + 11, high) - 1);
        }
    });
}

TEST_P(SliderTest, SlidersMoveTheirPartnersByTheMouse) {
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        for (const NumberRow& number : Rows(numberRows)) {
            if (number.slider == 0) {
                continue;
            }
            const auto [low, high] = LimitsOf(number);
            const SliderLimits limits{low, high};
            const auto drag = [&](int first, int last) {
                ExpectTaken(dialog, number.field, number.Stored(last), [&] {
                    DragSlider(dialog, number.slider, limits, {first, last},
                               [&](int value) { ExpectPartners(dialog, number, value); });
                });
            };
            // One of the two is a change, wherever the slider stands.
            drag(low, high);
            drag(high, low);
            dialog.Click(number.slider,
                         PlaceOnSlider(dialog, number.slider, limits, (low + high + 1) / 2));
            WaitUntil("the slider", [&] { return dialog.Value(number.slider) != low; });
            const int clicked = dialog.Value(number.slider);
            EXPECT_NEAR(clicked, (low + high) / 2.0, 2);
            ExpectPartners(dialog, number, clicked);
            ExpectRead(dialog, number.field, number.Stored(clicked));
        }
    });
}

TEST_P(SliderTest, SlidersMoveTheirPartnersByTheKeys) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const NumberRow& number : Rows(numberRows)) {
            if (number.slider == 0) {
                continue;
            }
            const auto [low, high] = LimitsOf(number);
            const int page = (high - low + 4) / 5;
            TabTo(gui, dialog, number.slider);
            gui.Chord({VK_END});
            ExpectPartners(dialog, number, low);
            ExpectTaken(dialog, number.field, number.Stored(low + 1), [&] {
                gui.Chord({VK_RIGHT});
                ExpectPartners(dialog, number, low + 1);
            });
            ExpectTaken(dialog, number.field, number.Stored(high), [&] {
                gui.Chord({VK_HOME});
                ExpectPartners(dialog, number, high);
            });
            gui.Chord({VK_NEXT});
            ExpectPartners(dialog, number, high - page);
            gui.Chord({VK_SHIFT, VK_LEFT});
            ExpectPartners(dialog, number, std::max(low, high - page - 10));
        }
    });
}

// --- Choices ---

/// Whether this button alone of its group is checked.
bool IsAlone(const DrivenDialog& dialog, const std::vector<RadioRow>& radios,
             const RadioRow& expected) {
    return std::all_of(radios.begin(), radios.end(), [&](const RadioRow& radio) {
        const bool isOfGroup = radio.field == expected.field;
        const bool isOn = dialog.Value(radio.item) != 0;
        return !isOfGroup || isOn == (radio.item == expected.item);
    });
}

TEST_P(RadioTest, RadioButtonsAndTheirPicturesByTheMouse) {
    const std::vector<RadioRow> radios = Rows(radioRows);
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        for (const RadioRow& radio : radios) {
            dialog.Click(radio.item, {6, 8});
            WaitUntil("the button", [&] { return IsAlone(dialog, radios, radio); });
            ExpectRead(dialog, radio.field, radio.value);
        }
        for (const RadioRow& radio : radios) {
            if (radio.picture != 0) {
                ExpectTaken(dialog, radio.field, radio.value, [&] {
                    dialog.ClickMiddle(radio.picture);
                    WaitUntil("its picture", [&] { return IsAlone(dialog, radios, radio); });
                });
            }
        }
    });
}

/// The buttons as they are read: down, and from the left; those on a circle clockwise from the top.
std::vector<int> AsTheyAreRead(const DrivenDialog& dialog, std::vector<int> buttons,
                               bool onCircle) {
    RECT all{};
    for (const int button : buttons) {
        const RECT bounds = dialog.Bounds(button);
        UnionRect(&all, &all, &bounds);
    }
    const auto turn = [&](int button) {
        const RECT bounds = dialog.Bounds(button);
        const double right = (bounds.left + bounds.right - all.left - all.right) / 2.0;
        const double up = (all.top + all.bottom - bounds.top - bounds.bottom) / 2.0;
        const double angle = std::atan2(right, up);
        // A pixel's width to the left of the top is the top.
        return angle < -0.1 ? angle + 2 * std::numbers::pi : angle;
    };
    std::sort(buttons.begin(), buttons.end(), [&](int a, int b) {
        const RECT first = dialog.Bounds(a);
        const RECT second = dialog.Bounds(b);
        return onCircle ? turn(a) < turn(b)
                        : std::tie(first.top, first.left) < std::tie(second.top, second.left);
    });
    return buttons;
}

TEST_P(RadioTest, ArrowsChooseAmongRadioButtonsAsTheyAreRead) {
    const std::vector<RadioRow> radios = Rows(radioRows);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        std::string_view done;
        for (const RadioRow& radio : radios) {
            if (radio.field == done) {
                continue;
            }
            done = radio.field;
            const auto same = [&](const RadioRow& other) { return other.field == radio.field; };
            std::vector<int> group;
            for (const RadioRow& other : radios) {
                if (same(other)) {
                    group.push_back(other.item);
                }
            }
            group = AsTheyAreRead(dialog, group, row.id == blurDialog);
            const auto first = std::find(group.begin(), group.end(), radio.item);
            std::rotate(group.begin(), first + 1, group.end());
            dialog.Click(radio.item, {6, 8});
            WaitUntil("the button", [&] { return IsAlone(dialog, radios, radio); });
            TabTo(gui, dialog, radio.item);
            for (const WORD key : std::initializer_list<WORD>{VK_DOWN, VK_RIGHT}) {
                // Once round the group, which ends with the first one.
                for (const int next : group) {
                    const int before = FocusedItem(dialog);
                    gui.Chord({key});
                    WaitUntil("the next button", [&] { return FocusedItem(dialog) != before; });
                    ASSERT_EQ(FocusedItem(dialog), next);
                    const auto chosen =
                        std::find_if(radios.begin(), radios.end(),
                                     [&](const RadioRow& other) { return other.item == next; });
                    WaitUntil("it to be on", [&] { return IsAlone(dialog, radios, *chosen); });
                    ExpectRead(dialog, chosen->field, chosen->value);
                }
                EXPECT_EQ(FocusedItem(dialog), radio.item);
            }
        }
    });
}

TEST_P(BoxTest, CheckBoxesByTheMouseAndBySpace) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const BoxRow& box : Rows(boxRows)) {
            const int first = dialog.Value(box.item);
            const auto isNow = [&](int value) {
                WaitUntil("the box", [&] { return dialog.Value(box.item) == value; });
            };
            ExpectTaken(dialog, box.field, 1 - first, [&] {
                dialog.Click(box.item, {6, 8});
                isNow(1 - first);
            });
            TabTo(gui, dialog, box.item);
            ExpectTaken(dialog, box.field, first, [&] {
                gui.Chord({VK_SPACE});
                isNow(first);
            });
        }
    });
}

TEST_P(PopupTest, PopupsByTheKeysAndByTheMouse) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const PopupRow& popup : Rows(popupRows)) {
            const std::span<const FieldWord> words = FieldOf(popup.field).words;
            ASSERT_FALSE(words.empty());
            ChooseEntry(gui, dialog, popup.item, words.front().value);
            for (const FieldWord& word : words.subspan(1)) {
                ExpectTaken(dialog, popup.field, word.value, [&] {
                    gui.Chord({VK_DOWN});
                    WaitUntil("the entry", [&] { return dialog.Value(popup.item) == word.value; });
                });
            }
            for (const int place : {words.front().value, words.back().value}) {
                ExpectTaken(dialog, popup.field, place,
                            [&] { ChooseEntryByMouse(gui, dialog, popup.item, place); });
            }
        }
    });
}

class PictureTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, PictureTest, testing::ValuesIn(IdsWith(pictureRows)), NameOfRow);

TEST_P(PictureTest, PicturesBesideControlsDoNothing) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        Apply(dialog);
        const int before = father.reverts;
        for (const PictureRow& picture : Rows(pictureRows)) {
            dialog.ClickMiddle(picture.item);
        }
        gui.WaitUntilIdle();
        EXPECT_EQ(father.reverts, before);
        EXPECT_TRUE(dialog.IsOpen());
    });
}

}  // namespace
