#include "dfx/FileLogSink.h"

#include <new>
#include <string>

#include "system/Unicode.h"

namespace dfx {
namespace {

std::string_view prefixOf(ILogSink::LOGLEVEL level) {
    switch (level) {
        case ILogSink::LOGLEVEL_DEBUG:
            return "DEBUG\t\t: ";
        case ILogSink::LOGLEVEL_INFO:
            return "INFO\t\t: ";
        case ILogSink::LOGLEVEL_WARNING:
            return "WARNING\t: ";
        case ILogSink::LOGLEVEL_ERROR:
            return "ERROR\t\t: ";
        default:
            return "NONE\t\t: ";
    }
}

}  // namespace

ILogSink::~ILogSink() = default;

FileLogSink::FileLogSink(std::u16string_view path)
    : file_(corvane::system::OutputFile::open(path)), good_(file_ != nullptr) {}

void FileLogSink::log(const LOGLEVEL& level, const char16_t* message) {
    if (!good_ || !message) return;
    try {
        std::string bytes(prefixOf(level));
        corvane::system::appendUtf8(bytes, message);
        if (!file_->write(bytes)) good_ = false;
    } catch (const std::bad_alloc&) {
        good_ = false;  // whoever logs that memory is short must not fail on the log
    }
}

}  // namespace dfx
