#include <string_view>

#include <corvane/logging/CCorvaneLog.h>

#include "logging/LogPath.h"
#include "system/Files.h"
#include "system/Paths.h"
#include "system/Process.h"

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

// "[hour:minute:second] [file:line] "
CStringW prefix(std::u16string_view sourceFile, QorLong line) {
    const corvane::system::LocalTime now = corvane::system::localTime();
    CStringW text;
    text.Format(u"[%d:%d:%d] [%s:%d] ", now.hour, now.minute, now.second,
                corvane::system::fileName(sourceFile), line);
    return text;
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
    const CStringW source(sourceFile);
    CStringW text;
    if (corvane::system::lastSeparator(source) != 0) text = prefix(source, line);
    text += message;
    text += u'\n';
    corvane::system::writeText(CorvaneLogFile, text);
}

void CCorvaneLog::CloseLogFile() {
    if (!CorvaneLogFile) return;
    std::fclose(CorvaneLogFile);
    CorvaneLogFile = nullptr;
}
