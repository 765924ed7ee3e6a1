// Every control of every operation's dialog, by mouse and keyboard: it changes the record and its
// partners, and takes an applied result back.
#include <cmath>
#include <numbers>
#include <tuple>

#include "fixtures/InputDesktop.Win.h"
#include "fixtures/Screenshot.Win.h"
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

class DialTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, DialTest,
                         testing::ValuesIn(IdsWith<NumberRow>(
                             numberRows, [](const NumberRow& number) { return number.dial != 0; })),
                         NameOfRow);

class RadioTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, RadioTest, testing::ValuesIn(IdsWith(radioRows)), NameOfRow);

class BoxTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, BoxTest, testing::ValuesIn(IdsWith(boxRows)), NameOfRow);

class PopupTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, PopupTest, testing::ValuesIn(IdsWith(popupRows)), NameOfRow);

class SwatchTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, SwatchTest, testing::ValuesIn(IdsWith(swatchRows)), NameOfRow);

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

void ExpectPartners(const DrivenDialog& dialog, const NumberRow& number, int value) {
    if (number.item != 0) {
        WaitUntil("the field at " + std::to_string(value),
                  [&] { return dialog.Text(number.item) == std::to_string(value); });
    }
    if (number.slider != 0) {
        WaitUntil("the slider at " + std::to_string(value),
                  [&] { return dialog.Value(number.slider) == value; });
    }
}

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

TEST_P(DialTest, DialsTurnTheirFields) {
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        for (const NumberRow& number : Rows(numberRows)) {
            if (number.dial == 0) {
                continue;
            }
            const RECT dial = dialog.Bounds(number.dial);
            const int x = static_cast<int>(dial.right - dial.left) / 2;
            const int y = static_cast<int>(dial.bottom - dial.top) / 2;
            ExpectTaken(dialog, number.field, -90, [&] {
                const std::vector<int> angles{90, 0, -90};
                std::size_t at = 0;
                dialog.Drag(number.dial, {{x + 25, y}, {x, y - 25}, {x - 25, y}},
                            [&] { ExpectPartners(dialog, number, angles[at++]); });
            });
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

TEST_P(SwatchTest, SwatchesTakeTheSystemsColour) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const SwatchRow& swatch : Rows(swatchRows)) {
            const auto color = [&] { return ReadColor(FieldOf(swatch.field), Record()); };
            const auto choose = [&](int answer) {
                Apply(dialog);
                const int before = father.reverts;
                dialog.ClickMiddle(swatch.item);
                const DrivenDialog colors = gui.WaitForTitle("Color");
                constexpr int firstComponent = 0x2C2;
                for (const int component : {0, 1, 2}) {
                    colors.SetText(firstComponent + component, std::to_string(10 + component));
                }
                CloseWith(colors, answer);
                dialog.Settle();
                const int taken = father.reverts - before;
                Apply(dialog);
                return taken;
            };
            const RGBColor16 first = color();
            EXPECT_EQ(choose(IDCANCEL), swatch.cancelCounts ? 1 : 0);
            EXPECT_EQ(color(), first);
            EXPECT_EQ(choose(IDOK), 1);
            EXPECT_EQ(color(), (RGBColor16{0x0A00, 0x0B00, 0x0C00}));
            const RECT bounds = dialog.Bounds(swatch.item);
            EXPECT_EQ(ColorAt(dialog.Grab(), static_cast<int>(bounds.left + bounds.right) / 2,
                              static_cast<int>(bounds.top + bounds.bottom) / 2),
                      RGB(10, 11, 12));
        }
    });
}

/// Whether the pixels just outside of the item's rectangle are dotted.
bool HasFocusFrame(const DrivenDialog& dialog, int item) {
    const RECT bounds = dialog.Bounds(item);
    const host::Picture shown = dialog.Grab();
    constexpr int distance = 2;
    const COLORREF background = GetSysColor(COLOR_BTNFACE);
    int dots = 0;
    for (int x = bounds.left; x < bounds.right; ++x) {
        dots += ColorAt(shown, x, bounds.top - distance) != background ? 1 : 0;
    }
    const int width = static_cast<int>(bounds.right - bounds.left);
    EXPECT_TRUE(dots == 0 || std::abs(2 * dots - width) <= 2) << dots << " of " << width;
    return dots != 0;
}

/// Tab comes to the item, which shows that, and leaves it as it was.
void ExpectFocusShown(const GuiDriver& gui, const DrivenDialog& dialog, int item) {
    TabTo(gui, dialog, okItem);
    const host::Picture before = dialog.Grab();
    EXPECT_FALSE(HasFocusFrame(dialog, item));
    TabTo(gui, dialog, item);
    WaitUntil("the frame", [&] { return HasFocusFrame(dialog, item); });
    // Drawn again, it stays.
    RedrawWindow(dialog.Window(), nullptr, nullptr, RDW_INVALIDATE);
    dialog.WaitUntilPainted();
    EXPECT_TRUE(HasFocusFrame(dialog, item));
    TabTo(gui, dialog, okItem);
    WaitUntil("no frame", [&] { return dialog.Grab() == before; });
}

TEST_P(SwatchTest, TheKeyboardReachesSwatches) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const SwatchRow& swatch : Rows(swatchRows)) {
            ExpectFocusShown(gui, dialog, swatch.item);
            const RGBColor16 before = ReadColor(FieldOf(swatch.field), Record());
            for (const WORD key : {WORD{VK_SPACE}, WORD{VK_RETURN}}) {
                TabTo(gui, dialog, swatch.item);
                gui.Chord({key});
                CloseWith(gui.WaitForTitle("Color"), key == VK_SPACE ? IDCANCEL : IDOK);
                dialog.Settle();
                Apply(dialog);
                const RGBColor16 color = ReadColor(FieldOf(swatch.field), Record());
                EXPECT_EQ(color, key == VK_SPACE ? before : RGBColor16{});
            }
        }
    });
}

TEST_P(DialTest, TheKeyboardTurnsDials) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (const NumberRow& number : Rows(numberRows)) {
            if (number.dial == 0) {
                continue;
            }
            ExpectFocusShown(gui, dialog, number.dial);
            TypeInto(gui, dialog, number.item, "170");
            TabTo(gui, dialog, number.dial);
            const auto expect = [&](const std::vector<WORD>& keys, int angle) {
                ExpectTaken(dialog, number.field, number.Stored(angle), [&] {
                    gui.Chord(keys);
                    ExpectPartners(dialog, number, angle);
                });
            };
            expect({VK_UP}, 171);
            expect({VK_RIGHT}, 172);
            expect({VK_DOWN}, 171);
            expect({VK_LEFT}, 170);
            expect({VK_SHIFT, VK_UP}, 180);
            expect({VK_RIGHT}, -179);
            expect({VK_SHIFT, VK_LEFT}, 171);
            expect({VK_PRIOR}, -144);
            expect({VK_NEXT}, 171);
            const int reverts = father.reverts;
            gui.Chord({VK_SPACE});
            dialog.Settle();
            EXPECT_EQ(father.reverts, reverts) << "there is nothing to press";
            EXPECT_EQ(FocusedItem(dialog), number.dial);
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
