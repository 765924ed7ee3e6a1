// Whole runs of the plug-in in a strict host, with its real windows and a user who works in them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "fixtures/GuiDriver.Win.h"
#include "fixtures/PreferencePlaceInMemory.h"
#include "framework/dialog/NorvantaDialog.h"
#include "host/record/FilterHost.h"
#include "tests/support/CoreTest.h"
#include "tests/support/ScratchFolder.h"

/// The second in which all of a test's drawing happens, unless the test sets another one.
constexpr std::uint32_t testClock = 1234567890;

class PluginRunTest : public CoreTest {
  public:
    /// The selection's size, and so the texture's, in pixels.
    static constexpr short width = 150;
    static constexpr short height = 100;

  protected:
    PluginRunTest();
    ~PluginRunTest() override;

    /// Runs the filter on `picture` with its selection; the user works in the windows meanwhile.
    host::RunReport Run(const std::function<void(const GuiDriver&)>& user);
    /// The same in a host that has run the filter before, or will again.
    host::RunReport RunIn(host::FilterHost& filterHost,
                          const std::function<void(const GuiDriver&)>& user);
    /// A repeat there: nobody is asked anything. The picture is as before the first run.
    host::RunReport Repeat(host::FilterHost& filterHost);
    /// The same as Run without the New dialog, and with Apply at the end.
    host::RunReport RunEditor(
        const std::function<void(const GuiDriver& gui, const DrivenDialog& editor)>& user);

    /// Faults are kept for the test in place of being shown.
    static void NoteFaults() {
        platformServices.reportFault = [](std::int16_t id, const char* file, int line) {
            Log().faults.push_back({id, file, line});
        };
    }

    /// The texture that was applied last.
    std::unique_ptr<PaintClass> Applied() const;
    /// The picture's selection is the applied texture, repeated, and the rest as it was.
    void ExpectFilledWithApplied() const;

    /// Where a pixel of the three by three tiles is in the drawing area at a zoom: (0, 0) is the
    /// top left pixel of the first tile. The texture has the size of the selection.
    ItemPlace PlaceOfPixel(const DrivenDialog& editor, int x, int y, double zoom = 1.0) const;
    /// Drags in the drawing area with a tool that draws at each place.
    static void Stroke(const DrivenDialog& editor, const std::vector<ItemPlace>& places);
    /// Clicks the tab that is not chosen.
    static void SwitchTab(const DrivenDialog& editor);
    void SkipNewDialog() const;
    /// How often the host has drawn since the run began.
    static int Displays();
    /// Leaves the dialog's picture in the folder that the environment variable SCREENSHOTS names.
    static void Keep(const DrivenDialog& dialog, const std::string& name);

    /// Chooses the tool by its key; returns when the palettes show it.
    static void ChooseTool(const GuiDriver& gui, const DrivenDialog& editor, char key, int tool);

    ScratchFolder folder;
    PreferencePlaceInMemory preferencesPlace;
    host::HostSettings settings;
    host::Picture before;
    host::Picture picture;
    hostapi::VRect selection{10, 20, 110, 170};
    /// The soft edge in pixels of an ellipse in the selection, which is selected in its place.
    std::optional<double> feather;
    /// Dots an inch, in place of the host's.
    std::optional<int> claimedResolution;
};
