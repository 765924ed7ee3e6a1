// Which calls of a run are refused.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

/// The kinds of calls that the product may be refused: functions of the system, and what the host
/// offers in its record.
enum class Refused { drawing, memory, files, registry, host };
constexpr std::size_t refusedKinds = 5;
/// In the order of Refused.
constexpr const char* refusedNames[refusedKinds] = {"drawing", "memory", "files", "registry",
                                                    "host"};

/// A call of a run, from 1 on among those of its kind: refused alone, or with all later ones of its
/// group. 0 is none.
struct RefusedPoint {
    Refused kind = Refused::drawing;
    int call = 0;
    bool andAllAfter = false;
};

using CallCounts = std::array<int, refusedKinds>;

/// Counts the calls of each kind, and refuses what is wanted. One run at a time.
class Refusals {
  public:
    static void Begin(const RefusedPoint& point) {
        refused = point;
        refusedGroup = none;
        for (std::atomic<int>& count : calls) {
            count = 0;
        }
    }

    /// Counts a call. True if it is refused.
    static bool Takes(Refused kind, int group = 0) {
        const int call = ++calls[static_cast<std::size_t>(kind)];
        if (kind != refused.kind || refused.call == 0) {
            return false;
        }
        if (call == refused.call) {
            refusedGroup = group;
            return true;
        }
        return refused.andAllAfter && group == refusedGroup;
    }

    static CallCounts Calls() {
        CallCounts counts{};
        for (std::size_t kind = 0; kind < refusedKinds; ++kind) {
            counts[kind] = calls[kind];
        }
        return counts;
    }

  private:
    static constexpr int none = -1;

    static inline std::array<std::atomic<int>, refusedKinds> calls{};
    static inline std::atomic<int> refusedGroup = none;
    static inline RefusedPoint refused;
};
