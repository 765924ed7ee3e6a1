// The dials and swatches of every operation's dialog, by mouse and keyboard: controls that the
// dialogs paint themselves.
#include "fixtures/InputDesktop.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "tests/gui/ControlsRun.Win.h"

namespace {

class DialTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, DialTest,
                         testing::ValuesIn(IdsWith<NumberRow>(
                             numberRows, [](const NumberRow& number) { return number.dial != 0; })),
                         NameOfRow);

class SwatchTest : public EveryDialogTest {};
INSTANTIATE_TEST_SUITE_P(Of, SwatchTest, testing::ValuesIn(IdsWith(swatchRows)), NameOfRow);

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
            // Input comes after all messages: one that still waited would go to the next dialog.
            gui.WaitUntilIdle();
            EXPECT_EQ(father.reverts, reverts) << "there is nothing to press";
            EXPECT_EQ(FocusedItem(dialog), number.dial);
        }
    });
}

}  // namespace
