// The host's program with a picture, driven as a user would.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "base/Rectangles.h"
#include "fixtures/InputDesktop.Win.h"
#include "host/picture/Picture.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/WindowResources.h"
#include "tests/e2e/HostProgram.Win.h"
#include "tests/support/OwnPreferences.Win.h"

namespace fs = std::filesystem;
using host::Picture;
using host::Place;
using host::StatusBar;

inline constexpr host::Size usual{320, 240};
// The selection that the tests drag, both corners included.
inline constexpr Place corner{40, 30};
inline constexpr Place oppositeCorner{199, 129};
inline constexpr hostapi::VRect dragged{30, 40, 130, 200};
inline constexpr const wchar_t* draggedText = L"40, 30 to 200, 130 (160 \u00D7 100)";

inline constexpr const wchar_t* done = L"Zandermolite 3.0: done";
// Items of the menus.
inline constexpr WORD fileMenu = 'F', filterMenu = 'T';
inline constexpr int lastFilterItem = 0, firstCategoryItem = 1;
// An item of the plug-in's editor.
inline constexpr int linesItem = 35;

// Before any test has put its own in its place.
inline const fs::path temporaryFolder = fs::temp_directory_path();

/// Every pixel different from its neighbours.
inline Picture MakePattern(host::Size size) {
    Picture picture = host::MakePicture(size.width, size.height, 3);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            std::uint8_t* pixel = picture.Pixel(x, y);
            pixel[0] = static_cast<std::uint8_t>(x);
            pixel[1] = static_cast<std::uint8_t>(y);
            pixel[2] = static_cast<std::uint8_t>(3 * x + 5 * y);
        }
    }
    return picture;
}

inline bool IsSamePixel(const Picture& a, const Picture& b, int x, int y) {
    return std::equal(a.Pixel(x, y), a.Pixel(x, y) + 3, b.Pixel(x, y));
}

/// Pixels inside, or outside, the rectangle that differ.
inline int CountChanged(const Picture& before, const Picture& after, const hostapi::VRect& rect,
                        bool isInside) {
    int changed = 0;
    for (int y = 0; y < before.height; ++y) {
        for (int x = 0; x < before.width; ++x) {
            if (hostapi::Contains(rect, x, y) == isInside && !IsSamePixel(before, after, x, y)) {
                ++changed;
            }
        }
    }
    return changed;
}

class HostWindowTest : public testing::Test {
  protected:
    HostWindowTest()
        : folder(temporaryFolder /
                 ("zandermolite-window-" + std::to_string(GetCurrentProcessId()))),
          preferences(folder) {
        EnterOwnDesktop();
        fs::remove_all(folder);
        fs::create_directories(folder);
        // The plug-in keeps its last texture there; other tests run it at the same time.
        SetEnvironmentVariableW(L"TMP", folder.c_str());
    }
    ~HostWindowTest() override {
        program.reset();
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

    fs::path WritePicture(const std::string& name, host::Size size = usual) {
        original = MakePattern(size);
        host::SavePicture(original, folder / name);
        return folder / name;
    }

    /// Starts the program with the plug-in.
    HostProgram& Start(std::vector<std::wstring> arguments = {}) {
        arguments.insert(arguments.end(), {L"--filter", host::Wide(PLUGIN_FILE)});
        program = std::make_unique<HostProgram>(arguments);
        return *program;
    }

    HostProgram& StartWithPicture(std::vector<std::wstring> arguments = {},
                                  host::Size size = usual) {
        arguments.push_back(WritePicture("picture.png", size).wstring());
        HostProgram& started = Start(arguments);
        started.WaitForTitle(L"picture.png - Zandermolite Host");
        started.Window();
        return started;
    }

    void Drag(Place from, Place to, host::Size size = usual) {
        const POINT start = program->OnScreen(from, size);
        const POINT end = program->OnScreen(to, size);
        MoveMouse(start);
        PressMouse();
        MoveMouse({(start.x + end.x) / 2, (start.y + end.y) / 2});
        MoveMouse(end);
        ReleaseMouse();
    }

    void DragUsualSelection() {
        Drag(corner, oppositeCorner);
        program->WaitForStatus(StatusBar::selectionInfo, draggedText);
    }

    /// The New dialog waits then.
    void OpenFromMenu() {
        program->ChooseInMenu(filterMenu, firstCategoryItem, 0);
        newDialog = program->WaitForDialog(L"New");
    }

    /// Takes the New dialog's own settings. Returns the editor.
    HWND OpenEditor() {
        OpenFromMenu();
        HostProgram::Push(newDialog, IDOK);
        return program->WaitForDialog(L"Zandermolite");
    }

    /// Draws lines and applies.
    void RunFromMenu() {
        HWND editor = OpenEditor();
        HostProgram::Push(editor, linesItem);
        HostProgram::Push(program->WaitForDialog(L"Lines"), IDOK);
        WaitUntil("the editor again", [&] { return IsWindowEnabled(editor) != FALSE; });
        HostProgram::Push(editor, IDOK);
    }

    /// Returns the picture that Save As writes.
    Picture SaveAndLoad(const std::string& name = "saved.png") {
        program->Window();
        SendChords({{VK_CONTROL, 'S'}});
        HostProgram::EnterFile(program->WaitForDialog(L"Save As"), folder / name);
        program->WaitForStatus(StatusBar::message, L"Saved as " + host::Wide(name));
        return host::LoadPicture(folder / name);
    }

    fs::path folder;
    OwnPreferences preferences;
    HWND newDialog = nullptr;
    Picture original;
    std::unique_ptr<HostProgram> program;
};
