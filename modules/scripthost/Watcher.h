#pragma once

namespace scripthost {

class Limits;

/// Has the limits of a script looked at every millisecond for as long as it lives.
///
/// An interpreter that counts instructions takes more than twice the time for each, so scripts run
/// without counting. One thread for the whole process interrupts all that run: Limits::interrupt.
/// It starts with the first script and ends when the module is unloaded.
class Watch {
public:
    /// Throws std::bad_alloc or std::system_error when nothing can watch.
    explicit Watch(Limits& limits);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();

private:
    Limits& limits_;
};

}  // namespace scripthost
