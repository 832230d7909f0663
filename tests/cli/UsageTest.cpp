#include <gmock/gmock.h>

#include "CommandLine.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

TEST(Usage, HelpAndVersionAreResults) {
    const CommandLine corvane;
    for (const char* option : {"--help", "--version"}) {
        const ProcessResult result = corvane(option, {});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, HasSubstr("corvane"));
        EXPECT_THAT(result.err, IsEmpty());
    }
    EXPECT_THAT(corvane("run", {"--help"}).out, HasSubstr("--modules"));
}

TEST(Usage, WhatCannotBePrintedIsTold) {
    for (const char* arguments : {"--version", "--help", "run --help", "units --list"}) {
        const ProcessResult result =
            runProcess({"/bin/sh", "-c", std::string(R"("$0" )") + arguments + " >/dev/full",
                        CORVANE_BUILD_DIR "/bin/corvane"});
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.err, "corvane: the results cannot be written\n") << arguments;
    }
}

TEST(Usage, WhatCannotBeUsedIsToldWithItsPlaceAndGivesStatusTwo) {
    const CommandLine corvane;
    corvane.folder.write("good.xml", ruleFile(moduleRule("Maximum envelope")));
    corvane.folder.write("folder/inside", "");
    corvane.folder.write("empty.xml", "");
    corvane.folder.write("o\xE9.stl", "");
    corvane.folder.write("cut.xml", "<RuleFile>\n<Rule Name='a'/>\n<Rule");
    corvane.folder.write("crossed.xml", "<RuleFile>\n\n  <a></b>\n</RuleFile>");
    corvane.folder.write("bytes.xml", "<RuleFile>\n<Rule Name='\xFF'/>\n</RuleFile>");
    corvane.folder.write("entity.xml", "<!DOCTYPE a [<!ENTITY e SYSTEM 'good.xml'>]>\n<a>&e;</a>");
    corvane.folder.write("other.xml", "<Rules><Regel/></Rules>");
    std::string deep;
    for (int i = 0; i < 100000; ++i)
        deep += "<a>";
    corvane.folder.write("deep.xml", deep);
    const std::string toGood = "json=" + corvane.folder.path("folder/../good.xml");
    corvane.folder.write("none.toml", "");
    const std::string toWaivers = "json=" + corvane.folder.path("none.toml");
    const std::string toNew = "json=" + corvane.folder.path("new.json");
    const struct {
        const char* command;
        std::vector<std::string> arguments;
        std::string told;
    } cases[] = {
        {"run", {}, "RULEFILE is required"},
        {"walk", {"@good.xml"}, "--help"},
        {"run", {"@good.xml", "--fast"}, "--fast"},
        {"show", {"@good.xml", "@good.xml"}, "@good.xml"},
        {"save", {"@good.xml"}, "OUT is required"},
        {"run", {"@good.xml", "--modules", "@none"}, "Directory does not exist: "},
        {"show", {"@good.xml", "--registry", "@none"}, "Directory does not exist: "},
        {"db", {"thread", "M6", "--data", "@none"}, "Directory does not exist: "},
        {"run", {"@missing.xml"}, "missing.xml: "},
        {"run", {"@good.xml", "--timeout", "nan"}, "--timeout: Could not convert: nan"},
        {"run", {"@good.xml", "--waivers", "@folder"}, "folder is no file"},
        {"run", {"@good.xml", "--output", toGood}, "good.xml: the results would replace what"},
        {"run",
         {"@good.xml", "--waivers", "@none.toml", "--output", toWaivers},
         "none.toml: the results would replace what"},
        {"run", {"@good.xml", "--output", toNew, "--output", toNew}, "two outputs go there"},
        {"merge", {"@good.xml"}, "good.xml: parse error at line 1"},
        {"show", {"@missing.xml"}, "missing.xml: "},
        {"save", {"@missing.xml", "@out.xml"}, "missing.xml: "},
        {"run", {"@folder"}, "folder: "},
        {"run", {""}, ": "},
        {"run", {"@empty.xml"}, "empty.xml"},
        {"run", {"@cut.xml"}, "cut.xml:3:"},
        {"run", {"@crossed.xml"}, "crossed.xml:3:"},
        {"run", {"@bytes.xml"}, "bytes.xml:2:"},
        {"run", {"@other.xml"}, "has no child <Rule>"},
        {"run", {"@entity.xml"}, "entity.xml"},
        {"run", {"@deep.xml"}, "deep.xml"},
        {"run", {"@good.xml", "--part", "@missing.stl"}, "missing.stl: no such part"},
        {"run",
         {"@good.xml", "--part", "@folder"},
         "folder: this folder holds no file of that kind"},
        {"save", {"@good.xml", "@none/out.xml"}, "out.xml: cannot be written"},
        {"save", {"@good.xml", "@folder"}, "folder: cannot be written"},
        {"save", {"@good.xml", "@o\xE9.xml"}, "\uFFFD.xml is not UTF-8; the names"},
        {"show", {"@o\xE9.xml"}, "is not UTF-8"},
        {"run", {"@o\xE9.xml"}, "is not UTF-8"},
        {"run", {"@good.xml", "--part", "@o\xE9.stl"}, "is not UTF-8"},
        {"save", {"@good.xml", "/proc/out.xml"}, "/proc/out.xml: cannot be written"},
    };
    for (const auto& [command, arguments, told] : cases) {
        SCOPED_TRACE(told);
        const ProcessResult result = corvane(command, arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.out, IsEmpty());
        const bool inFolder = told.starts_with('@');
        EXPECT_THAT(result.err, HasSubstr(inFolder ? corvane.folder.path(told.substr(1)) : told));
    }
    EXPECT_FALSE(corvane.folder.exists("new.json"));
    EXPECT_EQ(corvane("lint", {""}).status, 1);
}

