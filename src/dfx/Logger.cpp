#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <corvane/dfx/ILogSink.h>
#include <corvane/dfx/Logger.h>

#include "system/Files.h"
#include "system/Process.h"
#include "system/Unicode.h"

namespace dfx {

ILogSink::~ILogSink() = default;

namespace {

// Writes messages to a file of its own, each in one write.
class FileLogSink final : public ILogSink {
public:
    // Makes the file, or empties it. Others can read it meanwhile.
    explicit FileLogSink(std::u16string_view path);

    void log(const LOGLEVEL& level, const char16_t* message) override;

private:
    std::unique_ptr<corvane::system::OutputFile> file_;
    // Once a message is lost, a later one would read as if nothing were missing.
    std::atomic<bool> good_;
};

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

FileLogSink::FileLogSink(std::u16string_view path)
    : file_(corvane::system::OutputFile::open(path)), good_(file_ != nullptr) {}

void FileLogSink::log(const LOGLEVEL& level, const char16_t* message) {
    if (!good_ || !message) return;
    try {
        std::string bytes(prefixOf(level));
        corvane::system::appendUtf8(bytes, message);
        if (!file_->write(bytes)) good_ = false;
    } catch (const std::bad_alloc&) {
        good_ = false;  // code that logs that memory is short must not fail on the log
    }
}

constexpr std::size_t kLongestSetting = 259;
constexpr int kAllLevels = ILogSink::LOGLEVEL_DEBUG | ILogSink::LOGLEVEL_INFO |
                           ILogSink::LOGLEVEL_WARNING | ILogSink::LOGLEVEL_ERROR;

// Empty for a value that is too long, as for none: a cut path would name another file.
std::u16string setting(std::u16string_view name) {
    std::u16string value = corvane::system::environmentVariable(name).value_or(std::u16string());
    if (value.size() > kLongestSetting) value.clear();
    return value;
}

// The number at the start of the text, after white space. The texts of the exceptions are those
// that callers know.
int leadingNumber(std::u16string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
    std::string number;
    for (const char16_t unit : text) {
        const bool isSign = number.empty() && (unit == u'+' || unit == u'-');
        if (!isSign && (unit < u'0' || unit > u'9')) break;
        number += static_cast<char>(unit);
    }
    int value = 0;
    const char* first = number.data() + (number.starts_with('+') ? 1 : 0);
    const auto [end, error] = std::from_chars(first, number.data() + number.size(), value);
    if (error == std::errc::invalid_argument) throw std::invalid_argument("invalid stoi argument");
    if (error == std::errc::result_out_of_range)
        throw std::out_of_range("stoi argument out of range");
    return value;
}

}  // namespace

Logger::Logger(std::shared_ptr<ILogSink> sink, int level) : sink_(std::move(sink)), mask_(level) {
    const std::u16string mask = setting(u"QOR_EXECUTION_LEVEL");
    if (!mask.empty()) mask_ = leadingNumber(mask);
}

Logger& Logger::instance() {
    // Never destroyed, because the destructors of other statics may log: it only gives up its sink.
    alignas(Logger) static std::byte place[sizeof(Logger)];
    static Logger& logger = *new (place) Logger(createLoggingSink(), kAllLevels);
    struct AtExit {
        ~AtExit() { logger.sink_.reset(); }
    };
    static const AtExit atExit;
    return logger;
}

Logger::Logger(const Logger& source) = default;
Logger& Logger::operator=(const Logger& source) = default;
Logger::~Logger() = default;

void Logger::info(const char16_t* message) const {
    print(ILogSink::LOGLEVEL_INFO, message);
}

void Logger::error(const char16_t* message) const {
    print(ILogSink::LOGLEVEL_ERROR, message);
}

void Logger::print(const ILogSink::LOGLEVEL& level, const char16_t* message) const {
    if (sink_ && (mask_ & level) != 0) sink_->log(level, message);
}

void Logger::setLevel(const int& level) {
    mask_ = level;
}

std::shared_ptr<ILogSink> createLoggingSink() {
    const std::u16string path = setting(u"QOR_EXECUTION_LOG");
    if (path.empty()) return nullptr;
    return std::make_shared<FileLogSink>(path);
}

}  // namespace dfx
