#include "framework/alerts/Alert.Win.h"

#include <atomic>

#include "base/FatalError.h"
#include "base/Module.Win.h"
#include "fixtures/Screenshot.Win.h"
#include "framework/dialog/NorvantaDialog.h"
#include "resources/Ids.h"
#include "resources/Strings.h"
#include "shell/FatalError.Win.h"
#include "shell/Zandermolite.h"
#include "tests/support/CoreTest.h"
#include "tests/support/windows/DialogDriver.Win.h"
#include "tests/support/windows/ImportTable.Win.h"

namespace {

/// The program carries the plug-in's resources and stands for its module.
class AlertTest : public CoreTest {
  protected:
    AlertTest() {
        instanceHandle = GetModuleHandleA(nullptr);
        platformServices.reportFault = ShowFatalError;
    }
    ~AlertTest() override {
        instanceHandle = nullptr;
        hostWindow = nullptr;
        errorCell = 0;
    }

    static SeenDialog Show(std::int16_t id, const char* file, int line,
                           Ending ending = Ending::pressOk) {
        return DriveDialog([=] { EXPECT_EQ(FaultOf([=] { FatalError(id, file, line); }), id); },
                           ending);
    }
};

TEST_F(AlertTest, AFaultWithoutAStringShowsTheGeneralDialog) {
    const SeenDialog dialog = Show(17500, "PhotoshopUtilities", 36);
    KeepPicture(dialog.picture, "fault-short");
    EXPECT_EQ(dialog.title, "Zandermolite");
    EXPECT_EQ(dialog.texts, (std::map<int, std::string>{
                                {1, "OK"},
                                {3, "A fatal error of type = 17500 occured."},
                                {4, "File: PhotoshopUtilities"},
                                {5, "Line Number: 36"},
                            }));
    EXPECT_EQ(dialog.cutControls, std::vector<int>{});
    EXPECT_EQ(errorCell, 17500);
}

TEST_F(AlertTest, AFaultWithAStringShowsIt) {
    const SeenDialog dialog = Show(stringAlertTitle, "C:\\folder\\Some.cpp", 7);
    EXPECT_EQ(dialog.title, "Zandermolite");
    EXPECT_EQ(dialog.texts,
              (std::map<int, std::string>{
                  {1, "OK"}, {3, "Zandermolite"}, {4, "File: Some.cpp"}, {5, "Line Number: 7"}}));
}

TEST_F(AlertTest, AFaultWithADialogOfItsOwnShowsThat) {
    // The markers of a dialog that is shown by its own id have no texts.
    const SeenDialog dialog = Show(20900, "Some.cpp", 7);
    EXPECT_EQ(dialog.Text(3), "A fatal error of type =  occured.");
    EXPECT_EQ(dialog.Text(4), "File: ");
    EXPECT_EQ(dialog.Text(5), "Line Number: ");
}

TEST_F(AlertTest, AnAssertionStandsInPlaceOfTheFile) {
    constexpr char text[] =
        "PicClass / Zeile 292 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))";
    const SeenDialog dialog =
        DriveDialog([&] { EXPECT_EQ(FaultOf([&] { Assert(false, text); }), 2); });
    KeepPicture(dialog.picture, "fault-assertion");
    EXPECT_EQ(dialog.Text(3), "A fatal error of type = 2 occured.");
    EXPECT_EQ(dialog.Text(4), std::string("File: ") + text);
    EXPECT_EQ(dialog.Text(5), "Line Number: -1");
    EXPECT_EQ(dialog.cutControls, std::vector<int>{});
}

/// Any dialog of the product.
class FaultyDialog : public NorvantaDialog {
  public:
    FaultyDialog() : NorvantaDialog(sharpenDialog) { KeepHidden(); }
    void Idle() override {
        ++idles;
        FatalError(20002, "C:\\source\\Faulty.cpp", 7);
    }
    int idles = 0;
};

TEST_F(AlertTest, AFaultInADialogShowsItsBoxOnceAndClosesTheDialog) {
    int result = 0;
    int idles = 0;
    const SeenDialog fault = DriveDialog([&] {
        FaultyDialog dialog;
        result = dialog.Run();
        idles = dialog.idles;
    });
    EXPECT_EQ(fault.Text(3), "A fatal error of type = 20002 occured.");
    EXPECT_EQ(result, 20002);
    EXPECT_EQ(idles, 1) << "the timer went on below the box";
}

/// Opens two more over itself, of which the last one fails.
class NestingDialog : public NorvantaDialog {
  public:
    NestingDialog(int newLevel, std::vector<int>& newResults, NorvantaDialog* newOwner = nullptr)
        : NorvantaDialog(sharpenDialog, newOwner), level(newLevel), results(newResults) {
        KeepHidden();
    }
    void Idle() override {
        if (hasBegun) {
            return;
        }
        hasBegun = true;
        if (level == 0) {
            FatalError(20002, "C:\\source\\Faulty.cpp", 7);
        }
        NestingDialog inner(level - 1, results, this);
        results.push_back(inner.Run());
    }

