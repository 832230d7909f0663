#pragma once

#include <atomic>
#include <memory>
#include <string_view>

#include <corvane/dfx/ILogSink.h>

#include "system/Files.h"

namespace dfx {

/// Writes messages to a file of its own, each in one write.
class FileLogSink final : public ILogSink {
public:
    /// Makes the file, or empties it. Others can read it meanwhile.
    explicit FileLogSink(std::u16string_view path);

    void log(const LOGLEVEL& level, const char16_t* message) override;

private:
    std::unique_ptr<corvane::system::OutputFile> file_;
    // Once a message is lost, a later one would read as if nothing were missing.
    std::atomic<bool> good_;
};

}  // namespace dfx
