#include "framework/drawing/ScreenScale.h"

#include <cstdlib>

namespace {

/// The font of the dialog resources, in points of a 72nd of an inch.
constexpr int dialogFontPoints = 8;
constexpr int pointsInInch = 72;

/// `number` of `numerator` parts of `denominator`, rounded half away from zero.
int Part(int number, int numerator, int denominator) {
    const int half = number < 0 ? -denominator / 2 : denominator / 2;
    return (number * numerator + half) / denominator;
}

int DistanceFromFont(int fontHeight, int resolution) {
    return std::abs(std::abs(fontHeight) - Part(dialogFontPoints, resolution, pointsInInch));
}

}  // namespace

int ScreenScale::Pixels(int plain) const {
    return Part(plain, resolution, plainResolution);
}

int AtPercent(int plain, int percent) {
    return Part(plain, percent, 100);
}

int NearestPictureScale(int plain, int wanted) {
    int nearest = 0;
    const auto distance = [&](int index) {
        return std::abs(100 * wanted - plain * pictureScales[static_cast<std::size_t>(index)]);
    };
    for (int index = 1; index < static_cast<int>(pictureScales.size()); ++index) {
        if (distance(index) <= distance(nearest)) {
            nearest = index;
        }
    }
    return nearest;
}

int LayoutResolution(int fontHeight, int ofMonitor, int ofDevice) {
    if (ofMonitor <= 0 || ofDevice <= 0) {
        const int known = ofMonitor > 0 ? ofMonitor : ofDevice;
        return known > 0 ? known : plainResolution;
    }
    const bool followsDevice = fontHeight != 0 && DistanceFromFont(fontHeight, ofDevice) <
                                                      DistanceFromFont(fontHeight, ofMonitor);
    return followsDevice ? ofDevice : ofMonitor;
}
