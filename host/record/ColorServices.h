// The colour service: converts, samples and offers colours of 8 bits a component.
#pragma once

#include <cstdint>
#include <functional>

#include "host/picture/Picture.h"
#include "hostapi/Suites.h"

namespace host {

/// The source of the service's colours. Components run from 0 to 255.
struct ColorSource {
    std::uint8_t foreground[3];
    std::uint8_t background[3];
    /// Sampled points are in its coordinates less `origin`. Null: there is nothing to sample.
    const Picture* picture;
    hostapi::Point origin;
    /// See HostHooks::chooseColor.
    std::function<bool(std::uint8_t (&color)[3])> chooseColor;
    /// Returns -30900 to all but choosing.
    bool refuseAllButChoosing;
};

/// Carries out the record's request and returns 0 or the interface's error: -30100 for a record
/// that is too short, reserved pointers that aren't null, unknown selectors, spaces, special
/// colours and points outside the picture; -128 if the user cancelled; -30900 as said.
///
/// Spaces, all components 0 to 255: RGB; HSB and HSL (hue 0 to 360 degrees, the rest 0 to 100 %);
/// CMYK (255 is full ink); Lab under D50 (L 0 to 100; a and b -128 to 127 with 128 for 0); grey;
/// XYZ under D50 (255 is 1). RGB is sRGB.
std::int16_t ServeColor(hostapi::ColorServicesInfo* info, const ColorSource& source);

/// The conversion alone. Components beyond the space's number are ignored and set to 0. False if a
/// space is unknown.
bool ConvertColor(std::int16_t sourceSpace, std::int16_t resultSpace,
                  std::int16_t (&components)[4]);

}  // namespace host
