// Where dialogs stand on the screen, and how large they are.
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"

namespace {

class DialogPlacementTest : public DialogTest {};

TEST_F(DialogPlacementTest, ACentredDialogStaysInTheWorkArea) {
    TestDialog outer(resizable);
    hostapi::Rect client{};
    outer.atHit = [&](short item) {
        if (item == 3) {
            outer.SetPlacement({30, 4, 110, 250});
            TestDialog nested(allItems);
            RunWithScript(nested, [&](Script& script) {
                RECT frame{};
                GetWindowRect(script.Dialog(), &frame);
                client = hostapi::Rect{static_cast<std::int16_t>(frame.top),
                                       static_cast<std::int16_t>(frame.left),
                                       static_cast<std::int16_t>(frame.bottom),
                                       static_cast<std::int16_t>(frame.right)};
            });
        }
        return item == 1 ? item : short{0};
    };
    RunWithScript(outer, [&](Script& script) {
        script.Click(script.Middle(3));
        script.WaitUntil("the nested dialog", [&] { return client.right != 0; });
        script.Click(script.Middle(1));
    });
    EXPECT_EQ(client.top, 8);
    EXPECT_EQ(client.left, 8);
}

TEST_F(DialogPlacementTest, PlacementsMoveSizeAndMaximize) {
    TestDialog dialog(resizable);
    hostapi::Rect placed{};
    hostapi::Rect item{};
    hostapi::Rect itemBefore{};
    bool isMaximized = false;
    hostapi::Rect whenMaximized{};
    dialog.atSetup = [&] {
        dialog.SetResizeRule(1, resizeMoveRight | resizeMoveDown);
        dialog.SetResizeRule(3, resizeGrowRight | resizeGrowDown);
        itemBefore = dialog.GetBounds(3);
        const hostapi::Rect client = dialog.ClientRectangle();
        dialog.SetPlacement({100, 120, static_cast<std::int16_t>(100 + Height(client) + 50),
                             static_cast<std::int16_t>(120 + Width(client) + 40)});
        placed = dialog.ClientRectangle();
        item = dialog.GetBounds(3);
        dialog.SetPlacement({static_cast<std::int16_t>(placed.top | 0x8000), placed.left,
                             placed.bottom, placed.right});
        isMaximized = IsZoomed(static_cast<HWND>(dialog.Window())) != FALSE;
        whenMaximized = dialog.Placement();
    };
    RunWithScript(dialog, [](Script& script) { script.Click(script.Middle(1)); });
    EXPECT_EQ(placed.top, 100);
    EXPECT_EQ(placed.left, 120);
    EXPECT_EQ(dialog.log.Count("resize 40 50"), 1);
    EXPECT_EQ(Width(item), Width(itemBefore) + 40);
    EXPECT_EQ(Height(item), Height(itemBefore) + 50);
    EXPECT_TRUE(isMaximized);
    EXPECT_EQ(whenMaximized.top, static_cast<std::int16_t>(0x8000 | 100));
    EXPECT_EQ(whenMaximized.left, 120);
    EXPECT_EQ(whenMaximized.bottom, placed.bottom);
    EXPECT_EQ(whenMaximized.right, placed.right);
}

// The system cuts the window before it tells anybody of its size.
TEST_F(DialogPlacementTest, TheItemsOfADialogLargerThanTheScreenComeIntoIt) {
    TestDialog dialog(large);
    dialog.atSetup = [&] {
        dialog.SetResizeRule(1, resizeMoveRight | resizeMoveDown);
        dialog.SetResizeRule(2, resizeGrowRight | resizeGrowDown);
    };
    RECT client{};
    hostapi::Rect button{};
    hostapi::Rect field{};
    RunWithScript(dialog, [&](Script& script) {
        GetClientRect(script.Dialog(), &client);
        button = dialog.GetBounds(1);
        field = dialog.GetBounds(2);
        script.Click(script.Middle(1));
    });
    EXPECT_LE(client.right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_LE(client.bottom, GetSystemMetrics(SM_CYSCREEN));
    // As far from the edges as on a screen that is large enough: 7 and 7 units.
    EXPECT_NEAR(client.right - button.right, 11, 1);
    EXPECT_NEAR(client.bottom - button.bottom, 11, 1);
    EXPECT_NEAR(client.right - field.right, 11, 1);
}

TEST_F(DialogPlacementTest, NoWindowIsDraggedSmallerThanItsResource) {
    TestDialog dialog(resizable);
    RECT before{};
    RECT after{};
    RunWithScript(dialog, [&](Script& script) {
        GetWindowRect(script.Dialog(), &before);
        // The lower right corner, inwards.
        script.Press({before.right - 2, before.bottom - 2});
        script.ReleaseAt({before.right - 60, before.bottom - 50});
        GetWindowRect(script.Dialog(), &after);
        script.Click(script.Middle(1));
    });
    EXPECT_EQ(after.right, before.right);
    EXPECT_EQ(after.bottom, before.bottom);
}

}  // namespace
