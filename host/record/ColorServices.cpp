#include "host/record/ColorServices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "hostapi/Results.h"

namespace host {

namespace {

/// Three or four values, each 0 to 1; RGB unless it says otherwise.
using Color = std::array<double, 4>;

constexpr Color whiteD50 = {0.9642, 1.0, 0.8249, 0.0};
constexpr double labScale = 255.0;
// Lab's f() is a cube root above this and a straight line below.
constexpr double labDelta = 6.0 / 29.0;

double ToLinear(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double FromLinear(double value) {
    return value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1.0 / 2.4) - 0.055;
}

// sRGB, adapted to D50.
Color RgbToXyz(const Color& rgb) {
    const double r = ToLinear(rgb[0]), g = ToLinear(rgb[1]), b = ToLinear(rgb[2]);
    return {0.4360747 * r + 0.3850649 * g + 0.1430804 * b,
            0.2225045 * r + 0.7168786 * g + 0.0606169 * b,
            0.0139322 * r + 0.0971045 * g + 0.7141733 * b, 0.0};
}

Color XyzToRgb(const Color& xyz) {
    const double x = xyz[0], y = xyz[1], z = xyz[2];
    const Color linear = {3.1338561 * x - 1.6168667 * y - 0.4906146 * z,
                          -0.9787684 * x + 1.9161415 * y + 0.0334540 * z,
                          0.0719453 * x - 0.2289914 * y + 1.4052427 * z, 0.0};
    Color rgb{};
    for (std::size_t i = 0; i < 3; ++i) {
        rgb[i] = FromLinear(std::clamp(linear[i], 0.0, 1.0));
    }
    return rgb;
}

double LabForward(double value) {
    return value > labDelta * labDelta * labDelta
               ? std::cbrt(value)
               : value / (3.0 * labDelta * labDelta) + 4.0 / 29.0;
}

double LabBackward(double value) {
    return value > labDelta ? value * value * value
                            : 3.0 * labDelta * labDelta * (value - 4.0 / 29.0);
}

Color RgbToLab(const Color& rgb) {
    const Color xyz = RgbToXyz(rgb);
    const double x = LabForward(xyz[0] / whiteD50[0]), y = LabForward(xyz[1] / whiteD50[1]),
                 z = LabForward(xyz[2] / whiteD50[2]);
    return {(116.0 * y - 16.0) / 100.0, (500.0 * (x - y) + 128.0) / labScale,
            (200.0 * (y - z) + 128.0) / labScale, 0.0};
}

Color LabToRgb(const Color& lab) {
    const double y = (lab[0] * 100.0 + 16.0) / 116.0;
    const double x = y + (lab[1] * labScale - 128.0) / 500.0;
    const double z = y - (lab[2] * labScale - 128.0) / 200.0;
    return XyzToRgb({LabBackward(x) * whiteD50[0], LabBackward(y) * whiteD50[1],
                     LabBackward(z) * whiteD50[2], 0.0});
}

// From 0 to below 1; 0 for greys.
double HueOf(const Color& rgb, double largest, double spread) {
    if (spread == 0.0) {
        return 0.0;
    }
    double sixths;
    if (largest == rgb[0]) {
        sixths = (rgb[1] - rgb[2]) / spread;
    } else if (largest == rgb[1]) {
        sixths = 2.0 + (rgb[2] - rgb[0]) / spread;
    } else {
        sixths = 4.0 + (rgb[0] - rgb[1]) / spread;
    }
    return sixths < 0.0 ? sixths / 6.0 + 1.0 : sixths / 6.0;
}

// The colour of a hue whose components run from `smallest` to `smallest + spread`.
Color FromHue(double hue, double smallest, double spread) {
    Color rgb{};
    const std::array<double, 3> centres = {0.0, 2.0, 4.0};
    for (std::size_t i = 0; i < 3; ++i) {
        double distance = std::abs(std::fmod(hue * 6.0, 6.0) - centres[i]);
        distance = std::min(distance, 6.0 - distance);
        rgb[i] = smallest + spread * std::clamp(2.0 - distance, 0.0, 1.0);
    }
    return rgb;
}

Color RgbToHsb(const Color& rgb) {
    const auto [smallest, largest] = std::minmax({rgb[0], rgb[1], rgb[2]});
    const double spread = largest - smallest;
    return {HueOf(rgb, largest, spread), largest == 0.0 ? 0.0 : spread / largest, largest, 0.0};
}

Color HsbToRgb(const Color& hsb) {
    const double spread = hsb[1] * hsb[2];
    return FromHue(hsb[0], hsb[2] - spread, spread);
}

Color RgbToHsl(const Color& rgb) {
    const auto [smallest, largest] = std::minmax({rgb[0], rgb[1], rgb[2]});
    const double spread = largest - smallest;
    const double range = 1.0 - std::abs(largest + smallest - 1.0);
    return {HueOf(rgb, largest, spread), range == 0.0 ? 0.0 : spread / range,
            (largest + smallest) / 2.0, 0.0};
}

Color HslToRgb(const Color& hsl) {
    const double spread = hsl[1] * (1.0 - std::abs(2.0 * hsl[2] - 1.0));
    return FromHue(hsl[0], hsl[2] - spread / 2.0, spread);
}

Color RgbToCmyk(const Color& rgb) {
    const double black = 1.0 - std::max({rgb[0], rgb[1], rgb[2]});
    if (black == 1.0) {
        return {0.0, 0.0, 0.0, 1.0};
    }
    auto ink = [black](double light) { return (1.0 - light - black) / (1.0 - black); };
    return {ink(rgb[0]), ink(rgb[1]), ink(rgb[2]), black};
}

Color CmykToRgb(const Color& cmyk) {
    auto light = [&](double ink) { return (1.0 - ink) * (1.0 - cmyk[3]); };
    return {light(cmyk[0]), light(cmyk[1]), light(cmyk[2]), 0.0};
}

Color RgbToGrey(const Color& rgb) {
    return {0.299 * rgb[0] + 0.587 * rgb[1] + 0.114 * rgb[2], 0.0, 0.0, 0.0};
}

Color GreyToRgb(const Color& grey) {
    return {grey[0], grey[0], grey[0], 0.0};
}

Color Same(const Color& color) {
    return color;
}

struct Space {
    std::size_t components;
    Color (*toRgb)(const Color&);
    Color (*fromRgb)(const Color&);
};

// In the order of hostapi::ColorSpace from RGB on.
constexpr std::array<Space, 7> spaces = {{
    {3, Same, Same},
    {3, HsbToRgb, RgbToHsb},
    {4, CmykToRgb, RgbToCmyk},
    {3, LabToRgb, RgbToLab},
    {1, GreyToRgb, RgbToGrey},
    {3, HslToRgb, RgbToHsl},
    {3, XyzToRgb, RgbToXyz},
}};

const Space* FindSpace(std::int16_t number) {
    if (number < 0 || static_cast<std::size_t>(number) >= spaces.size()) {
        return nullptr;
    }
    return &spaces[static_cast<std::size_t>(number)];
}

void SetRgb(hostapi::ColorServicesInfo& info, const std::uint8_t* rgb) {
    std::copy(rgb, rgb + 3, info.colorComponents);
    info.colorComponents[3] = 0;
}

// The record's RGB components to the space that was asked for.
std::int16_t Deliver(hostapi::ColorServicesInfo& info) {
    if (info.resultSpace == hostapi::colorSpaceChosen) {
        info.resultSpace = hostapi::colorSpaceRGB;
    }
    const bool isKnown =
        ConvertColor(hostapi::colorSpaceRGB, info.resultSpace, info.colorComponents);
    return isKnown ? hostapi::noErr : hostapi::filterBadParameters;
}

std::int16_t Choose(hostapi::ColorServicesInfo& info, const ColorSource& source) {
    if (!ConvertColor(info.sourceSpace, hostapi::colorSpaceRGB, info.colorComponents)) {
        return hostapi::filterBadParameters;
    }
    std::uint8_t color[3];
    std::transform(info.colorComponents, info.colorComponents + 3, color,
                   [](std::int16_t component) { return static_cast<std::uint8_t>(component); });
    if (source.chooseColor && !source.chooseColor(color)) {
        return hostapi::userCanceledErr;
    }
    SetRgb(info, color);
    // Without a wish the colour comes in the space that it was given in.
    if (info.resultSpace == hostapi::colorSpaceChosen) {
        info.resultSpace = info.sourceSpace;
    }
    return Deliver(info);
}

std::int16_t Convert(hostapi::ColorServicesInfo& info) {
    const bool areKnown = ConvertColor(info.sourceSpace, info.resultSpace, info.colorComponents);
    info.resultGamutInfoValid = 0;
    return areKnown ? hostapi::noErr : hostapi::filterBadParameters;
}

std::int16_t Sample(hostapi::ColorServicesInfo& info, const ColorSource& source) {
    const hostapi::Point* point = info.selectorParameter.globalSamplePoint;
    if (point == nullptr || source.picture == nullptr) {
        return hostapi::filterBadParameters;
    }
    const int x = point->h - source.origin.h;
    const int y = point->v - source.origin.v;
    if (x < 0 || y < 0 || x >= source.picture->width || y >= source.picture->height) {
        return hostapi::filterBadParameters;
    }
    SetRgb(info, source.picture->Pixel(x, y));
    return Deliver(info);
}

std::int16_t SpecialColor(hostapi::ColorServicesInfo& info, const ColorSource& source) {
    constexpr std::intptr_t foreground = 0, background = 1;
    if (info.selectorParameter.specialColorID == foreground) {
        SetRgb(info, source.foreground);
    } else if (info.selectorParameter.specialColorID == background) {
        SetRgb(info, source.background);
    } else {
        return hostapi::filterBadParameters;
    }
    return Deliver(info);
}

bool IsSound(const hostapi::ColorServicesInfo* info) {
    return info != nullptr && info->infoSize >= static_cast<std::int32_t>(sizeof(*info)) &&
           info->reservedSourceSpaceInfo == nullptr && info->reservedResultSpaceInfo == nullptr &&
           info->reserved == nullptr;
}

}  // namespace

bool ConvertColor(std::int16_t sourceSpace, std::int16_t resultSpace,
                  std::int16_t (&components)[4]) {
    const Space* from = FindSpace(sourceSpace);
    const Space* to = FindSpace(resultSpace);
    if (from == nullptr || to == nullptr) {
        return false;
    }
    Color color{};
    for (std::size_t i = 0; i < from->components; ++i) {
        color[i] = std::clamp<int>(components[i], 0, 255) / 255.0;
    }
    if (from != to) {
        color = to->fromRgb(from->toRgb(color));
    }
    for (std::size_t i = 0; i < 4; ++i) {
        const double value = i < to->components ? std::clamp(color[i], 0.0, 1.0) : 0.0;
        components[i] = static_cast<std::int16_t>(std::lround(value * 255.0));
    }
    return true;
}

std::int16_t ServeColor(hostapi::ColorServicesInfo* info, const ColorSource& source) {
    if (!IsSound(info)) {
        return hostapi::filterBadParameters;
    }
    if (source.refuseAllButChoosing && info->selector != hostapi::colorServicesChooseColor) {
        return hostapi::errPlugInHostInsufficient;
    }
    switch (info->selector) {
        case hostapi::colorServicesChooseColor:
            return Choose(*info, source);
        case hostapi::colorServicesConvertColor:
            return Convert(*info);
        case hostapi::colorServicesSamplePoint:
            return Sample(*info, source);
        case hostapi::colorServicesGetSpecialColor:
            return SpecialColor(*info, source);
        default:
            return hostapi::filterBadParameters;
    }
}

}  // namespace host
