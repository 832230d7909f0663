#include <filesystem>
#include <gmock/gmock.h>
#include <sstream>

#include "CommandLine.h"

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

/// What the page shows below a command: "..." stands for any lines.
std::string patternOf(const std::string& block) {
    std::string pattern;
    for (const std::string& line : linesOf(block)) {
        if (line == "...") {
            pattern += "(.*\n)?";
            continue;
        }
        for (const char byte : line)
            pattern += std::string("[]()*+?.|{}^$\\").find(byte) == std::string::npos
                           ? std::string(1, byte)
                           : std::string{'\\', byte};
        pattern += '\n';
    }
    return pattern;
}

std::string shownText(const std::string& output) {
    std::string text;
    for (std::string line : linesOf(output)) {
        for (std::size_t at; (at = line.find(CORVANE_BUILD_DIR)) != line.npos;)
            line.replace(at, std::string(CORVANE_BUILD_DIR).size(), "/opt/corvane");
        text += line + '\n';
    }
    return text;
}

TEST(Documentation, ShowsWhatTheProgramPrints) {
    const CommandLine corvane;
    const std::string examples = CORVANE_BUILD_DIR "/examples/";
    const EnvironmentScope data("CORVANE_DATA_DIR", examples + "data");
    const EnvironmentScope registry("CORVANE_REGISTRY_DIR", examples + "registry");
    const EnvironmentScope log("QOR_EXECUTION_LOG", nullptr);
    const std::string root = CORVANE_TEST_DATA "/..";
    std::filesystem::create_directory_symlink(root + "/examples", corvane.folder.path("examples"));
    const std::string page = TemporaryFolder::readFile(root + "/docs/command-line.md");
    int blocks = 0;
    constexpr std::string_view kStart = "```\n$ corvane ";
    for (std::size_t at = page.find(kStart); at != page.npos; at = page.find(kStart, at + 1)) {
        const std::size_t command = at + kStart.size();
        const std::size_t end = page.find('\n', command);
        const std::string line = page.substr(command, end - command);
        const std::string block = page.substr(end + 1, page.find("```", end) - end - 1);
        const ProcessResult result =
            runProcess({"/bin/sh", "-c", "cd \"$1\" && exec \"$0\" " + line,
                        CORVANE_BUILD_DIR "/bin/corvane", corvane.folder.path()});
        EXPECT_THAT(shownText(result.out), testing::MatchesRegex(patternOf(block))) << line;
        EXPECT_EQ(result.err, "");
        ++blocks;
    }
    EXPECT_GE(blocks, 8);
}

}  // namespace
