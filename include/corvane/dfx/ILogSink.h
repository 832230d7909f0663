#pragma once

#include <cstdint>

#include <corvane/base/Export.h>

namespace dfx {

/// Where a Logger's messages go. The order of the virtual operations is part of the interface to
/// modules.
class CORVANE_EXPORT ILogSink {
public:
    /// Single bits, so that a mask says which of them pass. Every number may be a level.
    enum LOGLEVEL : std::int32_t {
        LOGLEVEL_DEBUG = 1,
        LOGLEVEL_INFO = 2,
        LOGLEVEL_WARNING = 4,
        LOGLEVEL_ERROR = 8,
    };

    ILogSink() = default;
    ILogSink(const ILogSink&) = delete;
    ILogSink& operator=(const ILogSink&) = delete;
    virtual ~ILogSink();

    /// Takes one message, zero-terminated text that stays the caller's. A null message is dropped.
    virtual void log(const LOGLEVEL& level, const char16_t* message) = 0;
};

}  // namespace dfx
