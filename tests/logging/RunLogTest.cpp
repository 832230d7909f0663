#include <ctime>
#include <cwchar>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <corvane/logging/CCorvaneLog.h>

#include "logging/LogPath.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"
#include "support/Text.h"
#include "system/Files.h"

namespace {

using namespace std::string_literals;

const std::string kMark = "\xEF\xBB\xBF";

struct RunLog : testing::Test {
    ~RunLog() override { CCorvaneLog::CloseLogFile(); }
    TemporaryFolder folder;
};

TEST_F(RunLog, LiesBesideThePartWhateverTheSeparators) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"/parts/bracket.prt", u"/parts/Corvane_bracket.corvanelog"},
        {u"C:\\parts\\bracket.prt", u"C:\\parts/Corvane_bracket.corvanelog"},
        {u"/parts/a.b.prt", u"/parts/Corvane_a.b.corvanelog"},
        {u"/parts.d/bracket", u"/parts.d/Corvane_.corvanelog"},
        {u"bracket.prt", u"/Corvane_bracket.corvanelog"},
        {u"/parts/", u"/parts/Corvane_.corvanelog"},
    };
    for (const auto& [part, log] : cases)
        EXPECT_EQ(CStringW(corvane::logging::logPath(part)), log);
    CCorvaneLog::CreateLogFile(folder.wide() + u"\\bracket.prt");
    EXPECT_EQ(folder.read("Corvane_bracket.corvanelog"), kMark);
}

TEST_F(RunLog, OutlivesWideTextThatAModuleWritesToTheStream) {
    CCorvaneLog::OpenLogFile(folder.wide("wide.log"));
    EXPECT_LT(std::fputws(L"wide", CCorvaneLog::GetLogFile()), 0);
    CCorvaneLog::PrintMessage(u"after", "/rule.cpp", 1);
    EXPECT_EQ(folder.read("wide.log"), kMark + "after\n");
}

TEST_F(RunLog, ALineHasTimeSourceAndThePlainMessageAndIsThereAtOnce) {
    // A zone in which the day has just begun.
    char zone[16];
    const std::time_t now = std::time(nullptr);
    std::strftime(zone, sizeof zone, "XXX%H:%M:%S", std::gmtime(&now));
    const EnvironmentScope scope("TZ", zone);
    tzset();
    CCorvaneLog::CreateLogFile(folder.wide("part.prt"));
    CCorvaneLog::PrintMessage(u"100 %s \u00E4", "C:\\src\\rule.cpp", 42);
    CCorvaneLog::PrintMessage(u"", "rule.cpp", 43);
    CCorvaneLog::PrintMessage({u"\0\x1b[2J\xDC00\r", 7}, "/src/w\xC3\xA4nde.cpp", -1);
    CCorvaneLog::PrintMessage(u"bare", "/rule.cpp", 1);
    CCorvaneLog::PrintMessage(u"none", nullptr, 2);
    std::string text = folder.read("Corvane_part.corvanelog");
    // The seconds that the test itself takes.
    for (std::size_t at = 0; (at = text.find("[0:0:", at)) != text.npos; ++at)
        text.replace(at + 5, text.find(']', at) - at - 5, "s");
    EXPECT_EQ(text, kMark + "[0:0:s] [rule.cpp:42] 100 %s \xC3\xA4\n" +
                        "[0:0:s] [w\xC3\xA4nde.cpp:-1] \0\x1b[2J\xEF\xBF\xBD\r\nbare\n"s +
                        "[0:0:s] [:2] none\n");
}

TEST_F(RunLog, StaysThatOfTheFirstPartUntilItIsClosed) {
    CCorvaneLog::PrintMessage(u"too early", "/a", 1);
    CCorvaneLog::CreateLogFile(u"");
    CCorvaneLog::OpenLogFile(u"");
    EXPECT_EQ(CCorvaneLog::GetLogFile(), nullptr);
    CCorvaneLog::CreateLogFile(folder.wide("a.prt"));
    CCorvaneLog::CreateLogFile(folder.wide("b.prt"));
    CCorvaneLog::PrintMessage(u"text", "/a", 1);
    EXPECT_NE(fcntl(fileno(CCorvaneLog::GetLogFile()), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_EQ(folder.read("Corvane_a.corvanelog"), kMark + "text\n");
    EXPECT_FALSE(folder.exists("Corvane_b.corvanelog"));
    CCorvaneLog::CloseLogFile();
    EXPECT_EQ(CCorvaneLog::GetLogFile(), nullptr);
    CCorvaneLog::OpenLogFile(folder.wide("Corvane_a.corvanelog"));
    EXPECT_EQ(folder.read("Corvane_a.corvanelog"), kMark);
}

TEST_F(RunLog, OpensNothingButAFile) {
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    for (const char* name : {"none/log", "pipe", ""}) {
        CCorvaneLog::OpenLogFile(folder.wide(name));
        EXPECT_EQ(CCorvaneLog::GetLogFile(), nullptr) << name;
        CCorvaneLog::PrintMessage(u"text", "/a", 1);
    }
    std::filesystem::create_symlink(folder.path("target"), folder.path("link"));
    CCorvaneLog::OpenLogFile(folder.wide("link"));
    EXPECT_EQ(folder.read("target"), kMark);
}

TEST_F(RunLog, TwoProcessesOnOneFileLeaveNoHole) {
    std::FILE* first = corvane::system::openTextStream(folder.wide("log"));
    corvane::system::writeText(first, "replaced\n");
    std::FILE* second = corvane::system::openTextStream(folder.wide("log"));
    corvane::system::writeText(first, "one\n");
    corvane::system::writeText(second, "two\n");
    EXPECT_EQ(folder.read("log"), kMark + "one\ntwo\n");
    std::fclose(first);
    std::fclose(second);
}

}  // namespace
