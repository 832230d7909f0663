#pragma once

#include <exception>
#include <new>
#include <utility>

#include <corvane/database/Status.h>

namespace qor_db::driver {

inline Status failure(ErrorCode code, CStringW message, int nativeCode = 0) {
    return {code, std::move(message), nativeCode};
}

/// The failure with the text of an exception, or without a text when memory is short for that too.
inline Status failureOf(ErrorCode code, const char* what) noexcept {
    Status status;
    status.code = code;
    try {
        status.message = CStringW::FromUtf8(what);
    } catch (...) {
        return status;
    }
    return status;
}

/// Runs an operation that gives a Status or an Outcome. What it raises becomes an error, whatever
/// its type, as nothing may be thrown from one module into another. Only the unwinding of a thread
/// that is cancelled goes on, which nothing may stop; it is
/// no exception of C++, so there is no current one.
template <typename Operation>
auto guarded(const Operation& operation) -> decltype(operation()) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return failureOf(ErrorCode::OutOfMemory, "There is not enough memory.");
    } catch (const std::exception& exception) {
        return failureOf(ErrorCode::Failed, exception.what());
    } catch (...) {
        if (!std::current_exception()) throw;
        return failureOf(ErrorCode::Failed, "An exception of an unknown type was raised.");
    }
}

}  // namespace qor_db::driver
