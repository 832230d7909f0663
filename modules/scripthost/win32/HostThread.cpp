#include "HostThread.h"

#include <intrin.h>
#include <locale.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

namespace scripthost {

ScriptLocale::ScriptLocale() : formerMode_(_configthreadlocale(_ENABLE_PER_THREAD_LOCALE)) {
    // The text belongs to the next call.
    former_ = _strdup(setlocale(LC_ALL, nullptr));
    setlocale(LC_ALL, "C");
}

ScriptLocale::~ScriptLocale() {
    if (former_) setlocale(LC_ALL, static_cast<const char*>(former_));
    free(former_);
    _configthreadlocale(formerMode_);
}

std::uintptr_t stackPosition() noexcept {
    const char here = 0;
    return reinterpret_cast<std::uintptr_t>(&here);
}

std::uintptr_t stackEnd() noexcept {
    ULONG_PTR low = 0;
    ULONG_PTR high = 0;
    GetCurrentThreadStackLimits(&low, &high);
    return low;
}

std::thread startThread(void (*work)()) {
    return std::thread(work);
}

void callAfterFork(void (*)()) {}

}  // namespace scripthost
