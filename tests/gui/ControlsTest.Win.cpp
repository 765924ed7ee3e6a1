// Every control of every operation's dialog, with the mouse and the keyboard: what it makes of the
// record and of its partners, and that it takes an applied result back.
//
// The dialogs stand alone here: in the editor's place is a count of what they ask of it.
#include <algorithm>
#include <cmath>

#include "editor/Operations.h"
#include "fixtures/InputDesktop.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "tests/gui/ControlTables.Win.h"
#include "tests/gui/DialogRun.Win.h"

namespace {

// --- The dialog under test ---

/// In the editor's place.
class CountingFather final : public ApplyFather {
  public:
    NorvantaDialog* FatherDialog() override { return nullptr; }
    void RevertToUndo() override { ++reverts; }
    void RunOperation(short) override { ++runs; }
    hostapi::Point TextureSize() const override { return size; }
    const RGBColor16& Foreground() const override { return foreground; }
    const RGBColor16& Background() const override { return background; }

    /// All that Mosaic offers divides it.
    hostapi::Point size{840, 840};
    std::atomic<int> reverts = 0;
    std::atomic<int> runs = 0;
    RGBColor16 foreground{0x1100, 0x2200, 0x3300};
    RGBColor16 background{0x4400, 0x5500, 0x6600};
};

class ControlsTest : public PluginRunTest {
  protected:
    using User = std::function<void(const GuiDriver&, const DrivenDialog&)>;

    explicit ControlsTest(short id) : row(CatalogRowOf(id)) {
        // Controls that are disabled otherwise.
        preferences.blur.motion = 1;
        preferences.dividers.randomColors = 0;
    }

    /// Opens the dialog and cancels it at the end if the user has not closed it.
    /// @return what it ended with
    int Open(const User& user) {
        SimpleLink* const presets =
            row.presets != presetEffectCount ? &preferences.presets[row.presets] : nullptr;
        const std::unique_ptr<ApplyDialog> dialog =
            OperationWithId(row.id)->makeDialog({&father, placement, presets}, preferences);
        int ended = 0;
        RunWithUser([&] { ended = dialog->Run(); },
                    [&](const GuiDriver& gui) {
                        const DrivenDialog driven = gui.WaitFor(row.id);
                        user(gui, driven);
                        if (driven.IsOpen()) {
                            CloseWith(driven, cancelItem);
                        }
                    });
        isRunOwed = dialog->WasApplied();
        return ended;
    }

    const void* Record() const { return LastUsedRecord(preferences, row.id); }
    const Field& FieldOf(std::string_view name) const { return FieldNamed(row, name); }

    /// Applies, lets the user change a control, and expects that the result is taken back and that
    /// the next Apply runs with the value.
    void ExpectTaken(const DrivenDialog& dialog, std::string_view field, double value,
                     const std::function<void()>& change) {
        Apply(dialog);
        const int before = father.reverts;
        change();
        WaitUntil("the result to go after " + std::string(field),
                  [&] { return father.reverts == before + 1; });
        ExpectRead(dialog, field, value);
    }
    void ExpectRead(const DrivenDialog& dialog, std::string_view field, double value) const {
        Apply(dialog);
        EXPECT_EQ(ReadNumber(FieldOf(field), Record()), value) << field;
    }
    /// Leaves the focus where it is.
    static void Apply(const DrivenDialog& dialog) {
        Ask(dialog.Window(), WM_COMMAND, MAKEWPARAM(ApplyItems::apply, BN_CLICKED),
            reinterpret_cast<LPARAM>(dialog.Control(ApplyItems::apply)));
    }

    const CatalogRow& row;
    Preferences preferences;
    CountingFather father;
    hostapi::Rect placement{};
    bool isRunOwed = false;
};

class EveryDialogTest : public ControlsTest, public testing::WithParamInterface<short> {
  protected:
    EveryDialogTest() : ControlsTest(GetParam()) {}

