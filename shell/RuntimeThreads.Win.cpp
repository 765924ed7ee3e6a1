// The part of the POSIX thread interface that the C++ run-time library calls, for the plug-in.
//
// The thread library that comes with the compiler takes a thread-local slot, two events or more and
// a handle of the thread at its first use and never gives them back. A host that frees the plug-in
// after each run would lose four handles and a slot each time, and would be out of slots, of which
// a process has 1088, after as many runs. This implementation holds nothing when the library is
// unloaded.
//
// The locks spin: they guard a few instructions each, and a host calls on one thread.
#include <pthread.h>
#include <windows.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

namespace {

// States of a mutex and of a once-control; their static initializers mean free and not begun.
constexpr pthread_mutex_t taken = 1;
constexpr pthread_once_t running = 1;
constexpr pthread_once_t done = 2;

struct Key {
    DWORD slot;
    void (*destructor)(void* value);
};

// The run-time library has one key, for the exceptions of each thread.
constexpr unsigned maximalKeys = 4;
Key keys[maximalKeys];
unsigned keyCount = 0;

/// Destroys the calling thread's values.
void EndThread() {
    for (unsigned i = 0; i < keyCount; ++i) {
        void* const value = TlsGetValue(keys[i].slot);
        if (value != nullptr && keys[i].destructor != nullptr) {
            TlsSetValue(keys[i].slot, nullptr);
            keys[i].destructor(value);
        }
    }
}

/// When the library is unloaded.
void FreeKeys() {
    EndThread();
    while (keyCount > 0) {
        TlsFree(keys[--keyCount].slot);
    }
}

void NTAPI OnNotification(void*, DWORD reason, void*) {
    if (reason == DLL_THREAD_DETACH) {
        EndThread();
    }
}

// Among the callbacks that the system runs for every thread.
[[gnu::section(".CRT$XLE"), gnu::used]] const PIMAGE_TLS_CALLBACK threadCallback = OnNotification;

}  // namespace

extern "C" {

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*) {
    *mutex = PTHREAD_MUTEX_INITIALIZER;
    return 0;
}

int pthread_mutex_destroy(pthread_mutex_t*) {
    return 0;
}

int pthread_mutex_lock(pthread_mutex_t* mutex) {
    while (std::atomic_ref(*mutex).exchange(taken) == taken) {
        Sleep(0);
    }
    return 0;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    std::atomic_ref(*mutex).store(PTHREAD_MUTEX_INITIALIZER);
    return 0;
}

int pthread_once(pthread_once_t* once, void (*routine)()) {
    std::atomic_ref state(*once);
    pthread_once_t expected = PTHREAD_ONCE_INIT;
    if (state.compare_exchange_strong(expected, running)) {
        routine();
        state.store(done);
    }
    while (state.load() != done) {
        Sleep(0);
    }
    return 0;
}

// Waiters must expect spurious wake-ups, so waking at once is correct.
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t* mutex) {
    pthread_mutex_unlock(mutex);
    Sleep(1);
    return pthread_mutex_lock(mutex);
}

int pthread_cond_broadcast(pthread_cond_t*) {
    return 0;
}

int pthread_key_create(pthread_key_t* key, void (*destructor)(void*)) {
    static pthread_mutex_t creating = PTHREAD_MUTEX_INITIALIZER;
    int result = EAGAIN;
    pthread_mutex_lock(&creating);
    const DWORD slot = keyCount < maximalKeys ? TlsAlloc() : TLS_OUT_OF_INDEXES;
    if (slot != TLS_OUT_OF_INDEXES) {
        // Runs when the library is unloaded, after the destructors of all objects made later.
        if (keyCount == 0) {
            std::atexit(FreeKeys);
        }
        keys[keyCount] = {slot, destructor};
        *key = keyCount++;
        result = 0;
    }
    pthread_mutex_unlock(&creating);
    return result;
}

void* pthread_getspecific(pthread_key_t key) {
    return key < keyCount ? TlsGetValue(keys[key].slot) : nullptr;
}

int pthread_setspecific(pthread_key_t key, const void* value) {
    return key < keyCount && TlsSetValue(keys[key].slot, const_cast<void*>(value)) ? 0 : EINVAL;
}
}
