#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <string_view>

#include <corvane/logging/CCorvaneLog.h>

#include "logging/LogPath.h"
#include "system/Files.h"
#include "system/Paths.h"
#include "system/Process.h"
#include "system/Unicode.h"

namespace corvane::logging {

std::u16string logPath(std::u16string_view partPath) {
    const std::u16string_view file = system::fileName(partPath);
    const std::size_t dot = file.rfind(u'.');
    std::u16string name = u"Corvane_";
    if (dot != file.npos) name += file.substr(0, dot);
    return system::join(system::parentFolder(partPath), name + u".corvanelog");
}

}  // namespace corvane::logging

namespace {

// What the line takes beside the message, of nearly all source files.
constexpr std::size_t kLongestPrefix = 100;

bool isAscii(char unit) {
    return static_cast<unsigned char>(unit) < 0x80;
}

// "[hour:minute:second] [file:line] "
void appendPrefix(std::string& line, std::string_view file, QorLong number) {
    const corvane::system::LocalTime now = corvane::system::localTime();
    const auto append = [&line](char before, QorLong value) {
        char digits[16];
        char* const end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
        line.append(1, before).append(std::begin(digits), end);
    };
    append('[', now.hour);
    append(':', now.minute);
    append(':', now.second);
    line += "] [";
    if (std::ranges::all_of(file, isAscii)) {
        line += file;
    } else {
        corvane::system::appendUtf8(line, corvane::system::widen(file));
    }
    append(':', number);
    line += "] ";
}

}  // namespace

std::FILE* CCorvaneLog::CorvaneLogFile = nullptr;

void CCorvaneLog::CreateLogFile(CStringW partPath) {
    if (CorvaneLogFile || partPath.IsEmpty()) return;
    CorvaneLogFile = corvane::system::openTextStream(corvane::logging::logPath(partPath));
}

void CCorvaneLog::OpenLogFile(CStringW logPath) {
    if (!logPath.IsEmpty()) CorvaneLogFile = corvane::system::openTextStream(logPath);
}

std::FILE* CCorvaneLog::GetLogFile() {
    return CorvaneLogFile;
}

void CCorvaneLog::PrintMessage(CStringW message, const char* sourceFile, QorLong line) {
    if (message.IsEmpty() || !CorvaneLogFile) return;
    const std::string_view source = sourceFile ? sourceFile : "";
    const std::size_t separator = corvane::system::lastSeparator(source);
    std::string text;
    text.reserve(kLongestPrefix + static_cast<std::size_t>(message.GetLength()));
    if (separator != 0) appendPrefix(text, source.substr(separator + 1), line);
    corvane::system::appendUtf8(text, message);
    text += '\n';
    corvane::system::writeText(CorvaneLogFile, text);
}

void CCorvaneLog::CloseLogFile() {
    if (!CorvaneLogFile) return;
    std::fclose(CorvaneLogFile);
    CorvaneLogFile = nullptr;
}