    template <typename Row>
    std::vector<Row> Rows(std::span<const Row> table) const {
        return RowsOf(table, row.id);
    }
    /// The limits that the controls show.
    Limits LimitsOf(const NumberRow& number) const {
        return ShownLimits(number, FieldOf(number.field));
    }
};

std::vector<short> IdsOfDialogs() {
    std::vector<short> ids;
    for (const Operation& operation : AllOperations()) {
        ids.push_back(operation.id);
    }
    return ids;
}

std::string NameOfRow(const testing::TestParamInfo<short>& info) {
    return CatalogRowOf(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryDialogTest, testing::ValuesIn(IdsOfDialogs()), NameOfRow);

/// The dialogs that have such controls.
template <typename Row>
std::vector<short> IdsWith(std::span<const Row> table,
                           const std::function<bool(const Row&)>& fits) {
    std::vector<short> ids = IdsOfDialogs();
    std::erase_if(ids, [&](short id) {
        const std::vector<Row> rows = RowsOf(table, id);
        return std::none_of(rows.begin(), rows.end(), fits);
    });
    return ids;
}

template <typename Row>
std::vector<short> IdsWith(std::span<const Row> table) {
    return IdsWith<Row>(table, [](const Row&) { return true; });
}

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
            // From wherever it stands there is a change.
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

/// Exactly this button of its group is on.
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

TEST_P(RadioTest, ArrowsChooseAmongRadioButtons) {
    const std::vector<RadioRow> radios = Rows(radioRows);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        std::string_view done;
        for (const RadioRow& radio : radios) {
            if (radio.field == done) {
                continue;
            }
            done = radio.field;
            const auto same = [&](const RadioRow& other) { return other.field == radio.field; };
            const auto count = std::count_if(radios.begin(), radios.end(), same);
            dialog.Click(radio.item, {6, 8});
            WaitUntil("the button", [&] { return IsAlone(dialog, radios, radio); });
            TabTo(gui, dialog, radio.item);
            for (const WORD key : std::initializer_list<WORD>{VK_DOWN, VK_RIGHT}) {
                // Once round the group.
                for (auto step = 0; step < count; ++step) {
                    const int before = FocusedItem(dialog);
                    gui.Chord({key});
                    WaitUntil("the next button", [&] { return FocusedItem(dialog) != before; });
                    const int now = FocusedItem(dialog);
                    const auto chosen =
                        std::find_if(radios.begin(), radios.end(),
                                     [&](const RadioRow& other) { return other.item == now; });
                    ASSERT_NE(chosen, radios.end()) << now;
                    ASSERT_TRUE(same(*chosen)) << now;
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

// --- The keyboard ---

/// 0 for a text without one.
char MnemonicOf(const std::string& text) {
    for (std::size_t at = text.find('&'); at < text.size() - 1; at = text.find('&', at + 2)) {
        if (text[at + 1] != '&') {
            return text[at + 1];
        }
    }
    return 0;
}

bool IsPopup(const DrivenDialog& dialog, int item) {
    const std::string name = ClassOf(dialog.Control(item));
    return name == "tPopupMenu" || name == "tRealtimeMenu";
}

LONG ButtonType(const DrivenDialog& dialog, int item) {
    return ClassOf(dialog.Control(item)) == "Button"
               ? GetWindowLongA(dialog.Control(item), GWL_STYLE) & BS_TYPEMASK
               : -1;
}

class MnemonicTest : public EveryDialogTest {
  protected:
    /// The item that a label's mnemonic leads to.
    int TargetOf(const DrivenDialog& dialog, int label) const {
        for (const LabelRow& set : Rows(labelRows)) {
            if (set.label == label) {
                return set.item;
            }
        }
        if (IsPopup(dialog, label)) {
            return label;
        }
        return GetDlgCtrlID(GetNextDlgTabItem(dialog.Window(), dialog.Control(label), FALSE));
    }
    /// A text with a colon that stands beside a control and is no title of a frame.
    static bool IsLabel(const DrivenDialog& dialog, int item) {
        const std::string name = ClassOf(dialog.Control(item));
        const bool canBe = IsPopup(dialog, item) || name == "Static";
        return canBe && dialog.Text(item).find(':') != std::string::npos;
    }
};

INSTANTIATE_TEST_SUITE_P(Of, MnemonicTest, testing::ValuesIn(IdsOfDialogs()), NameOfRow);

TEST_P(MnemonicTest, EveryLabelHasOne) {
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        for (int item = 1; GetDlgItem(dialog.Window(), item) != nullptr; ++item) {
            // A colour takes no focus.
            if (IsLabel(dialog, item) && dialog.Text(item) != "Color:") {
                EXPECT_NE(MnemonicOf(dialog.Text(item)), 0) << dialog.Text(item);
            }
        }
    });
}

TEST_P(MnemonicTest, ReachesItsControl) {
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        for (int item = 1; GetDlgItem(dialog.Window(), item) != nullptr; ++item) {
            const char letter = MnemonicOf(dialog.Text(item));
            const LONG type = ButtonType(dialog, item);
            // Save and Delete open something.
            if (letter == 0 || type == BS_PUSHBUTTON) {
                continue;
            }
            const std::vector<WORD> chord{
                VK_MENU, static_cast<WORD>(static_cast<WORD>(VkKeyScanA(letter)) & 0xFF)};
            const std::string name = "Alt+" + std::string(1, letter);
            if (type == BS_CHECKBOX || type == BS_RADIOBUTTON) {
                const int expected = type == BS_CHECKBOX ? 1 - dialog.Value(item) : 1;
                gui.Chord(chord);
                WaitUntil("the button by " + name, [&] { return dialog.Value(item) == expected; });
            } else {
                const int target = TargetOf(dialog, item);
                TabTo(gui, dialog, okItem);
                gui.Chord(chord);
                WaitUntil("the focus by " + name, [&] { return FocusedItem(dialog) == target; });
            }
        }
    });
}

TEST_P(EveryDialogTest, ReturnIsOkAndEscapeIsCancel) {
    EXPECT_EQ(Open([](const GuiDriver& gui, const DrivenDialog& dialog) {
                  gui.Chord({VK_RETURN});
                  dialog.WaitUntilClosed();
              }),
              okItem);
    EXPECT_TRUE(isRunOwed);
    EXPECT_EQ(Open([](const GuiDriver& gui, const DrivenDialog& dialog) {
                  gui.Chord({VK_ESCAPE});
                  dialog.WaitUntilClosed();
              }),
              cancelItem);
    EXPECT_EQ(father.runs, 0);
}

TEST_P(EveryDialogTest, TheButtonsByTheMouse) {
    EXPECT_EQ(Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
                  dialog.ClickMiddle(ApplyItems::apply);
                  WaitUntil("the run", [&] { return father.runs == 1; });
                  EXPECT_EQ(father.reverts, 1);
                  dialog.ClickMiddle(ApplyItems::apply);
                  WaitUntil("another run", [&] { return father.runs == 2; });
                  EXPECT_EQ(father.reverts, 2);
                  gui.HoldKey(VK_CONTROL);
                  WaitUntil("Apply again",
                            [&] { return dialog.Text(ApplyItems::apply) == "Apply again"; });
                  dialog.ClickMiddle(ApplyItems::apply);
                  WaitUntil("a run on top", [&] { return father.runs == 3; });
                  EXPECT_EQ(father.reverts, 2);
                  gui.ReleaseKey(VK_CONTROL);
                  WaitUntil("Apply", [&] { return dialog.Text(ApplyItems::apply) == "Apply"; });
                  dialog.ClickMiddle(okItem);
                  dialog.WaitUntilClosed();
              }),
              okItem);
    EXPECT_FALSE(isRunOwed) << "the texture shows the result";
    EXPECT_EQ(Open([](const GuiDriver&, const DrivenDialog& dialog) {
                  dialog.ClickMiddle(cancelItem);
                  dialog.WaitUntilClosed();
              }),
              cancelItem);
    EXPECT_EQ(father.reverts, 2) << "the way back is the editor's";
}

