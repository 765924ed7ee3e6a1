#include "tests/gui/PluginRun.Win.h"

#include <commctrl.h>

#include <atomic>
#include <stdexcept>

#include "base/HostServices.h"
#include "base/Module.Win.h"
#include "base/Rectangles.h"
#include "editor/ViewGeometry.h"
#include "files/Preferences.h"
#include "fixtures/Screenshot.Win.h"
#include "host/picture/Selection.h"
#include "resources/Ids.h"
#include "shell/Selectors.h"
#include "shell/Zandermolite.h"
#include "shell/transfer/LastTexture.h"
#include "tests/support/Pictures.h"
#include "tests/support/Transfers.h"

namespace {

// The program's own services, before tests put in stand-ins.
const RunWindows pluginWindows = runWindows;
const PlatformServices pluginPlatform = platformServices;

std::atomic<int> displays = 0;
decltype(hostapi::FilterRecord::displayPixels) hostDisplay = nullptr;
std::optional<int> resolutionOfRun;

std::int16_t HOST_CALL CountDisplay(const hostapi::PSPixelMap* source,
                                    const hostapi::VRect* sourceRect, std::int32_t row,
                                    std::int32_t column, void* context) {
    const std::int16_t result = hostDisplay(source, sourceRect, row, column, context);
    ++displays;
    return result;
}

#ifdef __i386__
#define REALIGN_STACK __attribute__((force_align_arg_pointer))
#else
#define REALIGN_STACK
#endif

/// The plug-in's entry, with the display service counted while it lasts, and the test's resolution.
REALIGN_STACK void HOST_CALL Entry(std::int16_t selector, hostapi::FilterRecord* record, void*,
                                   std::int16_t* result) {
    const bool isCounted = record->displayPixels != nullptr;
    if (isCounted) {
        hostDisplay = record->displayPixels;
        record->displayPixels = CountDisplay;
    }
    const hostapi::Fixed resolution = record->imageHRes;
    if (resolutionOfRun) {
        record->imageHRes = *resolutionOfRun << 16;
    }
    DispatchSelector(selector, record, result);
    record->imageHRes = resolution;
    if (isCounted) {
        record->displayPixels = hostDisplay;
    }
}

host::Picture NoisePicture(int width, int height) {
    host::Picture picture = host::MakePicture(width, height, 3);
    picture.pixels =
        NoiseImage({0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)}, 3)
            .bytes;
    return picture;
}

}  // namespace

PluginRunTest::PluginRunTest()
    : preferencesPlace((folder.Path() / "Zandermolite.8bf").string()),
      before(NoisePicture(200, 150)),
      picture(before) {
    instanceHandle = GetModuleHandleA(nullptr);
    runWindows = pluginWindows;
    platformServices = pluginPlatform;
    platformServices.clockSeconds = [] { return Log().clock; };
    platformServices.temporaryPath = [](char* buffer, int) {
        const std::string& path = Log().temporaryPath;
        buffer[path.copy(buffer, path.size())] = '\0';
        return static_cast<int>(path.size());
    };
    Log().clock = testClock;
    Log().temporaryPath = folder.Path().string();
    dialogPlaces = {};
}

PluginRunTest::~PluginRunTest() {
    hostWindow = nullptr;
    errorCell = 0;
}

host::RunReport PluginRunTest::Run(const std::function<void(const GuiDriver&)>& user) {
    host::FilterHost filterHost(settings);
    return RunIn(filterHost, user);
}

host::RunReport PluginRunTest::RunIn(host::FilterHost& filterHost,
                                     const std::function<void(const GuiDriver&)>& user) {
    displays = 0;
    resolutionOfRun = claimedResolution;
    host::RunReport report;
    const host::Selection selected =
        feather ? host::SelectEllipse(selection, *feather) : host::SelectRectangle(selection);
    RunWithUser([&] { report = filterHost.Run(Entry, picture, selected); }, user);
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    filterRecord = &record;
    return report;
}

host::RunReport PluginRunTest::Repeat(host::FilterHost& filterHost) {
    picture = before;
    const host::RunReport report =
        filterHost.Run(Entry, picture, host::SelectRectangle(selection), host::Execution::repeat);
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    filterRecord = &record;
    return report;
}

