// Programming and resource faults: reported to the user, then thrown as a 16-bit id.
//
// The throw passes through every caller to the catch in the plug-in's entry. Assertions stay
// active in production.
#pragma once

#include <cstdint>

/// Ids that are passed to FatalError. Some sources define more of their own.
enum FaultId : std::int16_t {
    faultAssertion = 2,
    /// The host lacks a service.
    faultHostService = 17500,
    faultResourceMissing = 20001,
    faultFileState = 20002,
    faultInternalLimit = 20005,
    faultBadArgument = 20008,
    faultNoWindow = 20009,
};

/// Faults from this id on are not shown; 32512 itself means that the user cancelled.
constexpr std::int16_t firstSilentFault = 32512;

/// The last non-zero id passed to FatalError. It is never cleared: a dialog that finds it set
/// closes with that id.
extern std::int16_t errorCell;

/// Reports the fault and throws `id` as a std::int16_t. The id 0 does nothing, so a status can be
/// passed on without a test.
void FatalError(std::int16_t id, const char* file, int line);

/// FatalError with `id` if `pointer` is null.
inline void CheckError(const void* pointer, std::int16_t id, const char* file, int line) {
    if (pointer == nullptr) {
        FatalError(id, file, line);
    }
}

/// FatalError with faultAssertion, the message in place of the file and -1 for the line.
[[noreturn, gnu::cold, gnu::noinline]] void FailAssertion(const char* message);

/// `message` names source file, line and expression: "SimpleLink / Zeile 25 !(ptr != NULL)".
inline void Assert(bool holds, const char* message) {
    if (!holds) [[unlikely]] {
        FailAssertion(message);
    }
}
