// Draws every dialog with its controls, filled in with likely values, into PNG files:
//
//     dialog-pictures FOLDER [RESOLUTION]
//
// The pictures are for people to look at; a layout that looks wrong here is wrong. The texture in
// the editor's picture is a stand-in. The common controls need the system's header first.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "framework/ControlClasses.Win.h"
#include "framework/DialogState.h"
#include "framework/InterfaceLib.h"
#include "host/Picture.h"
#include "resources/Ids.h"
#include "shell/Module.Win.h"
#include "tests/resources/OpenedDialog.Win.h"

HINSTANCE instanceHandle = nullptr;

namespace {

constexpr double pi = 3.14159265358979;

struct Value {
    int item;
    int value;
};

struct Text {
    int item;
    const char* text;
};

/// A slider from `minimum`.
struct Slider {
    int item;
    int minimum;
    int maximum;
    int value;
};

struct Swatch {
    int item;
    COLORREF color;
};

struct Sample {
    int dialog;
    const char* name;
    std::vector<Text> texts;
    std::vector<Slider> sliders;
    /// Check boxes and radio buttons that are on, popups with the position of their entry.
    std::vector<Value> values;
    std::vector<Swatch> swatches;
    /// The item of a dial and its angle.
    std::vector<Value> dials;
};

const std::vector<Sample>& Samples() {
    static const std::vector<Sample> samples{
        {textureDialog,
         "editor",
         {{18, "felt.jpg"},
          {20, "128 pixel"},
          {22, "128 pixel"},
          {24, "72 dpi"},
          {26, "64 kB"},
          {61, "Create rows and columns of circles, squares or rings."}},
         {},
         {{14, 2}, {3, 0}, {60, 1}},
         {},
         {}},
        {createrDialog,
         "new",
         {{4, "Untitled 1"}, {6, "256"}, {8, "72 dpi"}, {10, "256"}, {12, "256 kB"}},
         {},
         {{13, 1}, {16, 1}, {20, 1}},
         {},
         {}},
        {editDialog,
         "edit",
         {{4, "felt.jpg"}, {6, "1.8"}, {8, "72 dpi"}, {10, "1.8"}, {12, "64 kB"}},
         {},
         {{13, 2}},
         {},
         {}},
        {linesDialog,
         "lines",
         {{21, "45"}},
         {{12, 0, 100, 50}},
         {{15, 1}, {17, 1}, {4, 1}},
         {{9, RGB(127, 127, 127)}},
         {{11, 45}}},
        {shapesDialog,
         "shapes",
         {{30, "67"}, {32, "67"}, {46, "2"}, {47, "2"}, {60, "60"}},
         {{11, 0, 100, 50},
          {15, 0, 100, 25},
          {19, 0, 100, 25},
          {23, 0, 100, 25},
          {27, 0, 100, 67},
          {29, 0, 100, 67},
          {35, 0, 100, 0},
          {38, 0, 100, 0},
          {41, 0, 100, 0}},
         {{8, 2}, {45, 1}, {51, 1}, {4, 1}},
         {{10, RGB(127, 127, 127)}},
         {{58, 60}}},
        {dropsDialog,
         "drops",
         {},
         {{9, 0, 100, 50},
          {12, 0, 100, 50},
          {15, 0, 100, 50},
          {20, 0, 100, 25},
          {24, 0, 3, 0},
          {27, 0, 2, 0}},
         {{18, 1}, {4, 1}},
         {},
         {}},
        {devidersDialog,
         "dividers",
         {{20, "1"}, {23, "3"}, {26, "2"}},
         {{9, 1, 100, 50}, {12, 0, 100, 50}, {21, 1, 20, 1}, {24, 0, 100, 3}, {27, 1, 20, 2}},
         {{15, 1}, {17, 1}, {29, 1}, {4, 1}},
         {},
         {}},
        {wavesDialog,
         "waves",
         {{13, "50"}, {15, "2"}, {20, "50"}, {22, "2"}},
         {{11, 1, 100, 50}, {14, 1, 20, 2}, {18, 1, 100, 50}, {21, 1, 20, 2}},
         {{8, 3}, {17, 3}, {4, 1}},
         {},
         {}},
        {twirlsDialog,
         "twirls",
         {{9, "50"}, {13, "50"}, {17, "50"}},
         {{10, 1, 100, 50}, {14, 1, 100, 50}, {18, 1, 100, 50}},
         {{4, 1}},
         {},
         {}},
        {skewDialog, "skew", {}, {}, {{12, 1}, {4, 1}}, {}, {}},
        {blurDialog, "blur", {{5, "20"}}, {{6, 1, 100, 20}}, {{7, 1}, {9, 1}}, {}, {}},
        {sharpenDialog, "sharpen", {{5, "1"}}, {{6, 1, 5, 1}}, {}, {}, {}},
        {noiseDialog, "noise", {{6, "50"}}, {{5, 1, 100, 50}}, {{10, 1}}, {}, {}},
        {saturationDialog, "saturation", {{5, "10"}}, {{6, -50, 50, 10}}, {}, {}, {}},
        {brightContrDialog,
         "brightness-contrast",
         {{5, "0"}, {8, "0"}},
         {{6, -50, 50, 0}, {9, -50, 50, 0}},
         {},
         {},
         {}},
        {addColorDialog,
         "add-color",
         {{5, "10"}},
         {{6, 1, 100, 10}},
         {},
         {{9, RGB(127, 127, 127)}},
         {}},
        {mosaicDialog, "mosaic", {}, {}, {{6, 1}, {7, 3}}, {}, {}},
        {combineDialog, "combine", {{8, "50"}}, {{7, 0, 100, 50}}, {{4, 1}}, {}, {}},
        {tileDialog, "tile", {{6, "2"}, {8, "2"}}, {}, {}, {}, {}},
        {brushDialog, "brush", {{4, "11"}}, {{5, 2, 20, 11}}, {}, {}, {}},
        {cloneDialog,
         "rubber-stamp",
         {{4, "16"}, {7, "0"}, {9, "0"}},
         {{5, 1, 20, 16}},
         {},
         {},
         {}},
        {fillDialog, "fill", {{4, "25"}}, {{5, 0, 100, 25}}, {{6, 1}}, {}, {}},
        {presetDialog, "preset", {{4, "Night rain"}}, {}, {}, {}, {}},
        {jpegDialog, "jpeg", {{5, "75"}}, {{7, 20, 100, 75}}, {}, {}, {}},
        {aboutDialog, "about", {}, {}, {}, {}, {}},
        {alertOutOfMemory, "alert", {}, {}, {}, {}, {}},
        {alertDeletePreset, "question", {}, {}, {}, {}, {}},
    };
    return samples;
}

void FillIn(const OpenedDialog& dialog, const Sample& sample) {
    for (const Text& text : sample.texts) {
        SetDlgItemTextA(dialog.Window(), text.item, text.text);
    }
    for (const Slider& slider : sample.sliders) {
        const HWND window = dialog.Item(slider.item).window;
        SendMessageA(window, controlSetRange, 1, MAKELPARAM(slider.minimum, slider.maximum));
        SendMessageA(window, controlSetValue, 0, slider.value);
    }
    for (const Value& value : sample.values) {
        const Control control = dialog.Item(value.item);
        const bool isButton = control.className == L"Button";
        SendMessageA(control.window, isButton ? UINT{BM_SETCHECK} : UINT{controlSetValue},
                     isButton ? static_cast<WPARAM>(value.value) : 0, isButton ? 0 : value.value);
    }
}

hostapi::Rect BoundsOf(const OpenedDialog& dialog, int item) {
    const RECT bounds = dialog.Item(item).bounds;
    return {static_cast<std::int16_t>(bounds.top), static_cast<std::int16_t>(bounds.left),
            static_cast<std::int16_t>(bounds.bottom), static_cast<std::int16_t>(bounds.right)};
}

void DrawSwatch(DrawingPort& port, const hostapi::Rect& rect, COLORREF color) {
    port.SetForeground(MakeColor24(0, 0, 0));
    port.FrameRect(rect);
    port.SetBackground(color);
    port.FillRect(Inset(rect, 1, 1));
}

void DrawDial(DrawingPort& port, const hostapi::Rect& rect, int angle) {
    constexpr int inset = 7;
    const int half = std::min(Width(rect), Height(rect)) / 2;
    const int x = (rect.left + rect.right) / 2;
    const int y = (rect.top + rect.bottom) / 2;
    const auto place = [](double value) { return static_cast<std::int16_t>(std::lround(value)); };
    port.DrawPicture(bitmapDial,
                     {place(y - half), place(x - half), place(y + half), place(x + half)});
    const hostapi::Point size = port.IconSize(iconDialKnob);
    const double radians = angle * pi / 180;
    port.DrawIcon(iconDialKnob, {place(y - std::cos(radians) * (half - inset) - size.v / 2),
                                 place(x + std::sin(radians) * (half - inset) - size.h / 2)});
}

/// Two bands of waves, which tile at every multiple of 128.
COLORREF TextureColor(int x, int y) {
    const double a = std::sin(2 * pi * (x + 12 * std::sin(2 * pi * y / 64.0)) / 32.0);
    const double b = std::sin(2 * pi * (y + 9 * std::sin(2 * pi * x / 128.0)) / 64.0);
    const double t = (a + b + 2) / 4;
    const auto mix = [t](int from, int to) { return static_cast<BYTE>(from + t * (to - from)); };
    return RGB(mix(20, 247), mix(88, 214), mix(110, 160));
}

void DrawTexture(HWND window, const hostapi::Rect& view) {
    const HDC context = GetDC(window);
    for (int y = view.top; y < view.bottom; ++y) {
        for (int x = view.left; x < view.right; ++x) {
            SetPixelV(context, x, y, TextureColor(x - view.left, y - view.top));
        }
    }
    ReleaseDC(window, context);
}

void DrawWells(DrawingPort& port, const hostapi::Rect& r) {
    const auto rect = [](int top, int left, int bottom, int right) {
        return hostapi::Rect{static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
                             static_cast<std::int16_t>(bottom), static_cast<std::int16_t>(right)};
    };
    port.SetForeground(MakeColor24(0, 0, 0));
    port.SetBackground(MakeColor24(255, 255, 255));
    port.FrameRect(rect(r.top + 19, r.left + 19, r.bottom - 7, r.right - 8));
    port.FillRect(rect(r.top + 20, r.right - 20, r.bottom - 8, r.right - 9));
    port.FillRect(rect(r.bottom - 18, r.left + 20, r.bottom - 8, r.right - 9));
    const hostapi::Rect fore = rect(r.top + 7, r.left + 9, r.bottom - 20, r.right - 22);
    port.SetBackground(MakeColor24(20, 88, 110));
    port.FrameRect(Inset(fore, -2, -2));
    port.FillRect(fore);
}

void DrawEditor(const OpenedDialog& dialog, DrawingPort& port) {
    const hostapi::Rect area = BoundsOf(dialog, TextureItems::drawingArea);
    port.SetForeground(MakeColor24(0, 0, 0));
    port.FrameRect(Inset(area, 1, 1));
    hostapi::Rect view = Inset(area, 2, 2);
    view.right = static_cast<std::int16_t>(view.right - 15);
    view.bottom = static_cast<std::int16_t>(view.bottom - 15);
    DrawTexture(dialog.Window(), view);
    DrawWells(port, BoundsOf(dialog, TextureItems::colorWells));
    port.SetForeground(MakeColor24(0, 0, 0));
    for (int item : {TextureItems::colorWells, TextureItems::paletteFrame}) {
        port.FrameRect(Inset(BoundsOf(dialog, item), -1, -1));
    }
    const hostapi::Rect readout = BoundsOf(dialog, TextureItems::zoomReadout);
    port.SetBackground(GetSysColor(COLOR_BTNFACE));
    port.DrawText("100%", Inset(readout, 16, 1), textRight | textMiddle);
    port.FrameRect(readout);
    port.FrameRect(BoundsOf(dialog, TextureItems::progress));
}

void FillTab(const OpenedDialog& dialog) {
    const HWND tab = dialog.Item(TextureItems::tab).window;
    std::wstring names[] = {L"Drawing", L"Tile Preview"};
    for (int i = 0; i < 2; ++i) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = names[i].data();
        SendMessageW(tab, TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
    for (const auto& [item, icon] : {std::pair(7, iconZoomIn), std::pair(8, iconZoomOut)}) {
        SendMessageA(dialog.Item(item).window, BM_SETIMAGE, IMAGE_ICON,
                     reinterpret_cast<LPARAM>(LoadImageA(instanceHandle, MAKEINTRESOURCEA(icon),
                                                         IMAGE_ICON, 0, 0, LR_SHARED)));
    }
}

void DrawAll(const OpenedDialog& dialog, const Sample& sample) {
    RedrawWindow(dialog.Window(), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_FRAME | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    DrawingPort port(dialog.Window());
    for (const Swatch& swatch : sample.swatches) {
        DrawSwatch(port, BoundsOf(dialog, swatch.item), swatch.color);
    }
    for (const Value& dial : sample.dials) {
        DrawDial(port, BoundsOf(dialog, dial.item), dial.value);
    }
    if (sample.dialog == textureDialog) {
        DrawEditor(dialog, port);
    }
}

host::Picture Capture(HWND window) {
    RECT frame;
    GetWindowRect(window, &frame);
    host::Picture picture;
    picture.width = frame.right - frame.left;
    picture.height = frame.bottom - frame.top;
    picture.pixels.resize(picture.RowBytes() * static_cast<std::size_t>(picture.height));
    const HDC source = GetWindowDC(window);
    const HDC memory = CreateCompatibleDC(source);
    const HBITMAP bitmap = CreateCompatibleBitmap(source, picture.width, picture.height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, picture.width, picture.height, source, 0, 0, SRCCOPY);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const COLORREF color = GetPixel(memory, x, y);
            std::uint8_t* const pixel = picture.Pixel(x, y);
            pixel[0] = GetRValue(color);
            pixel[1] = GetGValue(color);
            pixel[2] = GetBValue(color);
        }
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, source);
    return picture;
}

void Draw(const Sample& sample, const std::string& folder, int resolution) {
    dialogState.openingResource = static_cast<short>(sample.dialog);
    const OpenedDialog dialog(sample.dialog, resolution);
    if (!dialog.IsOpen()) {
        throw std::runtime_error("no dialog " + std::to_string(sample.dialog));
    }
    if (sample.dialog == textureDialog) {
        FillTab(dialog);
    }
    FillIn(dialog, sample);
    SetWindowPos(dialog.Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
    DrawAll(dialog, sample);
    SavePicture(Capture(dialog.Window()), folder + "/" + sample.name + ".png");
}

}  // namespace

int main(int count, char** values) {
    if (count < 2) {
        std::fprintf(stderr, "usage: dialog-pictures FOLDER [RESOLUTION]\n");
        return 2;
    }
    const std::string name = "pictures" + std::to_string(GetCurrentProcessId());
    SetThreadDesktop(CreateDesktopA(name.c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr));
    InitCommonControls();
    instanceHandle = GetModuleHandleA(nullptr);
    RegisterControlClasses();
    try {
        for (const Sample& sample : Samples()) {
            Draw(sample, values[1], count > 2 ? std::atoi(values[2]) : 96);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