host::RunReport PluginRunTest::RunEditor(
    const std::function<void(const GuiDriver& gui, const DrivenDialog& editor)>& user) {
    SkipNewDialog();
    return Run([&](const GuiDriver& gui) {
        const DrivenDialog editor = gui.WaitFor(textureDialog);
        user(gui, editor);
        editor.Press(TextureItems::apply);
        editor.WaitUntilClosed();
    });
}

std::unique_ptr<PaintClass> PluginRunTest::Applied() const {
    std::unique_ptr<PaintClass> texture = LoadLastTexture();
    if (texture == nullptr) {
        throw std::runtime_error("nothing was applied");
    }
    return texture;
}

void PluginRunTest::ExpectFilledWithApplied() const {
    const std::unique_ptr<PaintClass> tile = Applied();
    const HostImage image{hostapi::Narrowed(before.Bounds()), before.planes, before.pixels};
    const HostImage expected =
        Tiled(image, TileOf(*tile), hostapi::Narrowed(selection), hostapi::Height(selection));
    EXPECT_TRUE(picture.pixels == expected.bytes);
}

ItemPlace PluginRunTest::PlaceOfPixel(const DrivenDialog& editor, int x, int y, double zoom) const {
    const RECT bounds = editor.Bounds(TextureItems::drawingArea);
    const hostapi::Rect view = ViewRect({0, 0, static_cast<short>(bounds.bottom - bounds.top),
                                         static_cast<short>(bounds.right - bounds.left)});
    const ViewAxis across{hostapi::Width(selection), zoom, viewDrawing, view.right - view.left,
                          editor.ScrollPosition(TextureItems::horizontalScroll)};
    const ViewAxis down{hostapi::Height(selection), zoom, viewDrawing, view.bottom - view.top,
                        editor.ScrollPosition(TextureItems::verticalScroll)};
    return {view.left + across.Origin() + static_cast<int>(x * zoom),
            view.top + down.Origin() + static_cast<int>(y * zoom)};
}

void PluginRunTest::ChooseTool(const GuiDriver& gui, const DrivenDialog& editor, char key,
                               int tool) {
    gui.Type(std::string(1, key));
    const int palette = tool <= 8 ? TextureItems::toolPalette : TextureItems::viewPalette;
    WaitUntil("tool " + std::to_string(tool),
              [&] { return editor.Value(palette) == (tool <= 8 ? tool : tool - 8); });
}

void PluginRunTest::SwitchTab(const DrivenDialog& editor) {
    const HWND tab = editor.Control(TextureItems::tab);
    const int other = 2 - editor.Value(TextureItems::tab);
    RECT place{};
    SendMessageA(tab, TCM_GETITEMRECT, static_cast<WPARAM>(other),
                 reinterpret_cast<LPARAM>(&place));
    editor.Click(TextureItems::tab, {static_cast<int>(place.left + place.right) / 2,
                                     static_cast<int>(place.top + place.bottom) / 2});
    WaitUntil("the other tab", [&] { return editor.Value(TextureItems::tab) == other + 1; });
    editor.Settle();
}

void PluginRunTest::SkipNewDialog() const {
    Preferences preferences;
    preferences.launchFlag = 0;
    EXPECT_TRUE(SavePreferences(preferences));
}

int PluginRunTest::Displays() {
    return displays;
}

void PluginRunTest::Stroke(const DrivenDialog& editor, const std::vector<ItemPlace>& places) {
    editor.WaitUntilPainted();
    // The thread takes a message only after a paint that has begun, whose displays are not the
    // stroke's.
    editor.Settle();
    int drawnBefore = displays;
    editor.Drag(TextureItems::drawingArea, places, [&] {
        WaitUntil("the stroke to be drawn", [&] { return displays > drawnBefore; });
        // A stroke takes messages between its looks at the mouse, when all of the view is drawn.
        editor.Settle();
        drawnBefore = displays;
    });
}

void PluginRunTest::Keep(const DrivenDialog& dialog, const std::string& name) {
    dialog.Settle();
    KeepPicture(dialog.Grab(), name);
}
