// Dialogs open, close and nest.
#include <atomic>
#include <new>
#include <utility>

#include "base/FatalError.h"
#include "framework/controls/GlobeControl.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"
#include "tests/support/windows/Levels.Win.h"

namespace {

class DialogLifeTest : public DialogTest {};

TEST_F(DialogLifeTest, ItemsAreCountedToTheFirstGap) {
    TestDialog dialog(allItems);
    int count = 0;
    dialog.atSetup = [&] { count = dialog.ItemCount(); };
    RunWithScript(dialog, [](Script&) {});
    EXPECT_EQ(count, 22);
}

TEST_F(DialogLifeTest, TheItemThatClosesIsTheResult) {
    for (const int item : {1, 2}) {
        TestDialog dialog(small);
        EXPECT_EQ(
            RunWithScript(dialog, [item](Script& script) { script.Click(script.Middle(item)); }),
            item);
        EXPECT_FALSE(dialog.IsOpen());
    }
}

TEST_F(DialogLifeTest, ReturnAndEscapePressTheirButtons) {
    TestDialog first(small);
    EXPECT_EQ(RunWithScript(first, [](Script& script) { script.Keys({{VK_RETURN}}); }), 1);
    TestDialog second(small);
    EXPECT_EQ(RunWithScript(second, [](Script& script) { script.Keys({{VK_ESCAPE}}); }), 2);
}

TEST_F(DialogLifeTest, TheCloseBoxCancels) {
    TestDialog dialog(small);
    EXPECT_EQ(RunWithScript(dialog,
                            [](Script& script) {
                                PostMessageA(script.Dialog(), WM_SYSCOMMAND, SC_CLOSE, 0);
                                script.WaitFor("hit 2");
                            }),
              2);
}

TEST_F(DialogLifeTest, AHitThatAnswersZeroLeavesTheDialogOpen) {
    TestDialog dialog(small);
    bool wasOpen = false;
    dialog.atHit = [&](short item) { return dialog.log.Count("hit 1") < 2 ? short{0} : item; };
    EXPECT_EQ(RunWithScript(dialog,
                            [&](Script& script) {
                                script.Click(script.Middle(1));
                                script.WaitFor("hit 1");
                                wasOpen = IsWindowVisible(script.Dialog()) != FALSE;
                                script.Click(script.Middle(1));
                            }),
              1);
    EXPECT_TRUE(wasOpen);
}

TEST_F(DialogLifeTest, EscapeWithoutACancelItemDoesNothing) {
    TestDialog dialog(small);
    dialog.SetCancelItem(0);
    bool wasOpen = false;
    EXPECT_EQ(RunWithScript(dialog,
                            [&](Script& script) {
                                script.Keys({{VK_ESCAPE}, {VK_CONTROL, 'C'}});
                                wasOpen = IsWindowVisible(script.Dialog()) != FALSE;
                                script.Click(script.Middle(1));
                            }),
              1);
    EXPECT_TRUE(wasOpen);
    EXPECT_EQ(dialog.log.Count("hit 2"), 0);
}

// They make the characters of Escape and Ctrl+C.
TEST_F(DialogLifeTest, OtherKeysOfTheSameCharactersCancelNothing) {
    TestDialog dialog(small);
    EXPECT_EQ(RunWithScript(dialog,
                            [&](Script& script) {
                                script.Keys({{VK_CONTROL, VK_OEM_4}, {VK_CONTROL, VK_SHIFT, 'C'}});
                                script.Click(script.Middle(1));
                            }),
              1);
    EXPECT_EQ(dialog.log.Count("hit 2"), 0);
}

TEST_F(DialogLifeTest, ControlAndCIsCancel) {
    TestDialog dialog(small);
    EXPECT_EQ(RunWithScript(dialog, [&](Script& script) { script.Keys({{VK_CONTROL, 'C'}}); }), 2);
}

TEST_F(DialogLifeTest, AMissingResourceIsAFault) {
    TestDialog dialog(499);
    EXPECT_EQ(FaultOf([&] { dialog.Run(); }), 20001);
    EXPECT_EQ(Log().faults.size(), 1u);
}

TEST_F(DialogLifeTest, ADialogWithoutItemsClosesWithTheFault) {
    TestDialog dialog(540);
    EXPECT_EQ(dialog.Run(), 20008);
    EXPECT_EQ(Log().faults.size(), 1u);
}

TEST_F(DialogLifeTest, CallsWithoutAWindowAreFaults) {
    TestDialog dialog(small);
    EXPECT_EQ(FaultOf([&] { dialog.GetValue(1); }), 20009);
    EXPECT_EQ(FaultOf([&] { dialog.SetText(3, "x"); }), 20009);
    EXPECT_EQ(FaultOf([&] { dialog.Port(); }), 20009);
    EXPECT_EQ(dialog.GetValue(0), 0);
}

TEST_F(DialogLifeTest, ItemsThatAreNoneAreFaults) {
    TestDialog dialog(small);
    std::vector<int> faults;
    dialog.atSetup = [&] {
        faults = {FaultOf([&] { dialog.GetValue(-1); }), FaultOf([&] { dialog.GetValue(5); }),
                  FaultOf([&] { dialog.SetValue(0, 1); }),
                  FaultOf([&] { dialog.Enable(5, true); })};
        errorCell = 0;
        EXPECT_EQ(dialog.GetValue(0), 0);
    };
    RunWithScript(dialog, [](Script&) {});
    EXPECT_EQ(faults, (std::vector<int>{20008, 20008, 20008, 20008}));
}

TEST_F(DialogLifeTest, AnErrorInIdleClosesTheDialogWithItsId) {
    TestDialog dialog(small);
    dialog.atIdle = [] { FatalError(20002, "Test", 1); };
    EXPECT_EQ(dialog.Run(), 20002);
    EXPECT_EQ(errorCell, 20002);
}

TEST_F(DialogLifeTest, AFaultInAHitClosesTheDialog) {
    for (const std::int16_t id : {std::int16_t{20005}, std::int16_t{-108}, std::int16_t{2}}) {
        errorCell = 0;
        TestDialog dialog(small);
        dialog.atHit = [&](short) {
            FatalError(id, "Test", 1);
            return short{0};
        };
        EXPECT_EQ(RunWithScript(dialog, [](Script& script) { script.Click(script.Middle(1)); }),
                  id);
    }
}

TEST_F(DialogLifeTest, WhateverElseIsThrownInAHitIsToldAndTheDialogStays) {
    struct Case {
        std::function<void()> fail;
        int told;
    };
    for (const Case& thrown :
         {Case{[] { throw std::int16_t{31}; }, 31}, Case{[] { throw 1.5; }, 20008},
          Case{[] { throw std::int16_t{0}; }, 20008}, Case{[] { throw std::int16_t{-39}; }, 20008},
          Case{[] { throw std::int16_t{32511}; }, 32511},
          Case{[] { throw std::int16_t{32512}; }, 0}, Case{[] { throw std::int16_t{32767}; }, 0}}) {
        Log().faults.clear();
        TestDialog dialog(small);
        std::atomic<int> hits = 0;
        dialog.atHit = [&](short item) {
            if (hits++ == 0) {
                thrown.fail();
            }
            return item;
        };
        EXPECT_EQ(RunWithScript(dialog,
                                [&](Script& script) {
                                    script.Click(script.Middle(1));
                                    script.WaitUntil("the throw", [&] { return hits == 1; });
                                    script.Settle();
                                    script.Click(script.Middle(1));
                                }),
                  1);
        ASSERT_EQ(Log().faults.size(), thrown.told != 0 ? 1u : 0u);
        if (thrown.told != 0) {
            EXPECT_EQ(Log().faults[0].id, thrown.told);
        }
        EXPECT_EQ(errorCell, 0);
    }
}

TEST_F(DialogLifeTest, WhatIsThrownInSetupIsToldAfterTheDialogHasClosed) {
    for (const int id : {31, -39}) {
        Log().faults.clear();
        TestDialog dialog(small);
        dialog.atSetup = [&] { throw static_cast<std::int16_t>(id); };
        EXPECT_EQ(dialog.Run(), 2) << "as by Cancel";
        EXPECT_FALSE(dialog.IsOpen());
        ASSERT_EQ(Log().faults.size(), 1u);
        EXPECT_EQ(Log().faults[0].id, id > 0 ? id : 20008);
        EXPECT_EQ(errorCell, 0);
    }
    TestDialog next(small);
    EXPECT_EQ(RunWithScript(next, [](Script& script) { script.Click(script.Middle(1)); }), 1);
}

TEST_F(DialogLifeTest, ALackOfMemoryInAHitIsAnAlert) {
    for (const bool isId : {false, true}) {
        TestDialog dialog(small);
        int hits = 0;
        dialog.atHit = [&](short item) {
            if (hits++ > 0) {
                return item;
            }
            if (isId) {
                throw std::int16_t{-108};
            }
            throw std::bad_alloc();
        };
        EXPECT_EQ(RunWithScript(dialog,
                                [&](Script& script) {
                                    script.Click(script.Middle(1));
                                    EXPECT_EQ(script.EndAlert(1),
                                              "The operation could not be completed, because of a "
                                              "shortage of memory.");
                                    script.Click(script.Middle(1));
                                }),
                  1);
        EXPECT_EQ(errorCell, 0);
    }
}

TEST_F(DialogLifeTest, WhatIsThrownInIdleOrPaintIsNotTold) {
    TestDialog dialog(small);
    int idles = 0;
    dialog.atIdle = [&] {
        if (++idles < 5) {
            throw std::bad_alloc();
        }
        dialog.Close(7);
    };
    EXPECT_EQ(dialog.Run(), 7);
    EXPECT_TRUE(Log().faults.empty());
    EXPECT_EQ(errorCell, 0);
}

TEST_F(DialogLifeTest, AnErrorBeforeClosesEveryDialogThatOpens) {
    errorCell = 20001;
    TestDialog dialog(small);
    EXPECT_EQ(dialog.Run(), 20001);
    TestDialog another(allItems);
    EXPECT_EQ(another.Run(), 20001);
}

TEST_F(DialogLifeTest, AnErrorInANestedDialogClosesAll) {
    TestDialog outer(allItems);
    int inner = 0;
    outer.atHit = [&](short) {
        TestDialog nested(small, &outer);
        nested.atIdle = [] { FatalError(20002, "Test", 1); };
        inner = nested.Run();
        return short{0};
    };
    EXPECT_EQ(RunWithScript(outer, [](Script& script) { script.Click(script.Middle(1)); }), 20002);
    EXPECT_EQ(inner, 20002);
}

TEST_F(DialogLifeTest, DialogsNest) {
    TestDialog outer(allItems);
    bool wasDisabled = false;
    bool wasActive = false;
    int inner = 0;
    outer.atHit = [&](short item) {
        if (item != 7) {
            return item;
        }
        TestDialog nested(small);
        inner = RunWithScript(nested, [&](Script& script) {
            wasDisabled = GetWindow(script.Dialog(), GW_OWNER) == outer.Window() &&
                          !IsWindowEnabled(static_cast<HWND>(outer.Window()));
            wasActive = dialogState.active == &nested;
            script.Keys({{VK_ESCAPE}});
        });
        return short{0};
    };
    bool isActiveAgain = false;
    EXPECT_EQ(RunWithScript(outer,
                            [&](Script& script) {
                                script.Click(script.Middle(7));
                                script.WaitUntil("the nested dialog's end",
                                                 [&] { return inner != 0; });
                                script.Settle();
                                isActiveAgain = dialogState.active == &outer;
                                script.Click(script.Middle(1));
                            }),
              1);
    EXPECT_EQ(inner, 2);
    EXPECT_TRUE(wasDisabled);
    EXPECT_TRUE(wasActive);
    EXPECT_TRUE(isActiveAgain);
}

// The system takes the mouse from the windows that wait for the dialog, but not from others.
TEST_F(DialogLifeTest, AWindowThatHoldsTheMouseGivesItToTheDialog) {
    TestDialog dialog(small);
    const HWND other = CreateWindowExA(0, "STATIC", "Other", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                       nullptr, nullptr, nullptr, nullptr);
    HWND holder = nullptr;
    dialog.atSetup = [&] { holder = GetCapture(); };
    SetCapture(other);
    ASSERT_EQ(GetCapture(), other);
    const int result = RunWithScript(dialog, [&](Script& script) {
        script.Click(script.Middle(okItem));
        script.WaitFor("hit 1");
    });
    DestroyWindow(other);
    EXPECT_EQ(holder, nullptr);
    EXPECT_EQ(result, okItem);
}

TEST_F(DialogLifeTest, TabWalksInItemOrder) {
    TestDialog dialog(allItems);
    std::vector<int> walk;
    RunWithScript(dialog, [&](Script& script) {
        for (int i = 0; i < 16; ++i) {
            walk.push_back(script.Focus());
            script.Keys({{VK_TAB}});
        }
        script.Keys({{VK_SHIFT, VK_TAB}});
        walk.push_back(script.Focus());
    });
    EXPECT_EQ(walk, (std::vector<int>{1, 2, 3, 4, 5, 7, 8, 9, 10, 12, 13, 14, 15, 17, 18, 21, 21}));
}

TEST_F(DialogLifeTest, TabWalksInItemOrderWhateverTheResources) {
    TestDialog dialog(mixed);
    std::vector<int> walk;
    RunWithScript(dialog, [&](Script& script) {
        script.Click(script.Middle(3));
        for (int i = 0; i < 6; ++i) {
            walk.push_back(script.Focus());
            script.Keys({{VK_TAB}});
        }
        script.Keys({{VK_SHIFT, VK_TAB}});
        walk.push_back(script.Focus());
    });
    EXPECT_EQ(walk, (std::vector<int>{3, 4, 5, 1, 2, 3, 3}));
}

TEST_F(DialogLifeTest, TabWalksInTheOrderThatItWasGiven) {
    TestDialog dialog(allItems);
    dialog.atSetup = [&] { dialog.SetTabOrder({7, 3, 12, 2}); };
    std::vector<int> walk;
    RunWithScript(dialog, [&](Script& script) {
        for (int i = 0; i < 16; ++i) {
            walk.push_back(script.Focus());
            script.Keys({{VK_TAB}});
        }
    });
    EXPECT_EQ(walk, (std::vector<int>{1, 4, 5, 7, 3, 12, 2, 8, 9, 10, 13, 14, 15, 17, 18, 21}));
}

TEST_F(DialogLifeTest, EachWindowOpensInTheTabOrderThatItsDialogWasGivenBefore) {
    TestDialog dialog(mixed);
    dialog.SetTabOrder({2, 5, 1});
    for (int opening = 0; opening < 2; ++opening) {
        std::vector<int> walk;
        RunWithScript(dialog, [&](Script& script) {
            script.Click(script.Middle(3));
            for (int i = 0; i < 6; ++i) {
                walk.push_back(script.Focus());
                script.Keys({{VK_TAB}});
            }
        });
        EXPECT_EQ(walk, (std::vector<int>{3, 4, 2, 5, 1, 3}));
    }
}

TEST_F(DialogLifeTest, SetFocusMovesBySteps) {
    TestDialog dialog(allItems);
    std::vector<int> focus;
    dialog.atHit = [&](short item) {
        if (item == 7) {
            for (const int step : {0, 1, -1}) {
                dialog.SetFocus(4, step);
                focus.push_back(dialog.GetFocusItem());
            }
        }
        return item <= 2 ? item : short{0};
    };
    RunWithScript(dialog, [&](Script& script) {
        script.Click(script.Middle(7));
        script.WaitFor("hit 7");
    });
    EXPECT_EQ(focus, (std::vector<int>{4, 5, 3}));
}

TEST_F(DialogLifeTest, IdleRests) {
    // Idle work comes by itself, but not while a drag is under way.
    TestDialog dialog(small);
    std::atomic<int> idles = 0;
    dialog.atIdle = [&] { ++idles; };
    RunWithScript(dialog, [&](Script& script) {
        script.WaitUntil("idle work", [&] { return idles > 3; });
        ++dialogState.dragDepth;
        script.Settle();
        const int before = idles;
        for (int i = 0; i < 10; ++i) {
            SendMessageA(script.Dialog(), WM_TIMER, 1, 0);
        }
        EXPECT_EQ(idles, before);
        --dialogState.dragDepth;
        script.WaitUntil("idle work again", [&] { return idles > before; });
    });
}

TEST_F(DialogLifeTest, OwnKeysComeBeforeTheSystemKeys) {
    TestDialog dialog(resizable);
    bool wasOpen = false;
    RunWithScript(dialog, [&](Script& script) {
        // Ctrl+C in a field of a dialog with a key of that name is not taken for Escape.
        script.Click(script.Middle(2));
        script.Keys({{VK_CONTROL, 'C'}});
        script.WaitFor("menu 17777");
        wasOpen = IsWindowVisible(script.Dialog()) != FALSE;
        script.Click(script.Middle(1));
    });
    EXPECT_TRUE(wasOpen);
    EXPECT_EQ(dialog.log.Count("menu 17777"), 1);
}

/// Opens a dialog with everything in it, and one over it, and closes both.
void OpenAndClose() {
    TestDialog dialog(allItems);
    GlobeControl globe;
    dialog.atSetup = [&] {
        dialog.SetFormat(3, "%d", 0, 100);
        dialog.SetPopupPicture(12, 1, 603);
        dialog.InsertPopupEntry(13, 2, "new");
        dialog.Port().DrawPicture(600, {0, 0, 10, 10});
        dialog.Port().DrawIcon(601, {0, 0});
        dialog.SetDropHandler([](void*, const char*) {}, nullptr);
        globe.Initialize(&dialog, 16, 600, 601, 7, nullptr);
        globe.SetAngle(30);
    };
    dialog.atDraw = [&](short item) {
        if (item == 16) {
            globe.Draw();
        }
    };
    bool isNested = false;
    dialog.atIdle = [&] {
        // Idle work goes on below the other dialog.
        if (std::exchange(isNested, true)) {
            return;
        }
        TestDialog nested(small, &dialog);
        nested.atIdle = [&] { nested.Close(6); };
        EXPECT_EQ(nested.Run(), 6);
        dialog.Close(7);
    };
    EXPECT_EQ(dialog.Run(), 7);
}

TEST_F(DialogLifeTest, NothingIsLeftBehind) {
    constexpr int openingsBefore = 10;
    constexpr int openings = 100;
    // The system keeps as many device contexts as were ever in use at the same time, which depends
    // on the order of paints. A leak of one object an opening would be ten times as many.
    constexpr int contextsOfTheSystem = openings / 10;
    const auto openSome = [](int count) {
        for (int i = 0; i < count; ++i) {
            OpenAndClose();
        }
        return CountLevels();
    };
    const Levels before = openSome(openingsBefore);
    Levels after = openSome(openings);
    EXPECT_NEAR(after.gdiObjects, before.gdiObjects, contextsOfTheSystem);
    after.gdiObjects = before.gdiObjects;
    EXPECT_EQ(before, after);
}

}  // namespace
