#pragma once

#include <cstdint>
#include <thread>

// What the operating system says of the thread that a script runs on, and of threads.

namespace scripthost {

/// Puts the calling thread into the plain locale: Lua prints, reads and compares by the locale,
/// and a script must not answer differently because of the host's.
class ScriptLocale {
public:
    ScriptLocale();
    ~ScriptLocale();
    ScriptLocale(const ScriptLocale&) = delete;
    ScriptLocale& operator=(const ScriptLocale&) = delete;

private:
    // As the system has them; only some have a mode.
    [[maybe_unused]] int formerMode_ = 0;
    void* former_ = nullptr;
};

/// Where the stack is now; it grows towards 0.
std::uintptr_t stackPosition() noexcept;

/// The lowest address of the calling thread's stack; 0 when it is not known, as on a stack that the
/// host made itself.
std::uintptr_t stackEnd() noexcept;

/// Starts a thread that takes none of the host's signals. Throws std::system_error.
std::thread startThread(void (*work)());

/// Has `work` called in a child process, which has none of the threads of its parent.
void callAfterFork(void (*work)());

}  // namespace scripthost