TEST_P(EveryDialogTest, OpensWhereItWasLeft) {
    POINT left{};
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        SetWindowPos(dialog.Window(), nullptr, 211, 123, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        dialog.Settle();
        ClientToScreen(dialog.Window(), &left);
    });
    EXPECT_EQ(placement.left, left.x);
    EXPECT_EQ(placement.top, left.y);
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        Keep(dialog, row.name);
        POINT place{};
        ClientToScreen(dialog.Window(), &place);
        EXPECT_EQ(place.x, left.x);
        EXPECT_EQ(place.y, left.y);
    });
}

// --- Presets ---

enum class End { low, high };

/// Gives each field of the record a value at one end of what its controls give.
void FillFromControls(const CatalogRow& row, void* record, End end) {
    const bool isHigh = end == End::high;
    for (const NumberRow& number : RowsOf(numberRows, row.id)) {
        const Field& field = FieldNamed(row, number.field);
        WriteNumber(field, record, isHigh ? field.high : field.low);
    }
    for (const BoxRow& box : RowsOf(boxRows, row.id)) {
        WriteNumber(FieldNamed(row, box.field), record, isHigh ? 1 : 0);
    }
    std::vector<RadioRow> radios = RowsOf(radioRows, row.id);
    if (!isHigh) {
        // The first of each group is written last.
        std::reverse(radios.begin(), radios.end());
    }
    for (const RadioRow& radio : radios) {
        WriteNumber(FieldNamed(row, radio.field), record, radio.value);
    }
    for (const PopupRow& popup : RowsOf(popupRows, row.id)) {
        const Field& field = FieldNamed(row, popup.field);
        WriteNumber(field, record, isHigh ? field.high : field.low);
    }
    for (const SwatchRow& swatch : RowsOf(swatchRows, row.id)) {
        const std::uint16_t component = isHigh ? 0xFE00 : 0x0100;
        WriteColor(FieldNamed(row, swatch.field), record, {component, component, component});
    }
}

