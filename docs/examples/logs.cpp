#include <fstream>
#include <iterator>
#include <string>

#include <corvane/dfx/Logger.h>
#include <corvane/logging/CCorvaneLog.h>
#include <corvane/platform/Environment.h>

namespace {

std::string contentOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main() {
    // Who runs the process sets this; here it is the program itself.
    corvane::SetEnvironmentText(u"QOR_EXECUTION_LOG", u"execution.log");

    const dfx::Logger& log = dfx::Logger::instance();
    log.info(u"walls: 14 faces measured\n");
    log.print(dfx::ILogSink::LOGLEVEL_WARNING, u"walls: face 12 is degenerate\n");

    CCorvaneLog::CreateLogFile(u"./bracket.prt");
    CCorvaneLog::PrintMessage(u"face 12 is degenerate", __FILE__, __LINE__);
    CCorvaneLog::CloseLogFile();

    const std::string line = contentOf("Corvane_bracket.corvanelog");
    const bool right = contentOf("execution.log") ==
                           "INFO\t\t: walls: 14 faces measured\n"
                           "WARNING\t: walls: face 12 is degenerate\n" &&
                       line.find("] [logs.cpp:27] face 12 is degenerate\n") != line.npos;
    return right ? 0 : 1;
}