  private:
    int level;
    std::vector<int>& results;
    bool hasBegun = false;
};

TEST_F(AlertTest, AFaultInANestedDialogShowsOneBoxAndClosesThemAll) {
    std::vector<int> results;
    const std::vector<SeenDialog> boxes = DriveDialogs(
        [&] {
            NestingDialog dialog(2, results);
            results.push_back(dialog.Run());
        },
        {Ending::pressOk, Ending::pressOk});
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].Text(3), "A fatal error of type = 20002 occured.");
    EXPECT_EQ(results, (std::vector<int>{20002, 20002, 20002}));
    EXPECT_EQ(errorCell, 20002);
}

TEST_F(AlertTest, TheLongestAssertionsAreNotCutOff) {
    for (const char* const text :
         {"PicClass / Zeile 333 !((x < grX) && (x >= 0) && (y < grY) && (y >= 0))",
          "PicClass.Win / Zeile 450 !((grX == pic->grX) && (grY == pic->grY))",
          "PaintClass6 / Zeile 810 !((pos + 18) < (size / sizeof (Point)))"}) {
        const SeenDialog dialog = Show(32511, text, -2147483647);
        EXPECT_EQ(dialog.Text(4), std::string("File: ") + text);
        EXPECT_EQ(dialog.Text(5), "Line Number: -2147483647");
        EXPECT_EQ(dialog.cutControls, std::vector<int>{});
    }
}

TEST_F(AlertTest, ATextThatIsCutOffIsNoticed) {
    EXPECT_EQ(Show(20008, std::string(120, 'm').c_str(), 1).cutControls, std::vector<int>{4});
}

/// Refuses the next request of this program for memory in this thread. The run-time library needs
/// some for the exception.
class RefusedRequest {
  public:
    RefusedRequest() : imports(GetModuleHandleA(nullptr)) {
        systemsAllocate = reinterpret_cast<Allocator*>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), "malloc")));
        thread = GetCurrentThreadId();
        wasRefused = false;
        EXPECT_TRUE(imports.Exchange("malloc", reinterpret_cast<void*>(&Allocate)));
    }

    static bool WasMade() { return wasRefused; }

  private:
    using Allocator = void*(std::size_t);

    static void* Allocate(std::size_t size) {
        if (wasRefused || GetCurrentThreadId() != thread) {
            return systemsAllocate(size);
        }
        wasRefused = true;
        return nullptr;
    }

    static inline Allocator* systemsAllocate = nullptr;
    static inline DWORD thread = 0;
    static inline std::atomic<bool> wasRefused = false;

    ImportExchange imports;
};

// The system has called: an exception that came out would end the process in 32 bits.
TEST_F(AlertTest, WithoutMemoryForItsTextsItShowsThoseOfTheResource) {
    int answer = 0;
    const SeenDialog dialog = DriveDialog([&] {
        const RefusedRequest refused;
        answer = RunAlert(nullptr, 18001, {"1", "100"}, AlertIcon::warning);
    });
    EXPECT_EQ(answer, 1);
    EXPECT_EQ(dialog.title, "Zandermolite");
    EXPECT_EQ(dialog.Text(3), "Please enter a valid integer in the range between ^0 and ^1.");
    EXPECT_TRUE(RefusedRequest::WasMade());
    EXPECT_EQ(errorCell, 0);
}

TEST_F(AlertTest, EveryWayOutEndsIt) {
    for (const Ending ending : {Ending::pressOk, Ending::enter, Ending::escape, Ending::closeBox}) {
        EXPECT_TRUE(Show(20008, "Some", 1, ending).closed);
    }
}

TEST_F(AlertTest, TheControlThatEndedItIsTheAnswer) {
    const auto answerTo = [](Ending ending) {
        int answer = -1;
        DriveDialog([&] { answer = RunAlert(nullptr, 20900, {}, AlertIcon::warning); }, ending);
        return answer;
    };
    EXPECT_EQ(answerTo(Ending::pressOk), 1);
    EXPECT_EQ(answerTo(Ending::enter), 1);
    EXPECT_EQ(answerTo(Ending::escape), 2);
    EXPECT_EQ(answerTo(Ending::closeBox), 2);
    EXPECT_EQ(RunAlert(nullptr, 20899, {}, AlertIcon::warning), 0) << "there is no such dialog";
}

