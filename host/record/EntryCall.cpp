#include "host/record/EntryCall.h"

#include <cstddef>

namespace host {

namespace {

// The control registers of both floating-point units. The conditions below exist on x86 alone; on
// other processors they change nothing.
struct FloatingPointControl {
    std::uint16_t x87 = 0;
    // Without the exception flags, which every calculation may set.
    std::uint32_t sse = 0;
    bool operator==(const FloatingPointControl&) const = default;
};

#if defined(__i386__) || defined(__x86_64__)
FloatingPointControl ReadControl() {
    constexpr std::uint32_t exceptionFlags = 0x3F;
    FloatingPointControl control;
    asm volatile("fnstcw %0" : "=m"(control.x87));
    asm volatile("stmxcsr %0" : "=m"(control.sse));
    control.sse &= ~exceptionFlags;
    return control;
}

void WriteControl(const FloatingPointControl& control) {
    asm volatile("fldcw %0" : : "m"(control.x87));
    asm volatile("ldmxcsr %0" : : "m"(control.sse));
}
#else
FloatingPointControl ReadControl() {
    return {};
}

void WriteControl(const FloatingPointControl&) {}
#endif

struct EntryArguments {
    std::int16_t selector;
    hostapi::FilterRecord* record;
    void* data;
    std::int16_t* result;
};

#ifdef __i386__
// Pushes the arguments so that the stack is aligned to 4 bytes and to nothing more at the call.
void CallMisaligned(EntryPoint entry, const EntryArguments& arguments) {
    const std::uint32_t words[] = {
        static_cast<std::uint32_t>(arguments.selector),
        reinterpret_cast<std::uint32_t>(arguments.record),
        reinterpret_cast<std::uint32_t>(arguments.data),
        reinterpret_cast<std::uint32_t>(arguments.result),
    };
    const std::uint32_t* argumentWords = words;
    asm volatile(
        "movl %%esp, %%ebx\n\t"
        "andl $-16, %%esp\n\t"
        "subl $12, %%esp\n\t"
        "pushl 12(%[words])\n\t"
        "pushl 8(%[words])\n\t"
        "pushl 4(%[words])\n\t"
        "pushl (%[words])\n\t"
        "call *%[entry]\n\t"
        "movl %%ebx, %%esp\n\t"
        : [words] "+S"(argumentWords), [entry] "+D"(entry)
        :
        : "eax", "ebx", "ecx", "edx", "memory", "cc", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4",
          "xmm5", "xmm6", "xmm7", "st", "st(1)", "st(2)", "st(3)", "st(4)", "st(5)", "st(6)",
          "st(7)");
}
#else
// A 64-bit process always aligns to 16.
void CallMisaligned(EntryPoint entry, const EntryArguments& arguments) {
    entry(arguments.selector, arguments.record, arguments.data, arguments.result);
}
#endif

FloatingPointControl ControlFor(const TraitSet& traits, FloatingPointControl own) {
    if (traits.Has(Trait::fpu27f)) {
        own.x87 = 0x27F;
    }
    if (traits.Has(Trait::fpu37f)) {
        own.x87 = 0x37F;
    }
    return own;
}

}  // namespace

std::int16_t CallEntry(EntryPoint entry, std::int16_t selector, hostapi::FilterRecord* record,
                       void* data, const TraitSet& traits, Faults& faults) {
    // A filter that stores no result leaves this one.
    std::int16_t result = 0;
    const FloatingPointControl own = ReadControl();
    const FloatingPointControl during = ControlFor(traits, own);
    WriteControl(during);
    if (traits.Has(Trait::misalignStack)) {
        CallMisaligned(entry, {selector, record, data, &result});
    } else {
        entry(selector, record, data, &result);
    }
    const FloatingPointControl after = ReadControl();
    WriteControl(own);
    if (after != during) {
        faults.Add("the filter changed the floating-point control word");
    }
    return result;
}

}  // namespace host
