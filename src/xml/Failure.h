#pragma once

#include <corvane/platform/ComError.h>

namespace corvane::xml {

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

}  // namespace corvane::xml
