#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "CommandLine.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST(Output, ATextFromAFileCannotSteerTheTerminal) {
    const CommandLine corvane;
    corvane.folder.write("scripts/a.lua",
                         "error('\\27[2J\\8\\u{9b}x\\u{202e}\\u{2066}\\u{2069}\\tb')");
    corvane.folder.write("rules.xml",
                         ruleFile(scriptRule("a&#x9b;b&#x202e;&#10;c", "a.lua", kMeshEngine)));
    for (const char* command : {"run", "show"}) {
        const ProcessResult result = corvane(command, {"@rules.xml"});
        for (const char* harmful : {"\x1b", "\b", "\u009b", "\u202e", "\u2066", "\u2069"})
            EXPECT_THAT(result.out, Not(HasSubstr(harmful)));
        EXPECT_THAT(result.out, HasSubstr("a\\u009bb\\u202e c"));
    }
    EXPECT_THAT(corvane("run", {"@rules.xml"}).out,
                HasSubstr("\\u001b[2J\\u0008\\u009bx\\u202e\\u2066\\u2069 b"));
}

TEST(Output, ColumnsLineUpBehindWideAndLongTexts) {
    const CommandLine corvane;
    const std::string lengthy(60, 'n');
    corvane.folder.write("rules.xml", ruleFile(scriptRule("\u58c1\u306e\u539a\u3055", "") +
                                               scriptRule("\u0439e\u0301\U0001F600", "") +
                                               scriptRule("a", "") + scriptRule(lengthy, "")));
    const std::string out = corvane("run", {"@rules.xml"}).out;
    const std::string rest = "General   major     error   the rule names no script file,";
    for (const std::string& line :
         {"\u58c1\u306e\u539a\u3055" + std::string(34, ' ') + rest,
          "\u0439e\u0301\U0001F600" + std::string(38, ' ') + rest,
          "a" + std::string(41, ' ') + rest, lengthy.substr(0, 39) + "\u2026  " + rest})
        EXPECT_THAT(out, HasSubstr("\n" + line));
}

/// What the program writes to a terminal.
std::string shownOnTerminal(const CommandLine& corvane, std::vector<std::string> arguments) {
    const int screen = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(screen);
    unlockpt(screen);
    const winsize small{24, 20, 0, 0};
    ioctl(screen, TIOCSWINSZ, &small);
    const std::string name = ptsname(screen);
    const int keepOpen = open(name.c_str(), O_RDWR | O_NOCTTY);
    corvane("run", std::move(arguments), name);
    char buffer[4096];
    const ssize_t size = read(screen, buffer, sizeof buffer);
    close(keepOpen);
    close(screen);
    return {buffer, static_cast<std::size_t>(size > 0 ? size : 0)};
}

TEST(Output, EqualFindingsStandOnceWithTheirNumber) {
    const CommandLine corvane;
    corvane.folder.write("rules.xml", ruleFile(scriptRule("Holes", "holes.lua")));
    corvane.folder.write("scripts/holes.lua",
                         "for x = 1, 3 do\n"
                         "    result.finding {message = 'too deep', at = {x, 0, 0}}\n"
                         "    if x == 2 then result.finding('too near') end\n"
                         "end\n");
    const ProcessResult result =
        corvane("run", {"@rules.xml", "--part", CommandLine::part("bracket")});
    EXPECT_NE(result.out.find("failed  too deep (3 times)\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find(" too near\n"), std::string::npos) << result.out;
}

TEST(Output, ColourAndProgressAppearOnATerminalAlone) {
    const CommandLine corvane;
    corvane.folder.write("rules.xml", ruleFile(scriptRule(std::string(30, 'r'), "")));
    const std::string red = "\x1b[31merror\x1b[0m";
    const std::string step = "\x1b[K1 of 1: " + std::string(10, 'r') + "\u2026\r";
    const ProcessResult piped = corvane("run", {"@rules.xml"});
    EXPECT_THAT(piped.out + piped.err, AllOf(Not(HasSubstr("\x1b")), Not(HasSubstr("1 of 1"))));
    EXPECT_THAT(shownOnTerminal(corvane, {"@rules.xml"}), AllOf(HasSubstr(red), HasSubstr(step)));
    EXPECT_THAT(shownOnTerminal(corvane, {"@rules.xml", "--batch"}),
                AllOf(HasSubstr(red), Not(HasSubstr("1 of 1"))));
    const EnvironmentScope plain("NO_COLOR", "1");
    EXPECT_THAT(shownOnTerminal(corvane, {"@rules.xml"}), Not(HasSubstr("\x1b[31m")));
}

TEST(Output, ResultsThatCannotBeWrittenGiveStatusTwo) {
    const CommandLine corvane;
    corvane.folder.write("scripts/a.lua", "return true");
    corvane.folder.write("rules.xml", ruleFile(scriptRule("r", "a.lua")));
    EXPECT_EQ(corvane("run", {"@rules.xml"}).status, 0);
    EXPECT_EQ(corvane("run", {"@rules.xml"}, "/dev/full").status, 2);
}

}  // namespace
