// Hosts that lack something, other pictures, faults in the middle.
#include <filesystem>

#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "paint/EffectRun.h"
#include "resources/Ids.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/FileSystemOverride.h"
#include "tests/support/Pictures.h"
#include "tests/support/Transfers.h"

namespace {

using Items = TextureItems;

class HostsTest : public PluginRunTest {
  protected:
    /// Lines through its dialog, then Apply.
    host::RunReport DrawLines() {
        return RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
            editor.PressToOpen(Items::lines);
            const DrivenDialog lines = gui.WaitFor(linesDialog);
            lines.PressToOpen(okItem);
            lines.WaitUntilClosed();
            WaitUntil("the effect", [&] { return editor.IsEnabled(Items::repeatEffect); });
        });
    }

    void UsePicture(int width, int height, int planes) {
        before = host::MakePicture(width, height, planes);
        before.pixels =
            NoiseImage({0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)},
                       planes)
                .bytes;
        picture = before;
    }
};

TEST_F(HostsTest, ALargeSelectionIsTiled) {
    UsePicture(1000, 300, 3);
    selection = {0, 0, 300, 1000};
    EXPECT_TRUE(DrawLines().Succeeded());
    PaintClass expected(512, 300);
    RunLines(expected, LinesParams{});
    EXPECT_EQ(ColorsOf(*Applied()), ColorsOf(expected));
    ExpectFilledWithApplied();
}

TEST_F(HostsTest, FloatingTransparencyIsLeftAlone) {
    UsePicture(200, 150, 4);
    EXPECT_TRUE(DrawLines().Succeeded());
    ExpectFilledWithApplied();
}

TEST_F(HostsTest, ARepeatFillsWithTheSameAndAsksNothing) {
    host::FilterHost filterHost(settings);
    SkipNewDialog();
    const host::RunReport report = RunIn(filterHost, [&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        ChooseTool(gui, editor, 'n', 4);
        Stroke(editor, {PlaceOfPixel(editor, 150 + 20, 100 + 30),
                        PlaceOfPixel(editor, 150 + 60, 100 + 45)});
        editor.PressToOpen(okItem);
    });
    EXPECT_TRUE(report.Succeeded());
    const host::Picture first = picture;
    ExpectFilledWithApplied();
    EXPECT_NE(Applied()->GetPixelWrapped(20, 30), Applied()->GetPixelWrapped(20, 31));
    // Nobody would press anything. The picture is as before the first run.
    EXPECT_TRUE(Repeat(filterHost).Succeeded());
    EXPECT_TRUE(picture.pixels == first.pixels);
    ExpectFilledWithApplied();
}

TEST_F(HostsTest, WithoutColourServicesAllIsTheSame) {
    settings.without[host::Service::colorServices] = true;
    EXPECT_TRUE(DrawLines().Succeeded());
    ExpectFilledWithApplied();
}

TEST_F(HostsTest, WithoutMemoryForATextureTheHostIsToldSo) {
    settings.memoryBudget = 100000;
    UsePicture(600, 600, 3);
    selection = {0, 0, 512, 512};
    const host::RunReport report =
        Run([&](const GuiDriver& gui) { gui.WaitFor(createrDialog).PressToOpen(okItem); });
    EXPECT_EQ(report.result, -108);
    EXPECT_TRUE(picture.pixels == before.pixels);
}

TEST_F(HostsTest, WithoutMemoryForALargerTextureTheEditorSaysSo) {
    settings.memoryBudget = 600000;
    RunEditor([&](const GuiDriver& gui, const DrivenDialog& editor) {
        editor.PressToOpen(Items::newTexture);
        const DrivenDialog opening = gui.WaitForTitle("New");
        opening.SetText(SizeItems::width, "512");
        opening.SetText(SizeItems::height, "512");
        opening.PressToOpen(okItem);
        const DrivenDialog alert = gui.WaitForAlert(editor);
        EXPECT_EQ(alert.Text(3),
                  "The operation could not be completed, because of a shortage of memory.");
        alert.PressToOpen(okItem);
        alert.WaitUntilClosed();
        EXPECT_EQ(editor.Text(Items::width), "150 pixel");
        EXPECT_EQ(editor.Text(Items::name), "Untitled 1");
    });
    EXPECT_EQ(Applied()->grX, 150);
}

