// The library's only export and its attach notification.
#include <windows.h>

#include <xmmintrin.h>

#include "base/Module.Win.h"
#include "hostapi/FilterRecord.h"
#include "shell/Selectors.h"

HINSTANCE instanceHandle = nullptr;

namespace {

/// The host's floating-point settings may be anything; the pixels must not depend on them. Sets the
/// program's own during the call and restores the host's after it.
class FloatingPointSettings {
  public:
    FloatingPointSettings() : vector(_mm_getcsr()) {
        asm volatile("fnstcw %0" : "=m"(x87));
        const unsigned short extended = 0x37F;
        asm volatile("fldcw %0" : : "m"(extended));
        constexpr unsigned roundToNearest = 0x1F80;
        _mm_setcsr(roundToNearest);
    }
    FloatingPointSettings(const FloatingPointSettings&) = delete;
    FloatingPointSettings& operator=(const FloatingPointSettings&) = delete;
    ~FloatingPointSettings() {
        // An exception flag of ours, once unmasked by the host's word, would fault in the host.
        asm volatile("fnclex");
        asm volatile("fldcw %0" : : "m"(x87));
        _mm_setcsr(vector);
    }

  private:
    unsigned short x87;
    unsigned vector;
};

void CheckInstanceHandle() {
    if (instanceHandle == nullptr) {
        // The selector still runs: only the text threatens to quit. That is intended.
        MessageBoxA(nullptr, "The DLL instance handle is nil.\nThe plug-in will quit.", "",
                    MB_ICONHAND | MB_SYSTEMMODAL);
    }
}

/// Nothing is kept beyond a call but the parameters block and files: hosts may unload the library
/// after each one.
void CleanUp() {}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        instanceHandle = instance;
    }
    return TRUE;
}

// Some hosts call with a stack aligned to four bytes only; the code called from here uses SSE.
#if defined(__i386__)
#define REALIGN_STACK __attribute__((force_align_arg_pointer))
#else
#define REALIGN_STACK
#endif

extern "C" __declspec(dllexport) REALIGN_STACK
    void __cdecl ENTRYPOINT(std::int16_t selector, hostapi::FilterRecord* record, void* /*data*/,
                            std::int16_t* result) {
    try {
        const FloatingPointSettings settings;
        CheckInstanceHandle();
        DispatchSelector(selector, record, result);
        CleanUp();
    } catch (...) {
        MessageBeep(0);
    }
}
