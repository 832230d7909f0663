#include "HostThread.h"

#include <locale.h>
#include <pthread.h>
#include <signal.h>

namespace scripthost {

ScriptLocale::ScriptLocale() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    former_ = uselocale(plain);
}

ScriptLocale::~ScriptLocale() {
    uselocale(static_cast<locale_t>(former_));
}

std::uintptr_t stackPosition() noexcept {
    // Not the address of a variable, which sanitizers keep elsewhere.
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

std::uintptr_t stackEnd() noexcept {
    // Asking takes long on the first thread, where it reads a file of the system.
    thread_local std::uintptr_t low = 0;
    thread_local std::uintptr_t high = 0;
    if (high == 0) {
        pthread_attr_t attributes;
        if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
        void* start = nullptr;
        std::size_t size = 0;
        if (pthread_attr_getstack(&attributes, &start, &size) == 0) {
            low = reinterpret_cast<std::uintptr_t>(start);
            high = low + size;
        }
        pthread_attr_destroy(&attributes);
    }
    const std::uintptr_t now = stackPosition();
    return now >= low && now < high ? low : 0;
}

std::thread startThread(void (*work)()) {
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former);
    try {
        std::thread thread(work);
        pthread_sigmask(SIG_SETMASK, &former, nullptr);
        return thread;
    } catch (...) {
        pthread_sigmask(SIG_SETMASK, &former, nullptr);
        throw;
    }
}

void callAfterFork(void (*work)()) {
    pthread_atfork(nullptr, nullptr, work);
}

}  // namespace scripthost