/// The host's window, with no dialog of the program over it.
class ShownHost {
  public:
    ShownHost()
        : window(CreateWindowA("Static", "host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                               nullptr, nullptr, nullptr, nullptr)) {}
    ShownHost(const ShownHost&) = delete;
    ShownHost& operator=(const ShownHost&) = delete;
    ~ShownHost() { DestroyWindow(window); }

    HWND Window() const { return window; }

  private:
    HWND window;
};

TEST_F(HostsTest, AnErrorThatIsPendingClosesAllAndIsNotToldAgain) {
    NoteFaults();
    SkipNewDialog();
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.PressToOpen(Items::blur);
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        // As a fault in a handler leaves it.
        errorCell = 17500;
        blur.WaitUntilClosed();
        editor.WaitUntilClosed();
    });
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(HostsTest, AFaultWhileAPresetsNameIsAskedForBringsNoSecondOne) {
    NoteFaults();
    SkipNewDialog();
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.PressToOpen(Items::lines);
        gui.WaitFor(linesDialog).PressToOpen(ApplyItems::save);
        gui.WaitFor(presetDialog);
        // As a region that is refused leaves it.
        errorCell = -108;
        editor.WaitUntilClosed();
    });
    EXPECT_TRUE(Log().faults.empty());
    EXPECT_EQ(errorCell, -108);
}

TEST_F(HostsTest, AFaultBelowADialogClosesAllAndIsToldOnce) {
    NoteFaults();
    SkipNewDialog();
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.PressToOpen(Items::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        platformServices.clockSeconds = []() -> std::uint32_t {
            FatalError(17500, "clock", 7);
            return 0;
        };
        // It draws with the clock's second.
        lines.PressToOpen(ApplyItems::apply);
        lines.WaitUntilClosed();
        editor.WaitUntilClosed();
    });
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 17500);
    EXPECT_EQ(Log().faults[0].file, "clock");
    // The texture is half made.
    EXPECT_EQ(report.result, 0);
    EXPECT_TRUE(picture.pixels == before.pixels);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "Zandermolite.tmp"));
}

// The buttons are disabled then; messages of another program come all the same.
TEST_F(HostsTest, ARepeatOfNothingIsAFault) {
    NoteFaults();
    SkipNewDialog();
    const std::pair<int, const char*> repeats[] = {
        {Items::repeatEffect, "TextureDialog / Zeile 1806 !(effect != 0)"},
        {Items::repeatFilter, "TextureDialog / Zeile 1762 !(filter != 0)"}};
    for (const auto& [item, assertion] : repeats) {
        const int button = item;
        const host::RunReport report = Run([&](const GuiDriver& gui) {
            const DrivenDialog editor = gui.WaitFor(textureDialog);
            PostMessageA(editor.Window(), WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                         reinterpret_cast<LPARAM>(editor.Control(button)));
            editor.WaitUntilClosed();
        });
        ASSERT_FALSE(Log().faults.empty());
        EXPECT_EQ(Log().faults.back().file, assertion);
        EXPECT_EQ(report.result, 0);
        EXPECT_TRUE(picture.pixels == before.pixels);
        errorCell = 0;
    }
    EXPECT_EQ(Log().faults.size(), 2u);
}

TEST_F(HostsTest, AfterAFaultNothingIsSaved) {
    NoteFaults();
    SkipNewDialog();
    const std::string settingsBefore = BytesOf(folder.Path() / "Zandermolite3.prf");
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        // A settings file would keep it: the New dialog would open from then on.
        editor.Choose(commandNewAtLaunch);
        errorCell = 20008;
        editor.WaitUntilClosed();
    });
    EXPECT_EQ(BytesOf(folder.Path() / "Zandermolite3.prf"), settingsBefore);
    EXPECT_TRUE(picture.pixels == before.pixels);
}

// The editor's end saves them, where nothing may be thrown.
TEST_F(HostsTest, SettingsThatCannotBeSavedCostTheTextureAlone) {
    NoteFaults();
    SkipNewDialog();
    const std::string settingsBefore = BytesOf(folder.Path() / "Zandermolite3.prf");
    const FileSystemOverride restored;
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.Press(Items::invert);
        fileSystem.open = [](const char*, FileAccess, FileDisposition) -> void* { return nullptr; };
        editor.PressToOpen(Items::apply);
        editor.WaitUntilClosed();
    });
    ASSERT_EQ(Log().faults.size(), 1u);
    EXPECT_EQ(Log().faults[0].id, 19000);
    EXPECT_EQ(report.result, 0);
    EXPECT_TRUE(picture.pixels == before.pixels);
    EXPECT_EQ(BytesOf(folder.Path() / "Zandermolite3.prf"), settingsBefore);
}

