// Whole runs of the product in which the system refuses something at one point after the other.
//
// SWEEP in the environment says how many points of each series are run: "all", or a number; they
// are taken evenly from the calls that a run without refusals makes.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "files/PreferenceFile.h"
#include "files/PreferenceFormat.h"
#include "fixtures/GuiDriver.Win.h"
#include "fixtures/InputDesktop.Win.h"
#include "resources/Ids.h"
#include "tests/shell/windows/ImportPatch.Win.h"
#include "tests/shell/windows/Libraries.Win.h"
#include "tests/support/OwnPreferences.Win.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/Transfers.h"
#include "tests/support/windows/Levels.Win.h"

namespace {

constexpr hostapi::VRect bounds{5, 6, 69, 102};
/// The same number in all dialogs.
constexpr int okButton = 1;
constexpr char lastTexture[] = "Zandermolite.tmp";
constexpr char settingsFile[] = "Zandermolite3.prf";

/// A user who works through a run and takes whatever comes: an alert or a fault is read and closed,
/// and what does not open is left.
class PatientUser {
  public:
    explicit PatientUser(const GuiDriver& newGui) : gui(newGui) {}

    void Work() {
        while (const std::optional<DrivenDialog> top = gui.WaitForAny()) {
            Answer(*top);
        }
    }

  private:
    void Answer(const DrivenDialog& dialog) {
        const std::string title = CaptionOf(dialog.Window());
        const bool isEditor = title == "Zandermolite" && GetMenu(dialog.Window()) != nullptr;
        if (isEditor) {
            WorkInEditor(dialog);
        } else {
            // New, Lines, Blur, an alert, a fault.
            End(dialog, okButton);
        }
    }

    void WorkInEditor(const DrivenDialog& editor) {
        switch (step++) {
            case 0:
                Post(editor, TextureItems::lines);
                break;
            case 1:
                Post(editor, TextureItems::blur);
                break;
            case 2:
                Draw(editor);
                break;
            default:
                End(editor, TextureItems::apply);
                break;
        }
    }

    /// Until the dialog has opened another one, has closed, or stays as it is.
    void Post(const DrivenDialog& dialog, int item) {
        PostMessageA(dialog.Control(item), BM_CLICK, 0, 0);
        WaitForRest(dialog.Window());
    }

    void End(const DrivenDialog& dialog, int item) {
        const HWND button = GetDlgItem(dialog.Window(), item);
        if (button == nullptr || !IsWindowEnabled(button)) {
            PostMessageA(dialog.Window(), WM_CLOSE, 0, 0);
        } else {
            PostMessageA(button, BM_CLICK, 0, 0);
        }
        WaitForRest(dialog.Window());
    }

    static void Draw(const DrivenDialog& editor) {
        SendMessageA(editor.Window(), WM_NULL, 0, 0);
        editor.Drag(TextureItems::drawingArea, {{60, 60}, {80, 70}, {90, 90}}, [] { Sleep(15); });
    }

    const GuiDriver& gui;
    int step = 0;
};

struct Point {
    Refused kind;
    int call;
    bool andAllAfter;
};

std::string NameOf(const Point& point) {
    return std::string(refusedNames[static_cast<int>(point.kind)]) + ", call " +
           std::to_string(point.call) + (point.andAllAfter ? " and all after it" : " alone");
}

/// The settings as a whole file, or none.
bool IsWholePreferenceFile(const std::string& bytes) {
    if (bytes.empty()) {
        return true;
    }
    std::size_t at = 0;
    Preferences read;
    try {
        ReadPreferences(
            [&](void* buffer, std::int32_t count) {
                const auto size = static_cast<std::size_t>(count);
                if (bytes.size() - at < size) {
                    throw std::int16_t{preferenceShortRead};
                }
                std::memcpy(buffer, bytes.data() + at, size);
                at += size;
            },
            read);
    } catch (std::int16_t) {
        return false;
    }
    return true;
}

class SweepTest : public testing::Test {
  protected:
    SweepTest() {
        GetEnvironmentVariableA("TMP", temporaryBefore, sizeof temporaryBefore);
        SetEnvironmentVariableA("TMP", folder.Path().string().c_str());
    }
    ~SweepTest() override { SetEnvironmentVariableA("TMP", temporaryBefore); }

    std::string File(const char* name) const { return BytesOf(folder.Path() / name); }