TEST(Usage, ScriptsThatCannotBeHandedOverAreRefused) {
    const CommandLine corvane;
    corvane.folder.write("good.xml", ruleFile(scriptRule("a", "a.lua")));
    corvane.folder.write("mine/a.lua", "return true");
    const ProcessResult result = runProcess(
        {"/usr/bin/env", "TMPDIR=" + corvane.folder.path("none"), CORVANE_BUILD_DIR "/bin/corvane",
         "run", corvane.folder.path("good.xml"), "--scripts", corvane.folder.path("mine")});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("let TMPDIR name a folder"));
}

TEST(Usage, MemoryThatRunsOutInALoadIsToldAndGivesStatusTwo) {
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
    GTEST_SKIP() << "the sanitizer's own operator new comes before a preloaded one";
#endif
#endif
    const CommandLine corvane;
    const std::string name(200'000, 'a');
    corvane.folder.write("big.xml", ruleFile("<Rule Name='" + name + "'/>"));
    // The loader parts the names at blanks, which the build folder may have.
    std::filesystem::create_symlink(SHORT_MEMORY, corvane.folder.path("memory.so"));
    const EnvironmentScope module("LD_PRELOAD", corvane.folder.path("memory.so"));
    const std::vector<std::string> commands[] = {
        {"show", "@big.xml"}, {"run", "@big.xml"}, {"save", "@big.xml", "@out.xml"}};
    for (const std::vector<std::string>& command : commands) {
        const ProcessResult result = corvane(command[0], {command.begin() + 1, command.end()});
        EXPECT_EQ(result.status, 2) << command[0];
        EXPECT_EQ(result.err, "corvane: the memory ran out\n") << command[0];
        EXPECT_EQ(result.out, "") << command[0];
    }
    EXPECT_FALSE(corvane.folder.exists("out.xml"));
    EXPECT_THAT(corvane("lint", {"@big.xml"}).out, HasSubstr("process: the memory ran out"));
}

TEST(Usage, AnUnreadableFileDoesNotKeepTheOthersFromRunning) {
    const CommandLine corvane;
    corvane.folder.write("good.xml", ruleFile(moduleRule("Minimum wall")));
    const ProcessResult result = corvane(
        "run", {"@missing.xml", "@good.xml", "--part", CommandLine::part("housing"), "--batch"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("missing.xml"));
    EXPECT_THAT(result.out, HasSubstr("1 rule: 1 passed"));
}

}  // namespace
