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

/// What the page shows below a command: "..." stands for any lines, and at the end of a line for
/// the rest of it.
std::string patternOf(const std::string& block) {
    std::string pattern;
    for (std::string line : linesOf(block)) {
        if (line == "...") {
            pattern += "(.*\n)?";
            continue;
        }
        const bool isCut = line.ends_with("...");
        if (isCut) line.resize(line.size() - 3);
        for (const char byte : line)
            pattern += std::string("[]()*+?.|{}^$\\").find(byte) == std::string::npos
                           ? std::string(1, byte)
                           : std::string{'\\', byte};
        pattern += isCut ? "[^\n]*\n" : "\n";
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

/// Writes the files that a page shows below "<!-- file NAME -->".
void writeFiles(const std::string& page, const TemporaryFolder& folder) {
    constexpr std::string_view kMark = "<!-- file ";
    for (std::size_t at = page.find(kMark); at != page.npos; at = page.find(kMark, at + 1)) {
        const std::size_t name = at + kMark.size();
        const std::size_t begin = page.find('\n', page.find("\n```", name) + 1) + 1;
        folder.write(page.substr(name, page.find(' ', name) - name),
                     page.substr(begin, page.find("```", begin) - begin));
    }
}

TEST(Documentation, ShowsWhatTheProgramPrints) {
    const CommandLine corvane;
    const std::string examples = CORVANE_BUILD_DIR "/examples/";
    const EnvironmentScope data("CORVANE_DATA_DIR", examples + "data");
    const EnvironmentScope registry("CORVANE_REGISTRY_DIR", examples + "registry");
    const EnvironmentScope log("QOR_EXECUTION_LOG", nullptr);
    const EnvironmentScope home("HOME", corvane.folder.path());
    const EnvironmentScope path(
        "PATH", CORVANE_BUILD_DIR "/bin:" CORVANE_BUILD_DIR "/docs/examples/host:/usr/bin:/bin");
    const std::string root = CORVANE_TEST_DATA "/..";
    std::filesystem::create_directory_symlink(root + "/examples", corvane.folder.path("examples"));
    int blocks = 0;
    for (const char* name : {"command-line", "shipped-rules", "results", "waivers",
                             "running-many-parts", "script-rules", "host", "lint"}) {
        if (name == std::string("shipped-rules") &&
            !std::filesystem::exists(CORVANE_BUILD_DIR "/share/corvane/rules"))
            continue;
        const std::string page = TemporaryFolder::readFile(root + "/docs/" + name + ".md");
        writeFiles(page, corvane.folder);
        constexpr std::string_view kStart = "```\n$ ";
        for (std::size_t at = page.find(kStart); at != page.npos; at = page.find(kStart, at + 1)) {
            const std::size_t command = at + kStart.size();
            const std::size_t end = page.find('\n', command);
            const std::string line = page.substr(command, end - command);
            const std::string block = page.substr(end + 1, page.find("```", end) - end - 1);
            const ProcessResult result = runProcess(
                {"/bin/sh", "-c", "cd \"$0\" && exec 2>&1 && " + line, corvane.folder.path()});
            EXPECT_THAT(shownText(result.out), testing::MatchesRegex(patternOf(block))) << line;
            ++blocks;
        }
    }
    EXPECT_GE(blocks, 20);
}

TEST(Documentation, ShowsScriptsThatRun) {
    const CommandLine corvane;
    const std::string page =
        TemporaryFolder::readFile(CORVANE_TEST_DATA "/../docs/script-rules.md");
    const std::size_t end = page.find("## Parameters, the part");
    constexpr std::string_view kStart = "```lua\n";
    corvane.folder.write("rules.xml", ruleFile(scriptRule("Shown", "shown.lua")));
    int shown = 0;
    for (std::size_t at = page.find(kStart, page.find("## Findings")); at < end;
         at = page.find(kStart, at + 1)) {
        const std::size_t begin = at + kStart.size();
        corvane.folder.write("scripts/shown.lua",
                             "local thin, count = {{size = 1.2, at = {1, 2, 3}}}, 7\n" +
                                 page.substr(begin, page.find("```", begin) - begin));
        const ProcessResult result =
            corvane("run", {"@rules.xml", "--part", CommandLine::part("bracket")});
        EXPECT_EQ(result.status, 1) << result.out;
        EXPECT_NE(result.out.find("the wall is too thin"), std::string::npos) << result.out;
        ++shown;
    }
    EXPECT_EQ(shown, 2);
}

}  // namespace