    /// A host loads the product, runs it and frees it again. Returns the calls that were counted.
    int Run(const Point& point) {
        int calls = 0;
        {
            const LoadedPlugin plugin;
            host::FilterHost filterHost;
            const host::Picture before = host::MakePicture(120, 90, 3, 100);
            host::Picture picture = before;
            host::RunReport report;
            {
                const ImportPatch patch(plugin.Module(), point.kind, point.call, point.andAllAfter);
                RunWithUser(
                    [&] {
                        report =
                            filterHost.Run(plugin.Entry(), picture, host::SelectRectangle(bounds));
                    },
                    [](const GuiDriver& gui) { PatientUser(gui).Work(); });
                calls = ImportPatch::Calls();
            }
            EXPECT_TRUE(report.completed);
            EXPECT_EQ(report.faults, std::vector<std::string>{});
            EXPECT_EQ(filterHost.Memory().LiveBuffers(), 0u);
            isWritten = picture != before;
            if (isWritten) {
                ExpectWhole(before, picture);
            }
        }
        return calls;
    }

    /// All of the selection is the last texture, and nothing else has changed.
    void ExpectWhole(const host::Picture& before, const host::Picture& picture) const {
        const std::string file = File(lastTexture);
        const HostImage image{hostapi::Narrowed(before.Bounds()), before.planes, before.pixels};
        const HostImage expected =
            Tiled(image, TileOfFile(file), hostapi::Narrowed(bounds), hostapi::Height(bounds));
        EXPECT_TRUE(picture.pixels == expected.bytes);
    }

    void RunPoint(const Point& point) {
        SCOPED_TRACE(NameOf(point));
        // Who ends the process is known by the last line.
        std::printf("%s\n", NameOf(point).c_str());
        std::fflush(stdout);
        const std::string settingsBefore = File(settingsFile);
        Run(point);
        const std::string settings = File(settingsFile);
        EXPECT_TRUE(settings == settingsBefore || IsWholePreferenceFile(settings));
        const Point none{point.kind, 0, false};
        Run(none);
        EXPECT_TRUE(isWritten) << "the next run works";
        const Levels levels = SettledLevels();
        EXPECT_EQ(levels.windows, levelsBefore.windows);
        EXPECT_EQ(levels.menus, levelsBefore.menus);
        EXPECT_EQ(levels.freeSlots, levelsBefore.freeSlots);
    }

    /// The threads of the users that have left may still take a moment to go.
    Levels SettledLevels() const {
        Levels levels = CountLevels();
        for (int i = 0; i < 20 && levels.threads > threadsBefore; ++i) {
            Sleep(50);
            levels = CountLevels();
        }
        return levels;
    }

    /// Points of the series, evenly.
    void RunSeries(Refused kind) {
        const Point none{kind, 0, false};
        Run(none);
        EXPECT_TRUE(isWritten);
        const int calls = Run(none);
        EXPECT_GT(calls, 0);
        Sleep(100);
        levelsBefore = CountLevels();
        threadsBefore = levelsBefore.threads;
        const char* const wanted = std::getenv("SWEEP");
        const bool all = wanted != nullptr && std::strcmp(wanted, "all") == 0;
        // The system's own calls are few, and slow.
        const int usual = kind == Refused::drawing || kind == Refused::memory ? 2 : 1;
        const int count = all ? calls : wanted != nullptr ? std::atoi(wanted) : usual;
        const auto start = std::chrono::steady_clock::now();
        int points = 0;
        for (int i = 0; i < count && !HasFatalFailure(); ++i) {
            const int call = 1 + static_cast<int>(static_cast<long long>(i) * calls / count);
            RunPoint({kind, call, false});
            RunPoint({kind, call, true});
            points += 2;
        }
        // The system keeps some objects of first uses.
        constexpr int kept = 6;
        const Levels levels = SettledLevels();
        EXPECT_LE(levels.kernelHandles, levelsBefore.kernelHandles + kept);
        EXPECT_LE(levels.gdiObjects, levelsBefore.gdiObjects + kept);
        EXPECT_LE(levels.icons, levelsBefore.icons + kept);
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        std::printf("%s: %d points over %d calls in %.1f s\n", refusedNames[static_cast<int>(kind)],
                    points, calls, seconds.count());
    }

    ScratchFolder folder;
    OwnPreferences preferences{folder.Path()};
    char temporaryBefore[MAX_PATH] = "";
    /// The system may have one of its own by now.
    int threadsBefore = 0;
    Levels levelsBefore{};
    bool isWritten = false;
};

TEST_F(SweepTest, WithoutObjectsToDrawWith) {
    RunSeries(Refused::drawing);
}

TEST_F(SweepTest, WithoutMemory) {
    RunSeries(Refused::memory);
}

TEST_F(SweepTest, WithoutFiles) {
    RunSeries(Refused::files);
}

TEST_F(SweepTest, WithoutTheRegistry) {
    RunSeries(Refused::registry);
}

}  // namespace
