// The system's messages to a dialog beside clicks and keys, and those between dialogs.
#include <windows.h>

#include <dbt.h>
#include <shellapi.h>
#include <shlobj.h>

#include <atomic>
#include <cstring>

#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/dialog/DialogState.h"
#include "tests/framework/windows/DialogScript.Win.h"
#include "tests/framework/windows/TestDialogs.h"

namespace {

class MessagesTest : public DialogTest {};

TEST_F(MessagesTest, NewSystemColoursReachTheBackground) {
    TestDialog dialog(allItems);
    dialog.atSetup = [&] { dialog.Port().SetBackground(MakeColor24(1, 2, 3)); };
    RunWithScript(dialog, [&](Script& script) {
        SendMessageA(script.Dialog(), WM_SYSCOLORCHANGE, 0, 0);
        EXPECT_EQ(dialog.Port().Background(), GetSysColor(COLOR_BTNFACE));
    });
}

/// Gives the dialog files as the system's shell does; names as in a list of strings. Returns the
/// block, which the dialog has freed.
HGLOBAL Drop(HWND window, const std::vector<std::string>& files) {
    std::string names;
    for (const std::string& file : files) {
        names += file + '\0';
    }
    const SIZE_T size = sizeof(DROPFILES) + names.size() + 1;
    const HGLOBAL memory = GlobalAlloc(GHND, size);
    auto* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    std::memcpy(drop + 1, names.data(), names.size());
    GlobalUnlock(memory);
    SendMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    return memory;
}

TEST_F(MessagesTest, DroppedFilesReachTheHandler) {
    TestDialog dialog(allItems);
    std::vector<std::string> paths;
    dialog.SetDropHandler(
        [](void* context, const char* path) {
            static_cast<std::vector<std::string>*>(context)->push_back(path);
        },
        &paths);
    RunWithScript(dialog, [&](Script& script) {
        EXPECT_NE(GetWindowLongA(script.Dialog(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
        Drop(script.Dialog(), {"C:\\one.jpg", "C:\\a folder\\two.jpg"});
    });
    EXPECT_EQ(paths, (std::vector<std::string>{"C:\\one.jpg", "C:\\a folder\\two.jpg"}));
}

TEST_F(MessagesTest, ADropWhoseHandlerThrowsIsGivenBackAndTold) {
    TestDialog dialog(allItems);
    int calls = 0;
    dialog.SetDropHandler(
        [](void* context, const char*) {
            ++*static_cast<int*>(context);
            throw std::int16_t{31};
        },
        &calls);
    HGLOBAL drop = nullptr;
    RunWithScript(dialog, [&](Script& script) {
        drop = Drop(script.Dialog(), {"C:\\one.jpg", "C:\\two.jpg"});
        EXPECT_TRUE(IsWindow(script.Dialog()));
    });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(GlobalFlags(drop), UINT{GMEM_INVALID_HANDLE}) << "freed";
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 31);
    EXPECT_EQ(errorCell, 0);
}

TEST_F(MessagesTest, WithoutAHandlerDroppedFilesAreLetGo) {
    TestDialog dialog(allItems);
    RunWithScript(dialog, [&](Script& script) {
        EXPECT_EQ(GetWindowLongA(script.Dialog(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
        Drop(script.Dialog(), {"C:\\one.jpg"});
    });
    EXPECT_EQ(dialog.log.All(), (std::vector<std::string>{"hit 2"}));
}

TEST_F(MessagesTest, ANewVolumeReachesTheActiveDialog) {
    TestDialog dialog(allItems);
    RunWithScript(dialog, [&](Script& script) {
        const auto tell = [&](WPARAM event, DWORD type) {
            DEV_BROADCAST_VOLUME volume{};
            volume.dbcv_size = sizeof volume;
            volume.dbcv_devicetype = type;
            SendMessageA(script.Dialog(), WM_DEVICECHANGE, event,
                         reinterpret_cast<LPARAM>(&volume));
        };
        tell(DBT_DEVICEREMOVECOMPLETE, DBT_DEVTYP_VOLUME);
        tell(DBT_DEVICEARRIVAL, DBT_DEVTYP_PORT);
        EXPECT_EQ(dialog.log.Count("disk"), 0);
        tell(DBT_DEVICEARRIVAL, DBT_DEVTYP_VOLUME);
        EXPECT_EQ(dialog.log.Count("disk"), 1);
        SendMessageA(script.Dialog(), WM_DEVICECHANGE, DBT_DEVICEARRIVAL, 0);
        EXPECT_EQ(dialog.log.Count("disk"), 1) << "no volume is named";
    });
}

/// The system tells every window of the program.
TEST_F(MessagesTest, ANewVolumeIsTheActiveDialogsWhicheverIsTold) {
    TestDialog outer(allItems);
    TestDialog nested(small, &outer);
    int result = 0;
    outer.atHit = [&](short item) {
        if (item == check) {
            result = RunWithScript(nested, [&](Script& script) {
                DEV_BROADCAST_VOLUME volume{};
                volume.dbcv_size = sizeof volume;
                volume.dbcv_devicetype = DBT_DEVTYP_VOLUME;
                SendMessageA(static_cast<HWND>(outer.Window()), WM_DEVICECHANGE, DBT_DEVICEARRIVAL,
                             reinterpret_cast<LPARAM>(&volume));
                script.Click(script.Middle(1));
            });
        }
        return item <= 2 ? item : short{0};
    };
    RunWithScript(outer, [&](Script& script) {
        script.Click(script.Middle(check));
        script.WaitUntil("the nested dialog's end", [&] { return result != 0; });
    });
    EXPECT_EQ(nested.log.Count("disk"), 1);
    EXPECT_EQ(outer.log.Count("disk"), 0);
}

TEST_F(MessagesTest, TheCloseBoxDoesNothingWithoutACancelItem) {
    TestDialog dialog(small);
    dialog.SetCancelItem(0);
    bool isOpen = false;
    const int result = RunWithScript(dialog, [&](Script& script) {
        SendMessageA(script.Dialog(), WM_CLOSE, 0, 0);
        isOpen = IsWindowVisible(script.Dialog()) != FALSE;
        script.Click(script.Middle(1));
    });
    EXPECT_TRUE(isOpen);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(dialog.log.All(), (std::vector<std::string>{"hit 1"}));
}

TEST_F(MessagesTest, ADragHitsItsItemOnTheWayAndAtTheEnd) {
    TestDialog dialog(allItems);
    dialog.atSetup = [&] { dialog.SetRange(scrollBar, 0, 9); };
    dialog.atScroll = [&](short item, int value) {
        return dialog.NorvantaDialog::ScrollChanged(item, value);
    };
    RunWithScript(dialog, [&](Script& script) {
        RECT rect{};
        GetWindowRect(script.Item(scrollBar), &rect);
        script.Click({rect.right - 4, (rect.top + rect.bottom) / 2});
        script.WaitFor("hit 10", 2);
    });
    EXPECT_EQ(dialog.log.Count("hit 10"), 2);
}

TEST_F(MessagesTest, AnErrorInADragEndsTheDrag) {
    for (const short item : {scrollBar, slider, userItem}) {
        errorCell = 0;
        TestDialog dialog(allItems);
        dialog.atSetup = [&] { dialog.SetRange(scrollBar, 0, 9); };
        dialog.atScroll = [](short, int) -> bool {
            FatalError(20002, "Test", 1);
            return false;
        };
        dialog.atHit = [](short) -> short {
            FatalError(20002, "Test", 1);
            return 0;
        };
        const int result = RunWithScript(dialog, [&](Script& script) {
            RECT rect{};
            GetWindowRect(script.Item(item), &rect);
            script.Press({rect.right - 4, (rect.top + rect.bottom) / 2});
            script.WaitUntil("the end", [&] { return !IsWindowVisible(script.Dialog()); });
            ReleaseMouse();
        });
        EXPECT_EQ(result, 20002) << item;
        EXPECT_EQ(dialogState.dragDepth, 0) << item;
    }
}

TEST_F(MessagesTest, KeysComeAsCharactersWithTheirModifiers) {
    TestDialog dialog(allItems);
    RunWithScript(dialog, [&](Script& script) {
        script.Click(script.Middle(5));
        script.Keys({{'A'}, {VK_SHIFT, 'A'}, {VK_CONTROL, 'K'}, {VK_UP}, {VK_SHIFT, VK_DOWN}});
        script.WaitFor("key 31 2");
    });
    std::vector<std::string> keys;
    for (const std::string& event : dialog.log.All()) {
        if (event.rfind("key", 0) == 0) {
            keys.push_back(event);
        }
    }
    EXPECT_EQ(keys, (std::vector<std::string>{"key 97 0", "key 65 2", "key 11 1", "key 30 0",
                                              "key 31 2"}));
}

TEST_F(MessagesTest, AnAlertOfAClosedDialogStandsOverTheOneBelow) {
    TestDialog outer(allItems);
    TestDialog nested(small, &outer);
    // So that the only other window that is seen is the alert's.
    nested.KeepHidden();
    nested.atIdle = [&] { nested.Close(1); };
    outer.atHit = [&](short item) {
        if (item == check) {
            nested.Run();
            Alert(&nested, 18013);
        }
        return item <= 2 ? item : short{0};
    };
    HWND owner = nullptr;
    RunWithScript(outer, [&](Script& script) {
        script.Click(script.Middle(check));
        owner = GetWindow(script.WaitForOther(), GW_OWNER);
        EXPECT_EQ(script.EndAlert(1), "Please enter a valid integer.");
        EXPECT_EQ(owner, script.Dialog());
    });
}

TEST_F(MessagesTest, AWindowOutsideTheScreenIsBroughtIn) {
    const hostapi::Rect places[] = {{5000, 5000, 5100, 5250}, {0, 0, 4000, 4000}};
    for (const hostapi::Rect& place : places) {
        TestDialog dialog(resizable);
        dialog.atSetup = [&] { dialog.SetPlacement(place); };
        RECT frame{};
        RECT area{};
        RunWithScript(dialog, [&](Script& script) {
            GetWindowRect(script.Dialog(), &frame);
            SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
            script.Click(script.Middle(1));
        });
        EXPECT_GE(frame.left, area.left);
        EXPECT_GE(frame.top, area.top);
        EXPECT_LE(frame.right, area.right);
        EXPECT_LE(frame.bottom, area.bottom);
    }
}

TEST_F(MessagesTest, OnlyWhatIsSeenAndInvalidIsDrawn) {
    TestDialog dialog(allItems);
    EventLog draws;
    dialog.atDraw = [&](short item) { draws.Add(std::to_string(item)); };
    dialog.atSetup = [&] { dialog.Show(5, false); };
    RunWithScript(dialog, [&](Script& script) {
        script.Settle();
        EXPECT_EQ(draws.Count("5"), 0) << "hidden";
        EXPECT_GT(draws.Count("4"), 0);
        draws.Clear();
        const hostapi::Rect bounds = dialog.GetBounds(userItem);
        const RECT rect{bounds.left, bounds.top, bounds.right, bounds.bottom};
        InvalidateRect(script.Dialog(), &rect, FALSE);
        script.WaitUntil("a paint", [&] { return !draws.All().empty(); });
        EXPECT_EQ(draws.All(), (std::vector<std::string>{"20"}));
    });
}

TEST_F(MessagesTest, ADialogThatAnErrorClosedBelowAnAlertIsNotActiveAgain) {
    TestDialog dialog(allItems);
    NorvantaDialog* after = &dialog;
    dialog.atHit = [&](short) {
        {
            const DialogSuspension suspension;
            dialog.Close(7);
        }
        after = NorvantaDialog::Active();
        return short{0};
    };
    EXPECT_EQ(RunWithScript(dialog, [](Script& script) { script.Click(script.Middle(check)); }), 7);
    EXPECT_EQ(after, nullptr);
}

// --- More than one dialog ---

bool IsVisible(const NorvantaDialog& dialog) {
    return IsWindowVisible(static_cast<HWND>(dialog.Window())) != FALSE;
}

TEST_F(MessagesTest, AFloatingDialogComesAndGoesWithTheProgram) {
    TestDialog dialog(small, nullptr, NorvantaDialog::Kind::floating);
    dialog.Create();
    const HWND window = static_cast<HWND>(dialog.Window());
    EXPECT_TRUE(IsVisible(dialog));
    dialog.AppActivate(false);
    EXPECT_FALSE(IsVisible(dialog));
    dialog.AppActivate(true);
    EXPECT_TRUE(IsVisible(dialog));
    {
        const DialogSuspension suspension;
        EXPECT_FALSE(IsVisible(dialog));
    }
    EXPECT_TRUE(IsVisible(dialog));
    dialog.SetActive(false);
    EXPECT_FALSE(IsWindowEnabled(window));
    dialog.SetActive(true);
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_EQ(dialog.CloseBox(), 0) << "it has no cancel item";
    EXPECT_FALSE(IsVisible(dialog));
    dialog.Close(1);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(dialog.IsOpen());
}

TEST_F(MessagesTest, ADialogThatGoesTakesItsWindowAlong) {
    HWND window = nullptr;
    {
        TestDialog dialog(small, nullptr, NorvantaDialog::Kind::floating);
        dialog.Create();
        window = static_cast<HWND>(dialog.Window());
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(MessagesTest, KeysGoToTheDialogWithTheFocus) {
    TestDialog dialog(small, nullptr, NorvantaDialog::Kind::floating);
    dialog.atSetup = [&] {
        dialog.SetFormat(3, "%d", 0, 10);
        dialog.SetValue(3, 5);
    };
    dialog.Create();
    dialog.SetFocus(3);
    dialogState.focused = &dialog;
    TestDialog other(small);
    EXPECT_EQ(other.NorvantaDialog::KeyDown(upArrowCharacter, 0), 0);
    EXPECT_EQ(dialog.GetText(3), "6");
    EXPECT_EQ(dialog.GetValue(3), 6);
    EXPECT_EQ(dialog.log.Count("hit 3"), 1);
    EXPECT_EQ(other.NorvantaDialog::KeyDown('x', 0), 0);
    EXPECT_EQ(Log().beeps, 1);
    EXPECT_EQ(other.NorvantaDialog::KeyDown('7', 0), -1);
    EXPECT_TRUE(other.log.All().empty());
}

TEST_F(MessagesTest, AKeyWithoutACharacterIsSwallowed) {
    TestDialog dialog(small);
    dialog.atIdle = [&] {
        EXPECT_EQ(dialog.NorvantaDialog::KeyDown(0, 0), 0);
        dialog.Close(1);
    };
    EXPECT_EQ(dialog.Run(), 1);
}

TEST_F(MessagesTest, AClosedDialogIsNotTheActiveOne) {
    TestDialog dialog(small);
    EXPECT_EQ(RunWithScript(dialog, [](Script& script) { script.Click(script.Middle(1)); }), 1);
    EXPECT_EQ(NorvantaDialog::Active(), nullptr);
    EXPECT_EQ(dialogState.focused, nullptr);
}

/// All objects that the system gives, but for a few.
class GdiShortage {
  public:
    explicit GdiShortage(int spared) {
        while (const HRGN region = CreateRectRgn(0, 0, 1, 1)) {
            regions.push_back(region);
        }
        for (int i = 0; i < spared && !regions.empty(); ++i) {
            DeleteObject(regions.back());
            regions.pop_back();
        }
    }
    GdiShortage(const GdiShortage&) = delete;
    GdiShortage& operator=(const GdiShortage&) = delete;
    ~GdiShortage() {
        for (const HRGN region : regions) {
            DeleteObject(region);
        }
    }

  private:
    std::vector<HRGN> regions;
};

TEST_F(MessagesTest, WithoutObjectsOfTheSystemDrawingIsAFault) {
    const HWND window = GetDesktopWindow();
    int regionFault = 0;
    int portFault = 0;
    {
        const GdiShortage shortage(0);
        regionFault = FaultOf([] { const Region region; });
        portFault = FaultOf([&] { const DrawingPort port(window); });
    }
    EXPECT_EQ(regionFault, -108);
    EXPECT_EQ(portFault, -108);
}

TEST_F(MessagesTest, WhatCannotBeDrawnIsDrawnByTheNextPaint) {
    TestDialog dialog(allItems);
    std::atomic<int> draws = 0;
    dialog.atDraw = [&](short item) {
        if (item != userItem) {
            return;
        }
        ++draws;
        const hostapi::Rect bounds = dialog.GetBounds(item);
        DrawingPort& port = dialog.Port();
        port.FillRect(bounds);
        port.SetForeground(MakeColor24(200, 100, 0));
        port.PaintRect(Inset(bounds, 4, 4));
        port.DrawPicture(600, Inset(bounds, 8, 8));
        port.DrawIcon(601, {bounds.top, bounds.left});
        port.SetForeground(MakeColor24(0, 0, 0));
        port.DrawText("text", Inset(bounds, 10, 10), 0);
        port.DrawEdge(bounds, 1);
    };
    RunWithScript(dialog, [&](Script& script) {
        const host::Picture before = script.Shot();
        int drawsInShortage = 0;
        for (int spared = 0; spared < 8; ++spared) {
            {
                const GdiShortage shortage(spared);
                const int drawsBefore = draws;
                Repaint(script.Dialog());
                script.Settle();
                drawsInShortage += draws - drawsBefore;
            }
            EXPECT_TRUE(IsWindowVisible(script.Dialog()));
            EXPECT_TRUE(script.Shot() == before) << spared;
        }
        EXPECT_GT(drawsInShortage, 0) << "some have come as far as the item";
        script.Click(script.Middle(1));
    });
    EXPECT_EQ(errorCell, 0);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(MessagesTest, WithoutAPortADialogEndsByItself) {
    int shortages = 0;
    for (int spared = 0; spared < 16; ++spared) {
        errorCell = 0;
        TestDialog dialog(small);
        dialog.atIdle = [&] { dialog.Close(1); };
        int result = 0;
        const int fault = FaultOf([&] {
            const GdiShortage shortage(spared);
            result = RunWithScript(dialog, [](Script&) {});
        });
        EXPECT_TRUE(fault == 20001 || fault == -108 || result == -108 || result == 1)
            << spared << ": " << fault << " " << result;
        shortages += result == -108 ? 1 : 0;
        EXPECT_FALSE(dialog.IsOpen());
    }
    EXPECT_GT(shortages, 0) << "some have come as far as the port";
}

TEST_F(MessagesTest, ADialogCanOpenWithoutBeingShown) {
    TestDialog dialog(small);
    dialog.KeepHidden();
    bool wasVisible = true;
    dialog.atIdle = [&] {
        wasVisible = IsVisible(dialog);
        dialog.Close(4);
    };
    EXPECT_EQ(dialog.Run(), 4);
    EXPECT_FALSE(wasVisible);
}

TEST_F(MessagesTest, IdleRestsInAnAlert) {
    TestDialog dialog(allItems);
    std::atomic<int> idles = 0;
    dialog.atIdle = [&] { ++idles; };
    dialog.atHit = [&](short item) {
        if (item == check) {
            Alert(&dialog, 18013);
        }
        return item <= 2 ? item : short{0};
    };
    RunWithScript(dialog, [&](Script& script) {
        script.Click(script.Middle(check));
        script.WaitForOther();
        const int before = idles;
        EXPECT_EQ(NorvantaDialog::Active(), nullptr);
        for (int i = 0; i < 5; ++i) {
            SendMessageA(script.Dialog(), WM_TIMER, 1, 0);
        }
        EXPECT_EQ(idles, before);
        script.EndAlert(1);
        script.WaitUntil("idle work again", [&] { return idles > before; });
        EXPECT_EQ(NorvantaDialog::Active(), &dialog);
    });
}

}  // namespace