TEST_F(AlertTest, SilentFaultsAndAnUnknownModuleShowNothing) {
    const auto dialogsOf = [](std::int16_t id) {
        return DriveDialogs([id] { FaultOf([id] { FatalError(id, "Some", 1); }); },
                            {Ending::pressOk})
            .size();
    };
    for (const std::int16_t id : {std::int16_t{0}, std::int16_t{32512}, std::int16_t{-108}}) {
        EXPECT_EQ(dialogsOf(id), 0u);
    }
    instanceHandle = nullptr;
    EXPECT_EQ(dialogsOf(20008), 0u);
    EXPECT_EQ(errorCell, 20008);
}

/// The 32 by 32 pixels of the system's icon on a dialog's ground.
host::Picture IconOnDialog(LPCSTR icon) {
    constexpr int side = 32;
    const HWND window = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, side, side,
                                        nullptr, nullptr, nullptr, nullptr);
    const HDC context = GetDC(window);
    const RECT all{0, 0, side, side};
    FillRect(context, &all, GetSysColorBrush(COLOR_BTNFACE));
    DrawIcon(context, 0, 0, LoadIconA(nullptr, icon));
    ReleaseDC(window, context);
    host::Picture picture = GrabClient(window);
    DestroyWindow(window);
    return picture;
}

void ExpectIcon(const SeenDialog& dialog, LPCSTR icon) {
    const host::Picture expected = IconOnDialog(icon);
    const int left = dialog.clientOrigin.x + dialog.iconPlace.x;
    const int top = dialog.clientOrigin.y + dialog.iconPlace.y;
    int different = 0;
    int drawn = 0;
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const COLORREF shown = ColorAt(dialog.picture, left + x, top + y);
            different += shown != ColorAt(expected, x, y) ? 1 : 0;
            drawn += shown != GetSysColor(COLOR_BTNFACE) ? 1 : 0;
        }
    }
    EXPECT_EQ(different, 0);
    EXPECT_GT(drawn, 200);
}

TEST_F(AlertTest, AFaultHasTheStopIconAndAnAlertTheWarningIcon) {
    ExpectIcon(Show(20008, "Some", 1), MAKEINTRESOURCEA(32513));
    ExpectIcon(DriveDialog([] { RunAlert(nullptr, 20900, {}, AlertIcon::warning); }),
               MAKEINTRESOURCEA(32515));
}

class AlertPlaceTest : public AlertTest {
  protected:
    ~AlertPlaceTest() override {
        if (window != nullptr) {
            DestroyWindow(window);
        }
    }

    SeenDialog ShowOver(const RECT& parent) {
        window = CreateWindowExA(0, "STATIC", "Host", WS_POPUP | WS_VISIBLE, parent.left,
                                 parent.top, parent.right - parent.left, parent.bottom - parent.top,
                                 nullptr, nullptr, nullptr, nullptr);
        hostWindow = window;
        const SeenDialog dialog = Show(20008, "Some", 1);
        EXPECT_EQ(dialog.owner, window);
        DestroyWindow(window);
        window = nullptr;
        return dialog;
    }

    static void ExpectCentred(const RECT& inner, const RECT& outer) {
        EXPECT_NEAR(inner.left + inner.right, outer.left + outer.right, 1);
        EXPECT_NEAR(inner.top + inner.bottom, outer.top + outer.bottom, 1);
    }

    static RECT WorkArea() {
        RECT area;
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        return area;
    }

    HWND window = nullptr;
};

TEST_F(AlertPlaceTest, IsCentredOverTheHostsWindow) {
    constexpr RECT parent{200, 150, 801, 650};
    ExpectCentred(ShowOver(parent).frame, parent);
}

TEST_F(AlertPlaceTest, StaysTwoPixelsInsideTheWorkArea) {
    const RECT area = WorkArea();
    const RECT atTopLeft = ShowOver({-300, -200, 100, 100}).frame;
    EXPECT_EQ(atTopLeft.left, area.left + 2);
    EXPECT_EQ(atTopLeft.top, area.top + 2);
    const RECT atBottomRight =
        ShowOver({area.right - 60, area.bottom - 50, area.right + 90, area.bottom + 40}).frame;
    EXPECT_EQ(atBottomRight.right, area.right - 2);
    EXPECT_EQ(atBottomRight.bottom, area.bottom - 2);
}

TEST_F(AlertPlaceTest, IsCentredOnTheDesktopWithoutAWindow) {
    RECT desktop;
    GetWindowRect(GetDesktopWindow(), &desktop);
    hostWindow = nullptr;
    const SeenDialog dialog = Show(20008, "Some", 1);
    EXPECT_EQ(dialog.owner, nullptr);
    ExpectCentred(dialog.frame, desktop);
    // A window that has gone since is none.
    hostWindow = CreateWindowExA(0, "STATIC", "Host", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr,
                                 nullptr, nullptr);
    DestroyWindow(static_cast<HWND>(hostWindow));
    ExpectCentred(Show(20008, "Some", 1).frame, desktop);
}

}  // namespace