TEST_F(HostsTest, AfterAFaultTheNextRunSaysSoInOneBox) {
    NoteFaults();
    SkipNewDialog();
    errorCell = 20008;
    const host::RunReport report = Run([&](const GuiDriver& gui) {
        const DrivenDialog alert = gui.WaitForTitle("Zandermolite");
        EXPECT_EQ(alert.Text(3),
                  "An earlier error has ended Zandermolite. It cannot be used again before this "
                  "program has been restarted.");
        alert.PressToOpen(okItem);
        alert.WaitUntilClosed();
    });
    EXPECT_EQ(report.result, 0);
    EXPECT_TRUE(picture.pixels == before.pixels);
    EXPECT_TRUE(Log().faults.empty());
}

TEST_F(HostsTest, TheStopBoxKeepsTheHostDisabled) {
    const ShownHost host;
    settings.hooks.window = host.Window();
    SkipNewDialog();
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        editor.PressToOpen(Items::lines);
        const DrivenDialog lines = gui.WaitFor(linesDialog);
        platformServices.clockSeconds = []() -> std::uint32_t {
            FatalError(17500, "clock", 7);
            return 0;
        };
        lines.PressToOpen(ApplyItems::apply);
        const DrivenDialog box = gui.WaitForAlert(editor);
        // The timers of the dialogs below go on.
        gui.WaitUntilIdle();
        EXPECT_TRUE(box.IsOpen());
        EXPECT_TRUE(lines.IsOpen());
        EXPECT_TRUE(editor.IsOpen());
        EXPECT_FALSE(IsWindowEnabled(host.Window()));
        EXPECT_FALSE(IsWindowEnabled(editor.Window()));
        EXPECT_FALSE(IsWindowEnabled(lines.Window()));
        box.PressToOpen(okItem);
        editor.WaitUntilClosed();
    });
    EXPECT_TRUE(IsWindowEnabled(host.Window()));
    EXPECT_TRUE(picture.pixels == before.pixels);
}

/// The windows of a host beside its main one.
struct HostsPalettes {
    explicit HostsPalettes(HWND host)
        : owned(CreateWindowExA(WS_EX_TOOLWINDOW, "Static", "brushes", WS_POPUP | WS_VISIBLE, 310,
                                0, 80, 60, host, nullptr, nullptr, nullptr)),
          other(CreateWindowA("Static", "layers", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 310, 70, 80, 60,
                              nullptr, nullptr, nullptr, nullptr)),
          resting(CreateWindowA("Static", "resting", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_DISABLED,
                                310, 140, 80, 60, nullptr, nullptr, nullptr, nullptr)) {}
    HostsPalettes(const HostsPalettes&) = delete;
    HostsPalettes& operator=(const HostsPalettes&) = delete;
    ~HostsPalettes() {
        for (const HWND window : {owned, other, resting}) {
            DestroyWindow(window);
        }
    }

    HWND owned;
    HWND other;
    /// Disabled by the host itself.
    HWND resting;
};

TEST_F(HostsTest, PalettesOfTheHostTakeNoInputMeanwhile) {
    const ShownHost host;
    const HostsPalettes palettes(host.Window());
    settings.hooks.window = host.Window();
    SetActiveWindow(palettes.other);
    const auto expectDisabled = [&] {
        for (const HWND window :
             {host.Window(), palettes.owned, palettes.other, palettes.resting}) {
            EXPECT_FALSE(IsWindowEnabled(window)) << CaptionOf(window);
        }
    };
    Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        EXPECT_EQ(GetWindow(opening.Window(), GW_OWNER), host.Window());
        expectDisabled();
        opening.PressToOpen(okItem);
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        expectDisabled();
        editor.PressToOpen(Items::blur);
        const DrivenDialog blur = gui.WaitFor(blurDialog);
        expectDisabled();
        blur.PressToOpen(cancelItem);
        blur.WaitUntilClosed();
        editor.PressToOpen(cancelItem);
    });
    EXPECT_TRUE(IsWindowEnabled(host.Window()));
    EXPECT_TRUE(IsWindowEnabled(palettes.owned));
    EXPECT_TRUE(IsWindowEnabled(palettes.other));
    EXPECT_FALSE(IsWindowEnabled(palettes.resting)) << "is the host's business";
}

