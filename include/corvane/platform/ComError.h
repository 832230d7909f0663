#pragma once

#include <corvane/platform/Unknown.h>

/// The exception that carries the failure code of a refused operation out of the XML layer.
class CORVANE_EXPORT _com_error {
public:
    /// With a failure code.
    explicit _com_error(HResult code) noexcept : code_(code) {}
    virtual ~_com_error();

    /// The failure code, negative.
    HResult Error() const noexcept { return code_; }

private:
    HResult code_;
};
