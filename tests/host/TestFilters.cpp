#include "tests/host/TestFilters.h"

#include "hostapi/FilterRecord.h"
#include "hostapi/Results.h"
#include "tests/host/Misuse.h"

namespace testfilters {

namespace {

using hostapi::FilterRecord;

void EmptyRectangles(FilterRecord& record) {
    record.inRect = record.outRect = record.maskRect = {0, 0, 0, 0};
}

void AskForRow(FilterRecord& record, int row) {
    const hostapi::Rect rect{static_cast<std::int16_t>(row), record.filterRect.left,
                             static_cast<std::int16_t>(row + 1), record.filterRect.right};
    record.inRect = record.outRect = rect;
    record.inLoPlane = record.outLoPlane = 0;
    record.inHiPlane = record.outHiPlane = static_cast<std::int16_t>(record.planes - 1);
}

/// `action` gets each row's input, output and number of pixels.
template <typename Action>
std::int16_t ForEachRow(FilterRecord& record, Action action) {
    std::int16_t result = hostapi::noErr;
    for (int row = record.filterRect.top; row < record.filterRect.bottom; ++row) {
        record.progressProc(row - record.filterRect.top,
                            record.filterRect.bottom - record.filterRect.top);
        if (record.abortProc() != 0) {
            result = hostapi::userCanceledErr;
            break;
        }
        AskForRow(record, row);
        result = record.advanceState();
        if (result != hostapi::noErr) {
            break;
        }
        action(record.inData, record.outData, record.outRowBytes / record.planes);
    }
    EmptyRectangles(record);
    return result;
}

void InvertRow(const FilterRecord& record) {
    for (int i = 0; i < record.outRowBytes; ++i) {
        if (i % record.planes < 3) {
            record.outData[i] = static_cast<std::uint8_t>(255 - record.inData[i]);
        }
    }
}

std::int16_t InvertAll(FilterRecord& record) {
    return ForEachRow(record, [&](auto, auto, int) { InvertRow(record); });
}

hostapi::BufferID NewBuffer(FilterRecord& record, std::int32_t size) {
    hostapi::BufferID id = 0;
    record.bufferProcs->allocateProc(size, &id);
    return id;
}

}  // namespace

void HOST_CALL Invert(std::int16_t selector, FilterRecord* record, void*, std::int16_t* result) {
    *result = selector == hostapi::filterSelectorStart ? InvertAll(*record)
                                                       : std::int16_t{hostapi::noErr};
}

void HOST_CALL InvertByContinuing(std::int16_t selector, FilterRecord* record, void*,
                                  std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorStart) {
        AskForRow(*record, record->filterRect.top);
    }
    if (selector != hostapi::filterSelectorContinue) {
        return;
    }
    InvertRow(*record);
    if (record->outRect.bottom < record->filterRect.bottom) {
        AskForRow(*record, record->outRect.bottom);
    } else {
        EmptyRectangles(*record);
    }
}

void HOST_CALL Count(std::int16_t selector, FilterRecord* record, void*, std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector != hostapi::filterSelectorStart) {
        return;
    }
    if (record->parameters == nullptr) {
        record->parameters = record->handleProcs->newProc(1);
        if (record->parameters == nullptr) {
            *result = hostapi::memFullErr;
            return;
        }
        **record->parameters = 0;
    }
    const int number = ++**record->parameters;
    *result = ForEachRow(*record, [&](auto, std::uint8_t* output, int) {
        for (int i = 0; i < record->outRowBytes; ++i) {
            output[i] = static_cast<std::uint8_t>(output[i] + number);
        }
    });
}

void HOST_CALL Refuse(std::int16_t selector, FilterRecord* record, void*, std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorStart) {
        InvertAll(*record);
        *result = hostapi::filterBadParameters;
    }
}

void HOST_CALL ReportControlWord(std::int16_t, FilterRecord*, void*, std::int16_t* result) {
    std::uint16_t control = 0;
    asm volatile("fnstcw %0" : "=m"(control));
    *result = static_cast<std::int16_t>(control);
}

#ifdef __i386__
// The stack as the caller left it can only be seen before any prologue. The place for the result
// lies 16 bytes above the return address.
__attribute__((naked)) void HOST_CALL ReportStack(std::int16_t, FilterRecord*, void*,
                                                  std::int16_t*) {
    asm("leal 4(%esp), %eax\n\t"
        "andl $15, %eax\n\t"
        "addl $100, %eax\n\t"
        "movl 16(%esp), %ecx\n\t"
        "movw %ax, (%ecx)\n\t"
        "ret");
}
#else
void HOST_CALL ReportStack(std::int16_t, FilterRecord*, void*, std::int16_t* result) {
    // Before the call the stack is aligned to 16 here, by the platform's rules.
    *result = 100;
}
#endif

void HOST_CALL ReportAbout(std::int16_t selector, FilterRecord* record, void*,
                           std::int16_t* result) {
    const auto* about = reinterpret_cast<const hostapi::AboutRecord*>(record);
    const bool isAbout = selector == hostapi::filterSelectorAbout;
    *result = isAbout && about->platformData != nullptr ? 7 : 0;
}

void HOST_CALL WriteBehindRow(std::int16_t selector, FilterRecord* record, void*,
                              std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorStart) {
        *result = ForEachRow(*record, [&](auto, std::uint8_t* output, int) {
            WriteOutside(output, record->outRowBytes);
        });
    }
}

void HOST_CALL WriteBehindBuffer(std::int16_t selector, FilterRecord* record, void*,
                                 std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector != hostapi::filterSelectorStart) {
        return;
    }
    const hostapi::BufferID id = NewBuffer(*record, 10);
    WriteOutside(static_cast<std::uint8_t*>(record->bufferProcs->lockProc(id, 0)), 12);
    record->bufferProcs->freeProc(id);
}

void HOST_CALL Leak(std::int16_t selector, FilterRecord* record, void*, std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorStart) {
        NewBuffer(*record, 1000);
    }
}

void HOST_CALL FreeTwice(std::int16_t selector, FilterRecord* record, void*, std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector != hostapi::filterSelectorStart) {
        return;
    }
    const hostapi::BufferID id = NewBuffer(*record, 1000);
    record->bufferProcs->freeProc(id);
    record->bufferProcs->freeProc(id);
}

void HOST_CALL LeaveMaskRect(std::int16_t selector, FilterRecord* record, void*,
                             std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorStart) {
        record->maskRect = record->filterRect;
    }
}

void HOST_CALL ChangeControlWord(std::int16_t selector, FilterRecord*, void*,
                                 std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorFinish) {
        const std::uint16_t singlePrecision = 0x07F;
        asm volatile("fldcw %0" : : "m"(singlePrecision));
    }
}

void HOST_CALL ChangeRecord(std::int16_t selector, FilterRecord* record, void*,
                            std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorFinish) {
        record->planes = 1;
    }
}

MISBEHAVING void HOST_CALL Crash(std::int16_t selector, FilterRecord*, void*,
                                 std::int16_t* result) {
    *result = hostapi::noErr;
    if (selector == hostapi::filterSelectorStart) {
        volatile int* volatile nowhere = nullptr;
        *nowhere = 1;
    }
}

void HOST_CALL Throw(std::int16_t, FilterRecord*, void*, std::int16_t*) {
    throw 1;
}

}  // namespace testfilters
