#include "host/record/HostSettings.h"

#include <array>
#include <cstddef>

namespace host {

namespace {

struct TraitText {
    const char* name;
    const char* description;
};

// In the order of the enumeration.
constexpr std::array<TraitText, traitCount> traitTexts = {{
    {"zero-record", "the record is zeroed for each execution, its parameters lost"},
    {"empty-suites", "versions and counts of the suites are 0"},
    {"constant-space", "spaceProc always answers 0x7FFFFFFF"},
    {"display-ignores-origin", "displayPixels draws from the map's base address"},
    {"refuse-conversion", "colorServices answers -30900 to all but choosing"},
    {"shrink-rectangles", "advanceState shrinks rectangles that reach beyond the image"},
    {"shrink-silently", "the same, but only the row bytes tell"},
    {"fpu-27f", "the x87 control word is 0x27F"},
    {"fpu-37f", "the x87 control word is 0x37F"},
    {"misalign-stack", "the stack is aligned to 4 bytes only (32-bit)"},
    {"free-library", "the filter's library is freed after each execution"},
    {"no-automask", "autoMask is 0 although the host masks the result"},
    {"withhold-mask", "haveMask is 0 although there is a mask"},
    {"rubbish-tail", "the fields behind colorServices hold rubbish"},
    {"negative-origin", "the layer begins at negative image coordinates"},
    {"ignore-matte", "the input is not matted, whatever the filter asks for"},
    {"move-parameters", "parameters comes back as another handle with the same contents"},
    {"dumb-handles", "a handle's size is always 0, and resizing does nothing"},
    {"lose-parameters", "parameters is null at the start of each execution"},
    {"last-chunk-only", "advanceState stores nothing; only the last output is stored"},
    {"space-in-kilobytes", "spaceProc and maxSpace count kilobytes"},
    {"negative-space", "spaceProc and maxSpace are negative, as 2 GB or more are in 32 bits"},
    {"ignore-results", "the picture takes over what was written, whatever the result"},
    {"sixteen-bits", "imageMode is 11 and depth 16: 16 bits a channel; rows stay 8-bit"},
}};
static_assert(traitTexts.back().name != nullptr, "a trait has no text");

}  // namespace

const char* TraitName(Trait trait) {
    return traitTexts[static_cast<std::size_t>(trait)].name;
}

const char* TraitDescription(Trait trait) {
    return traitTexts[static_cast<std::size_t>(trait)].description;
}

std::optional<Trait> TraitFromName(const std::string& name) {
    for (Trait trait : AllTraits()) {
        if (name == TraitName(trait)) {
            return trait;
        }
    }
    return std::nullopt;
}

std::vector<Trait> AllTraits() {
    std::vector<Trait> traits;
    for (std::size_t index = 0; index < traitCount; ++index) {
        traits.push_back(static_cast<Trait>(index));
    }
    return traits;
}

TraitSet::TraitSet(std::initializer_list<Trait> traits) {
    for (Trait trait : traits) {
        Insert(trait);
    }
}

}  // namespace host