class EveryEffectTest : public EveryDialogTest {
  protected:
    using Names = std::vector<std::string>;

    void Fill(End end) { FillFromControls(row, LastUsedRecord(preferences, row.id), end); }
    void ExpectFilled(End end) const {
        AnyRecord expected(row);
        FillFromControls(row, expected.Data(), end);
        for (const Field& field : row.fields) {
            if (field.type == FieldType::color) {
                EXPECT_EQ(ReadColor(field, Record()), ReadColor(field, expected.Data()));
            } else {
                EXPECT_EQ(ReadNumber(field, Record()), ReadNumber(field, expected.Data()))
                    << field.name;
            }
        }
    }
    /// Adds a preset of the values at one end.
    void AddFilled(const char* name, End end) {
        void* const preset = ::operator new(row.recordSize);
        std::memcpy(preset, row.defaults, row.recordSize);
        FillFromControls(row, preset, end);
        preferences.presets[row.presets].Append(preset, name);
    }
    static Names NamesIn(const DrivenDialog& dialog) {
        return Entries(dialog, ApplyItems::presets);
    }
};

std::vector<short> IdsOfEffects() {
    std::vector<short> ids = IdsOfDialogs();
    std::erase_if(ids, [](short id) { return CatalogRowOf(id).presets == presetEffectCount; });
    return ids;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryEffectTest, testing::ValuesIn(IdsOfEffects()), NameOfRow);

TEST_P(EveryEffectTest, PresetsAreSavedChosenAndDeleted) {
    Fill(End::high);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        gui.Chord({VK_MENU, 'S'});
        const DrivenDialog question = gui.WaitFor(presetDialog);
        gui.Type("Salt & pepper");
        WaitUntil("the name", [&] { return question.Text(PresetItems::name) == "Salt & pepper"; });
        gui.Chord({VK_RETURN});
        question.WaitUntilClosed();
        EXPECT_EQ(NamesIn(dialog), (Names{"Last Used", "", "Salt & pepper"}));
    });
    Fill(End::low);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        Apply(dialog);
        ExpectFilled(End::low);
        const int before = father.reverts;
        ChooseEntryByMouse(gui, dialog, ApplyItems::presets, 3);
        EXPECT_EQ(father.reverts, before + 1);
        EXPECT_EQ(father.runs, 1) << "a preset is shown, not run";
        Apply(dialog);
        ExpectFilled(End::high);
        EXPECT_EQ(dialog.Value(ApplyItems::presets), 3);
        dialog.ClickMiddle(ApplyItems::remove);
        EXPECT_EQ(AnswerAlert(gui, dialog),
                  "Are you sure you want to delete the preset named <Salt & pepper>?");
        WaitUntil("an empty list", [&] { return NamesIn(dialog) == Names{"Last Used", ""}; });
        EXPECT_FALSE(dialog.IsEnabled(ApplyItems::remove));
    });
}

