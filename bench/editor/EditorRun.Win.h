// The runs of the editor in a host that notes what is drawn, and the reports: all measurements of
// the editor share them.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <vector>

#include "fixtures/GuiDriver.Win.h"
#include "host/record/FilterHost.h"

using Clock = std::chrono::steady_clock;

/// The sides of the tile, in pixels.
constexpr short tileSide = 512;

double MillisecondsBetween(Clock::time_point start, Clock::time_point end);
double MillisecondsSince(Clock::time_point start);

// --- Runs ---

/// Settings with an editor whose client area has the screen's size, and the worst case of each
/// dialog's record. No New dialog unless it is asked for.
void StorePreferences(bool opensNew);

/// The plug-in between the host and the notes below.
void HOST_CALL NotedEntry(std::int16_t selector, hostapi::FilterRecord* record, void*,
                          std::int16_t* result);

/// One run of the filter on the picture; the user cancels in the end.
void RunOn(host::Picture picture, const std::function<void(const GuiDriver&)>& user);
/// One with a blank texture.
void RunEditor(const std::function<void(const GuiDriver&, const DrivenDialog&)>& user);

/// Ends the dialog by a button of it.
void CloseWith(const DrivenDialog& dialog, int item);

// --- What is noted of them ---

/// Redraws of the view so far. A redraw begins with the first call of the host's display service
/// that draws over what the redraw before has drawn.
int Redraws();
/// When the last call was done.
Clock::time_point LastDisplay();
/// The time that each call takes in a slow host, beside the drawing; 0 for a quick one.
void SetSlowness(DWORD milliseconds);
/// The time of the plug-in's last start, the host's callbacks included, in milliseconds.
double StartTook();

// --- Reports ---

double Median(std::vector<double> values);
/// In milliseconds.
void Report(const char* name, const std::vector<double>& values);
