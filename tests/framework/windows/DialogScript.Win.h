// Opens a dialog in the test's thread and lets a script use it from another, with real input.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/Platform.h"
#include "fixtures/GuiDriver.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "hostapi/FilterRecord.h"

/// The events in their order; written by one thread, read by both.
class EventLog {
  public:
    void Add(const std::string& event);
    std::vector<std::string> All() const;
    /// How often it happened.
    int Count(const std::string& event) const;
    void Clear();

  private:
    mutable std::mutex mutex;
    std::vector<std::string> events;
};

/// A dialog that logs its calls and runs the test's functions in them.
class TestDialog : public NorvantaDialog {
  public:
    explicit TestDialog(short resource, NorvantaDialog* newOwner = nullptr,
                        Kind newKind = Kind::modal)
        : NorvantaDialog(resource, newOwner, newKind) {}

    void Setup() override;
    short ItemHit(short item) override;
    short KeyDown(int key, int modifiers) override;
    void MenuCommand(short id) override;
    bool ScrollChanged(short item, int value) override;
    void DrawItem(short item) override;
    void Idle() override;
    void Resize(short widthChange, short heightChange) override;
    short CursorAt(short item) override;
    void DiskEvent() override;

    EventLog log;
    std::function<void()> atSetup;
    /// Returns what ItemHit returns; without it items 1 and 2 close the dialog.
    std::function<short(short)> atHit;
    std::function<void(short)> atDraw;
    std::function<void()> atIdle;
    std::function<bool(short, int)> atScroll;
    std::function<short(short)> atCursor;
};

/// The user of a window, on a thread of its own. Waiting for something that does not
/// come throws GuiError, which fails the test and closes its dialogs.
class Script {
  public:
    Script(const DrivenDialog& newDialog, TestDialog& newTest)
        : dialog(newDialog.Window()), test(newTest) {}
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;
    ~Script();

    HWND Dialog() const { return dialog; }
    HWND Item(int item) const { return GetDlgItem(dialog, item); }
    /// Waits until all that was sent before has been handled.
    void Settle() const { WaitForRest(dialog); }

    /// In the client area of the item.
    POINT Inside(int item, int x, int y) const;
    POINT Middle(int item) const;
    void MoveTo(POINT place) const;
    void Press(POINT place) const;
    void ReleaseAt(POINT place) const;
    void Click(POINT place) const;
    void Keys(const std::vector<std::vector<WORD>>& chords) const;
    /// Characters of the keyboard's plain layer: digits, letters, comma, point, minus, blank.
    void Type(const std::string& text) const;

    void SetText(int item, const std::string& text) const { PutText(Item(item), text); }
    /// Does not wait: the change may open an alert.
    void SetTextLater(int item, const std::string& text);
    std::string Text(int item) const { return TextOf(Item(item)); }
    std::string Title() const { return TextOf(dialog); }

    /// Waits until the event has happened so many times since the log was cleared.
    void WaitFor(const std::string& event, int times = 1) const;
    /// The error's text has the log.
    void WaitUntil(const std::string& what, const std::function<bool()>& condition) const;
    /// The item that has the focus; 0 for none.
    int Focus() const { return FocusedItem(dialog); }
    bool IsInMenu() const { return ::IsInMenu(dialog); }
    /// The popup menu that is open.
    HMENU OpenMenu() const;
    /// The middle of an entry of the open menu, counted from 1, on the screen.
    POINT MenuEntry(int entry) const;
    /// Whether all of a field's text is selected.
    bool IsAllSelected(int item) const;

    /// The visible alert or other dialog over this one.
    HWND WaitForOther() const;
    /// Waits for an alert, notes its text, ends it with this button.
    std::string EndAlert(int button) const;
    /// The item with its frame, painted anew; the whole dialog for 0.
    host::Picture Shot(int item = 0) const;
    /// A picture of the window, if pictures are wanted.
    void KeepPicture(const std::string& name) const;

  private:
    HWND dialog;
    TestDialog& test;
    std::vector<std::thread> helpers;
};

/// Runs the dialog with the script; a dialog that is open at the end of the script is cancelled.
/// Returns what Run returns.
int RunWithScript(TestDialog& dialog, const std::function<void(Script&)>& script);

/// The requests to the platform of the running test.
struct PlatformLog {
    struct Fault {
        int id;
        std::string file;
    };
    std::vector<Fault> faults;
    std::atomic<int> beeps = 0;
    /// The clock, in milliseconds; it stands still by itself.
    std::atomic<std::uint32_t> ticks = 0;
};

/// The log of the running DialogTest.
PlatformLog& Log();

/// Tests of dialogs: no error pending before or after, faults noted in place of being shown.
class DialogTest : public testing::Test {
  protected:
    DialogTest();
    ~DialogTest() override;

    /// Keeps the next click from being the second of a double click.
    static void LetTimePass() { Log().ticks += 10000; }

    hostapi::FilterRecord record{};

  private:
    PlatformServices servicesOutside;
};

/// Runs `operation`; returns the id that it throws, 0 for none.
template <typename Operation>
int FaultOf(Operation operation) {
    try {
        operation();
    } catch (std::int16_t id) {
        return id;
    }
    return 0;
}