TEST_P(EveryEffectTest, AMenuLeftWithoutAChoiceLeavesTheValuesAndTheResult) {
    AddFilled("Another", End::low);
    AddFilled("Third", End::high);
    Fill(End::high);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        Apply(dialog);
        const int before = father.reverts;
        const host::Picture tuned = dialog.Grab();
        OpenMenuOf(dialog, ApplyItems::presets);
        PointAtEntry(dialog, ApplyItems::presets, 3);
        EXPECT_NE(dialog.Grab().pixels, tuned.pixels) << "its values are shown";
        PointAtEntry(dialog, ApplyItems::presets, 4);
        PointAtEntry(dialog, ApplyItems::presets, 3);
        gui.Chord({VK_ESCAPE});
        WaitUntil("the menu to close", [&] { return !HasOpenMenu(dialog); });
        dialog.Settle();
        EXPECT_EQ(dialog.Value(ApplyItems::presets), 1);
        EXPECT_FALSE(dialog.IsEnabled(ApplyItems::remove));
        EXPECT_EQ(father.reverts, before);
        CloseWith(dialog, okItem);
    });
    EXPECT_FALSE(isRunOwed) << "the texture shows the result still";
    Open([&](const GuiDriver&, const DrivenDialog& dialog) { Apply(dialog); });
    ExpectFilled(End::high);
}

TEST_P(EveryEffectTest, LastUsedChosenInTheMenuKeepsTheValues) {
    AddFilled("Another", End::low);
    Fill(End::high);
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        OpenMenuOf(dialog, ApplyItems::presets);
        PointAtEntry(dialog, ApplyItems::presets, 3);
        PointAtEntry(dialog, ApplyItems::presets, 1);
        gui.PressMouse();
        gui.ReleaseMouse();
        WaitUntil("the menu to close", [&] { return !HasOpenMenu(dialog); });
        dialog.Settle();
        Apply(dialog);
    });
    ExpectFilled(End::high);
}

// --- What single dialogs do besides ---

class DividersControlsTest : public ControlsTest {
  protected:
    DividersControlsTest() : ControlsTest(devidersDialog) {}

    using Items = DividersItems;
};

TEST_F(DividersControlsTest, RandomColoursTurnTransparentOnAndGrey) {
    preferences.dividers.transparent = 0;
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        EXPECT_TRUE(dialog.IsEnabled(Items::transparent));
        EXPECT_EQ(dialog.Value(Items::transparent), 0);
        dialog.Click(Items::randomColors, {6, 8});
        WaitUntil("grey", [&] { return !dialog.IsEnabled(Items::transparent); });
        EXPECT_EQ(dialog.Value(Items::transparent), 1);
        ExpectRead(dialog, "transparent", 1);
        dialog.Click(Items::pickedColors, {6, 8});
        WaitUntil("the box", [&] { return dialog.IsEnabled(Items::transparent); });
        EXPECT_EQ(dialog.Value(Items::transparent), 1);
    });
}

TEST_F(DividersControlsTest, AStoredRecordIsShownAsItIs) {
    preferences.dividers.randomColors = 1;
    preferences.dividers.transparent = 0;
    Open([&](const GuiDriver&, const DrivenDialog& dialog) {
        EXPECT_FALSE(dialog.IsEnabled(Items::transparent));
        EXPECT_EQ(dialog.Value(Items::transparent), 0);
        ExpectRead(dialog, "transparent", 0);
    });
}

