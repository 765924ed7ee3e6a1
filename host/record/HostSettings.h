// How a host behaves: whose habits it has, and what it keeps from the filter on purpose.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/record/Services.h"
#include "hostapi/HostTypes.h"

namespace host {

/// Habits of hosts in use that a filter has to live with.
enum class Trait {
    zeroRecord,            ///< The record is zeroed for each execution and `parameters` lost.
    emptySuites,           ///< Versions and counts of the suites are 0.
    constantSpace,         ///< spaceProc always returns 0x7FFFFFFF.
    displayIgnoresOrigin,  ///< displayPixels draws from the map's base, whatever the rectangle's
                           ///< origin.
    refuseConversion,      ///< colorServices returns -30900 to all but choosing.
    shrinkRectangles,      ///< advanceState shrinks rectangles that reach beyond the image.
    shrinkSilently,        ///< The same, but only the row bytes tell.
    fpu27f,                ///< The x87 control word is 0x27F: double precision.
    fpu37f,                ///< The x87 control word is 0x37F: extended precision.
    misalignStack,         ///< The stack is aligned to 4 bytes only (32-bit processes).
    freeLibrary,           ///< The filter's library is freed after each execution.
    noAutoMask,            ///< autoMask is 0 although the host masks the result itself.
    withholdMask,          ///< haveMask is 0 although there is a mask.
    rubbishTail,           ///< Fields after colorServices hold rubbish.
    negativeOrigin,        ///< The layer begins at negative image coordinates.
    ignoreMatte,           ///< Input is not matted, whatever the filter case asks for.
    moveParameters,        ///< `parameters` comes back as another handle, with the same contents.
    dumbHandles,           ///< A handle's size is always 0, and resizing does nothing.
    loseParameters,        ///< `parameters` is null at the start of each execution.
    lastChunkOnly,         ///< advanceState drops what was written before it: only the last outData
                           ///< is stored.
    spaceInKilobytes,      ///< spaceProc and maxSpace count kilobytes.
    negativeSpace,         ///< spaceProc and maxSpace are negative, as 2 GB or more are in 32 bits.
    ignoreResults,         ///< The picture takes over what was written, whatever the result.
    sixteenBits,           ///< imageMode is imageModeRGB48, depth 16. Rows stay 8-bit: a filter is
                           ///< expected to refuse.
};
constexpr std::size_t traitCount = static_cast<std::size_t>(Trait::sixteenBits) + 1;

/// "zero-record", "empty-suites" and so on.
const char* TraitName(Trait trait);
/// One line for --help.
const char* TraitDescription(Trait trait);
std::optional<Trait> TraitFromName(const std::string& name);
std::vector<Trait> AllTraits();

class TraitSet {
  public:
    TraitSet() = default;
    TraitSet(std::initializer_list<Trait> traits);
    void Insert(Trait trait) { bits |= Bit(trait); }
    bool Has(Trait trait) const { return (bits & Bit(trait)) != 0; }

  private:
    static std::uint32_t Bit(Trait trait) { return std::uint32_t{1} << static_cast<int>(trait); }
    std::uint32_t bits = 0;
};

/// The kind of layer that the filter is told of; with the selection it decides the filter case.
/// `automatic` is `flat` for 3 planes and `editableTransparency` for 4.
enum class LayerKind { automatic, flat, floating, editableTransparency, protectedTransparency };

/// The services of a host with a window. Empty functions mean: no abort, no bar, the colour as it
/// is.
struct HostHooks {
    /// Asked by abortProc; true ends the filter.
    std::function<bool()> isAborted;
    std::function<void(std::int32_t done, std::int32_t total)> showProgress;
    /// The user chooses a colour, 8 bits a component, starting from `color`; false is Cancel.
    std::function<bool(std::uint8_t (&color)[3])> chooseColor;
    /// The window's handle for platformData.
    void* window = nullptr;
};

struct HostSettings {
    TraitSet traits;
    WithheldServices without;
    /// Bytes that the memory suites have to give.
    std::int64_t memoryBudget = std::int64_t{256} << 20;
    /// See MemorySettings::failAllocation.
    int failAllocation = 0;
    /// abortProc returns true once this many rows were delivered.
    std::optional<int> abortAfterRow;
    /// advanceState returns the code when asked for a rectangle with this row of the selection.
    std::map<int, std::int16_t> failAdvance;
    LayerKind layer = LayerKind::automatic;
    /// 16 bits a component; an 8-bit value stands in the high byte.
    hostapi::RGBColor foreground{0, 0, 0};
    hostapi::RGBColor background{0xFFFF, 0xFFFF, 0xFFFF};
    /// Calls of the continue selector before the host gives a filter up.
    int continueLimit = 10000;
    /// Put into the record as they are, sensible or not, to see what the filter makes of them.
    std::optional<hostapi::Rect> claimedFilterRect;
    std::optional<std::int16_t> claimedPlanes;
    HostHooks hooks;
};

}  // namespace host
