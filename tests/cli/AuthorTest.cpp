// What authors of rules work with: normal form, comparison, completion, registration.

#include <filesystem>
#include <gmock/gmock.h>

#include "CommandLine.h"

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(Convert, PutsEachElementOnALineAndKeepsTexts) {
    const CommandLine corvane;
    corvane.folder.write("a.xml",
                         "\xEF\xBB\xBF<?xml version='1.0'?><!-- head --><R ><Rule\tFile='a.lua' "
                         "Name='n \"q\"'><Value> 1 <!-- in --></Value><Empty></Empty></Rule>\n\n\n"
                         "<Keep xml:space='preserve'> <a/>\n</Keep><C><![CDATA[<x>]]></C></R>");
    const std::string normal =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- head -->\n<R>\n"
        "  <Rule Name='n \"q\"' File='a.lua'>\n    <Value> 1 <!-- in --></Value>\n    <Empty/>\n"
        "  </Rule>\n\n  <Keep xml:space='preserve'> <a/>\n</Keep>\n  "
        "<C><![CDATA[<x>]]></C>\n</R>\n";
    EXPECT_EQ(corvane("convert", {"@a.xml"}).out, normal);
    EXPECT_EQ(corvane("convert", {"@a.xml", "--check"}).status, 1);
    fs::permissions(corvane.folder.path("a.xml"), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("a.xml", corvane.folder.path("link.xml"));
    EXPECT_EQ(corvane("convert", {"@link.xml", "--in-place"}).status, 0);
    EXPECT_EQ(corvane.folder.read("a.xml"), normal);
    EXPECT_TRUE(fs::is_symlink(corvane.folder.path("link.xml")));
    EXPECT_EQ(fs::status(corvane.folder.path("a.xml")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(corvane("convert", {"@a.xml", "--check"}).status, 0);
    EXPECT_EQ(corvane("convert", {"@a.xml", "/proc/none/a.xml"}).status, 2);
}

TEST(Convert, SavedFilesKeepTheirIndentation) {
    const CommandLine corvane;
    corvane.folder.write("in.xml", "<RuleFile>\n\t" + moduleRule("Minimum wall") + "\n</RuleFile>");
    EXPECT_EQ(corvane("save", {"@in.xml", "@out.xml"}).status, 0);
    EXPECT_THAT(corvane.folder.read("out.xml"),
                AllOf(HasSubstr("\n\t<Rule Name=\"Minimum wall\""), HasSubstr("\n\t\t<Parameter"),
                      HasSubstr("\n\t\t\t<Remarks/>\n")));
}

TEST(Diff, TellsRulesAndValuesThatDiffer) {
    const CommandLine corvane;
    const auto file = [](const char* name, const std::string& severity, const char* values) {
        return "<Rule Severity='" + severity + "' Name='" + name + "'><Parameter Type='7'>" +
               values + "</Parameter></Rule>";
    };
    const std::string first = file("A", "1", "<Value>1.50</Value><Value>2</Value>");
    const struct {
        std::string second;
        std::vector<std::string> told;
    } cases[] = {
        {"<!-- other form -->" + file("A", "1", "<Value>1.5</Value> <Value>2.0</Value>"), {}},
        {file("A", "2", "<Value>1.5</Value><Value>2</Value>"), {"  A: Severity = 1 -> 2\n"}},
        {file("A", "1", "<Value>2</Value>"), {"  A: parameter 7 Value = 1.5, 2 -> 2\n"}},
        {file("A", "1", ""), {"- A: parameter 7 Value = 1.5, 2\n"}},
        {file("B", "1", ""), {"- A\n", "+ B\n"}},
        {first + first, {"+ A (2)\n"}},
        {first + "<Include File='x.xml'/>", {"+ outside of rules\n"}},
    };
    corvane.folder.write("1.xml", ruleFile(first));
    for (const auto& [second, told] : cases) {
        SCOPED_TRACE(second);
        corvane.folder.write("2.xml", ruleFile(second));
        const ProcessResult result = corvane("diff", {"@1.xml", "@2.xml"});
        EXPECT_EQ(result.status, told.empty() ? 0 : 1);
        std::string all;
        for (const std::string& line : told)
            all += line;
        EXPECT_EQ(result.out, all);
    }
    corvane.folder.write("2.xml", "<Rules>");
    EXPECT_EQ(corvane("diff", {"@1.xml", "@2.xml"}).status, 2);
}

TEST(Words, AreCompletedByTheShellAndCorrected) {
    const CommandLine corvane;
    const auto complete = [&corvane](const std::string& line) {
        const std::string script =
            "source <('" CORVANE_BUILD_DIR "/bin/corvane' completion bash); COMP_WORDS=(corvane " +
            line + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _corvane; echo \"${COMPREPLY[*]}\"";
        return runProcess({"/bin/bash", "-c", "cd " + corvane.folder.path() + " && " + script}).out;
    };
    EXPECT_EQ(complete("conv"), "convert\n");
    EXPECT_EQ(complete("db dril"), "drills drill\n");
    EXPECT_EQ(complete("lint --format s"), "sarif\n");
    EXPECT_EQ(complete("run --stri"), "--strict\n");
    EXPECT_EQ(complete("show --registry reg"), "registry\n");
    EXPECT_THAT(complete("''"), AllOf(HasSubstr("doctor"), Not(HasSubstr("worker"))));
    if (fs::exists("/usr/bin/zsh")) {
        const ProcessResult zsh = runProcess(
            {"/usr/bin/zsh", "-fc",
             "_describe() { print -l $commands }; _arguments() { print -rl -- $@ }; "
             "_corvane_test() { words=(corvane db ''); CURRENT=3; source <('" CORVANE_BUILD_DIR
             "/bin/corvane' completion zsh) }; _corvane_test"});
        EXPECT_THAT(zsh.out, AllOf(HasSubstr("\nthread:"), HasSubstr("*--data[Folder above")));
        EXPECT_THAT(zsh.err, IsEmpty());
    }
    const std::pair<std::vector<std::string>, const char*> slips[] = {
        {{"rum"}, "Did you mean \"run\"?"},
        {{"run", "--fromat=json"}, "Did you mean \"--format\"?"},
        {{"db", "treads"}, "Did you mean \"threads\"?"},
    };
    for (const auto& [words, meant] : slips) {
        const ProcessResult result = corvane(words[0], {words.begin() + 1, words.end()});
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, HasSubstr(meant));
    }
    EXPECT_THAT(corvane("xyzzy", {}).err, Not(HasSubstr("mean")));
}

TEST(Register, AddsAnEngineToTheRegistryOnce) {
    const CommandLine corvane;
    const std::string engine = CORVANE_TEST_DATA "/../examples/meshengine/mesh.tlb";
    corvane.folder.write("registry/user.reg", "REGEDIT4\n\n[HKEY_CURRENT_USER\\Kept]");
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(
            corvane("register", {engine}).out,
            HasSubstr("GUID=\"{C48CD337-1FE4-4A73-B59A-BC6D746DA082}\" MajorVersion=\"1\""));
    const std::string registry = corvane.folder.read("registry/user.reg");
    EXPECT_THAT(registry, HasSubstr("[HKEY_CURRENT_USER\\Kept]\n\n[HKEY_CURRENT_USER\\Software"));
    EXPECT_EQ(registry.find("win64"), registry.rfind("win64"));
    EXPECT_THAT(corvane("doctor", {}).out, HasSubstr("meshengine/mesh.tlb"));
    EXPECT_EQ(corvane("register", {"/etc/passwd"}).status, 2);
    corvane.folder.write("registry/user.reg", std::string("\xFF\xFE[\0", 4));
    EXPECT_EQ(corvane("register", {engine}).status, 2);
}

TEST(Register, RemovesWhatItAddedWithOrWithoutTheLibraryAndNothingElse) {
    const CommandLine corvane;
    const std::string before = "REGEDIT4\n\n[HKEY_CURRENT_USER\\Kept]\n@=\"mine.tlb\"\n";
    corvane.folder.write("registry/user.reg", before);
    const std::string library = corvane.folder.path("own.tlb");
    for (const bool isThere : {true, false}) {
        std::filesystem::copy_file(CORVANE_TEST_DATA "/../examples/meshengine/mesh.tlb", library,
                                   std::filesystem::copy_options::overwrite_existing);
        EXPECT_EQ(corvane("register", {library}).status, 0);
        EXPECT_NE(corvane.folder.read("registry/user.reg"), before);
        if (!isThere) std::filesystem::remove(library);
        EXPECT_EQ(corvane("register", {library, "--remove"}).status, 0);
        EXPECT_EQ(corvane.folder.read("registry/user.reg"), before);
    }
    const ProcessResult again = corvane("register", {library, "--remove"});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, HasSubstr("own.tlb is not registered in "));
}

TEST(New, RefusesNamesThatHaveAMeaningAndFoldersThatHoldSomething) {
    const CommandLine corvane;
    corvane.folder.write("full/kept", "");
    for (const char* name : {"", "1a", "a-b", "../x", "end", "string", "test", "\xC3\xA9", "_a"})
        EXPECT_EQ(corvane("new", {"engine", name, "--folder", "@new"}).status, 2) << name;
    EXPECT_EQ(corvane("new", {"engine", "mine", "--folder", "@full"}).status, 2);
    EXPECT_EQ(corvane("new", {"engine", "mine", "--folder", "/proc/none"}).status, 2);
    EXPECT_FALSE(corvane.folder.exists("new"));
    EXPECT_EQ(corvane("new", {"engine", "mine", "--folder", "@new"}).status, 0);
    EXPECT_THAT(corvane("register", {"@new/mine.tlb"}).out,
                AllOf(HasSubstr("Engine=\"mine.tlb\""), Not(HasSubstr("{00010203"))));
    EXPECT_EQ(corvane.folder.read("new/scripts/UserDefinedFile.xml").find('@'), std::string::npos);
}

}  // namespace