TEST_F(DividersControlsTest, TheEditorsColoursAreTakenAtEveryRead) {
    DividersParams other;
    other.lines = 7;
    other.foreground = {1, 2, 3};
    other.background = {4, 5, 6};
    AddPreset(preferences.presets[presetDividers], other, "Other");
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        const auto expectColors = [&] {
            Apply(dialog);
            EXPECT_EQ(preferences.dividers.foreground, father.foreground);
            EXPECT_EQ(preferences.dividers.background, father.background);
        };
        expectColors();
        ChooseEntry(gui, dialog, ApplyItems::presets, 3);
        expectColors();
        EXPECT_EQ(preferences.dividers.lines, 7);
        father.foreground = {0x7700, 0, 0};
        father.background = {0, 0x7700, 0};
        expectColors();
    });
}

class WavesControlsTest : public ControlsTest {
  protected:
    WavesControlsTest() : ControlsTest(wavesDialog) {}

    using Items = WavesItems;
    struct Side {
        int form;
        std::vector<int> others;
    };
    const Side horizontal{Items::horizontalForm,
                          {Items::horizontalHeight, Items::horizontalHeightSlider,
                           Items::horizontalCount, Items::horizontalCountSlider}};
    const Side vertical{Items::verticalForm,
                        {Items::verticalHeight, Items::verticalHeightSlider, Items::verticalCount,
                         Items::verticalCountSlider}};

    static void ExpectEnabled(const DrivenDialog& dialog, const Side& side, bool isOn) {
        for (const int item : side.others) {
            EXPECT_EQ(dialog.IsEnabled(item), isOn) << item;
        }
    }
};

TEST_F(WavesControlsTest, NoneDisablesItsSide) {
    preferences.waves.formY = waveNone;
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        ExpectEnabled(dialog, horizontal, true);
        ExpectEnabled(dialog, vertical, false);
        ChooseEntry(gui, dialog, vertical.form, waveRandom);
        ExpectEnabled(dialog, vertical, true);
        ChooseEntry(gui, dialog, horizontal.form, waveNone);
        ExpectEnabled(dialog, horizontal, false);
        ExpectEnabled(dialog, vertical, true);
        ChooseEntryByMouse(gui, dialog, horizontal.form, waveSquare);
        ExpectEnabled(dialog, horizontal, true);
    });
}

TEST_F(WavesControlsTest, TheBytesWithoutControlsAreAlwaysTheSame) {
    preferences.waves.unused12 = 9;
    preferences.waves.interpolate = 0;
    Open([&](const GuiDriver&, const DrivenDialog& dialog) { Apply(dialog); });
    EXPECT_EQ(preferences.waves.unused12, 0);
    EXPECT_EQ(preferences.waves.interpolate, 1);
}

class MosaicControlsTest : public ControlsTest {
  protected:
    MosaicControlsTest() : ControlsTest(mosaicDialog) {}

    /// The places that the arrow comes to from the first entry on.
    static std::vector<int> PlacesOf(const GuiDriver& gui, const DrivenDialog& dialog, int item) {
        std::vector<int> places;
        TabTo(gui, dialog, item);
        gui.Chord({VK_HOME});
        do {
            gui.WaitUntilIdle();
            places.push_back(dialog.Value(item));
            gui.Chord({VK_DOWN});
            gui.WaitUntilIdle();
        } while (dialog.Value(item) != places.back());
        return places;
    }
};

TEST_F(MosaicControlsTest, OffersTheDivisorsOfEachSide) {
    father.size = {100, 150};
    Open([&](const GuiDriver& gui, const DrivenDialog& dialog) {
        EXPECT_EQ(PlacesOf(gui, dialog, MosaicItems::horizontal),
                  (std::vector<int>{1, 3, 4, 6, 7}));
        EXPECT_EQ(PlacesOf(gui, dialog, MosaicItems::vertical), (std::vector<int>{1, 3, 5, 6}));
        Keep(dialog, "mosaic-100-150");
    });
}

}  // namespace
