#pragma once

#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>

#include <corvane/platform/ComError.h>

namespace corvane::xml {

/// Why a load fails and where; see XMLFault.
struct Fault {
    std::int32_t line = 0;
    std::int32_t column = 0;
    std::string message;

    explicit operator bool() const { return !message.empty(); }
};

/// Ends an operation of the interface the way its header says.
[[noreturn]] inline void raiseError(HResult code) {
    throw _com_error(code);
}

/// What a pointer of an object points to; raises kErrorPointer when the object is empty.
template <typename Target>
Target& required(Target* pointer) {
    if (!pointer) raiseError(kErrorPointer);
    return *pointer;
}

/// Raises kErrorFail for an input that is not lawful.
inline void require(bool lawful) {
    if (!lawful) raiseError(kErrorFail);
}

/// Runs an operation of the interface, which raises kErrorOutOfMemory when memory runs out.
template <typename Operation>
auto guarded(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        raiseError(kErrorOutOfMemory);
    } catch (const std::length_error&) {
        raiseError(kErrorOutOfMemory);
    }
}

}  // namespace corvane::xml
