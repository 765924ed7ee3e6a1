#include "files/JPEGQuality.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int16_t standardQuality = 75;

/// The last result of the callbacks. The lowest quality of the dialog counts as none.
std::int16_t rememberedQuality = 0;

std::int16_t InRange(std::int16_t quality) {
    return std::clamp(quality, JPEGQualityChoice::lowest, JPEGQualityChoice::highest);
}

}  // namespace

JPEGQualityChoice::JPEGQualityChoice(File& choiceFile,
                                     std::function<void(std::int16_t)> applyQuality)
    : file(choiceFile), apply(std::move(applyQuality)) {
    rememberedQuality = Ask(qualityRemembered, rememberedQuality);
    current = InRange(Ask(qualityShown, Default()));
    apply(current);
}

std::int16_t JPEGQualityChoice::Default() const {
    return rememberedQuality > lowest ? InRange(rememberedQuality) : standardQuality;
}

void JPEGQualityChoice::Change(std::int16_t quality) {
    current = InRange(quality);
    apply(current);
    Ask(qualityChanged, current);
}

/// A file without a callback accepts every value.
std::int16_t JPEGQualityChoice::Ask(std::int16_t operation, std::int16_t value) const {
    return file.callback != nullptr ? file.callback(file, operation, value) : value;
}