TEST_F(HostsTest, WithoutAWindowInTheRecordTheActiveOneIsTheOwner) {
    NoteFaults();
    const ShownHost host;
    const HostsPalettes palettes(host.Window());
    settings.without[host::Service::platformData] = true;
    SetActiveWindow(host.Window());
    SkipNewDialog();
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        EXPECT_EQ(GetWindow(editor.Window(), GW_OWNER), host.Window());
        EXPECT_FALSE(IsWindowEnabled(host.Window()));
        EXPECT_FALSE(IsWindowEnabled(palettes.other));
        // As a fault in a handler leaves it.
        errorCell = 17500;
        editor.WaitUntilClosed();
    });
    EXPECT_TRUE(IsWindowEnabled(host.Window()));
    EXPECT_TRUE(IsWindowEnabled(palettes.other));
    // The next call is refused by a box, which nothing of the host lies beside.
    Run([&](const GuiDriver& gui) {
        const std::optional<DrivenDialog> box = gui.WaitForAny();
        ASSERT_TRUE(box);
        EXPECT_EQ(GetWindow(box->Window(), GW_OWNER), host.Window());
        EXPECT_FALSE(IsWindowEnabled(host.Window()));
        EXPECT_FALSE(IsWindowEnabled(palettes.other));
        box->PressToOpen(okItem);
    });
    EXPECT_TRUE(IsWindowEnabled(host.Window()));
    EXPECT_TRUE(IsWindowEnabled(palettes.other));
}

TEST_F(HostsTest, AThrowWhileTheTextureIsDrawnMovesNothingElse) {
    SkipNewDialog();
    Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        const RECT wells = editor.Bounds(Items::colorWells);
        const auto wellsNow = [&] {
            const host::Picture whole = editor.Grab();
            std::vector<std::uint8_t> bytes;
            for (int y = wells.top; y < wells.bottom; ++y) {
                const auto row =
                    whole.pixels.begin() + (y * whole.width + wells.left) * whole.planes;
                bytes.insert(bytes.end(), row, row + (wells.right - wells.left) * whole.planes);
            }
            return bytes;
        };
        const std::vector<std::uint8_t> drawn = wellsNow();
        static std::atomic<int> throws;
        throws = 0;
        const auto display = filterRecord->displayPixels;
        filterRecord->displayPixels = [](const hostapi::PSPixelMap*, const hostapi::VRect*,
                                         std::int32_t, std::int32_t, void*) -> std::int16_t {
            ++throws;
            throw std::int16_t{31};
        };
        RedrawWindow(editor.Window(), nullptr, nullptr, RDW_INVALIDATE);
        WaitUntil("the throw", [] { return throws > 0; });
        gui.WaitUntilIdle();
        filterRecord->displayPixels = display;
        // The wells alone: together with the texture, all would be drawn again.
        InvalidateRect(editor.Window(), &wells, FALSE);
        gui.WaitUntilIdle();
        EXPECT_EQ(wellsNow(), drawn);
        editor.PressToOpen(cancelItem);
    });
}

TEST_F(HostsTest, ADamagedPreferenceFileIsToldOverTheHost) {
    const ShownHost host;
    settings.hooks.window = host.Window();
    WriteBytes(folder.Path() / "Zandermolite3.prf", "rubbish");
    Run([&](const GuiDriver& gui) {
        const DrivenDialog opening = gui.WaitFor(createrDialog);
        EXPECT_EQ(GetWindow(opening.Window(), GW_OWNER), host.Window());
        opening.PressToOpen(okItem);
        opening.WaitUntilClosed();
        const DrivenDialog alert = gui.WaitForAlert(opening);
        EXPECT_EQ(GetWindow(alert.Window(), GW_OWNER), host.Window());
        EXPECT_FALSE(IsWindowEnabled(host.Window()));
        EXPECT_EQ(alert.Text(3),
                  "An error occured while reading your user preferences from disk. Default "
                  "preferences will be used instead.");
        alert.PressToOpen(okItem);
        alert.WaitUntilClosed();
        gui.WaitFor(textureDialog).PressToOpen(okItem);
    });
}

}  // namespace
