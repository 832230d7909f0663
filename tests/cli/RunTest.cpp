#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <regex>
#include <signal.h>
#include <unistd.h>

#include "CommandLine.h"

namespace {

using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The program with a rule module whose rules do what they like, and parts that are lists of
/// findings: x, y, z and a word.
class Runs : public testing::Test {
protected:
    Runs() {
        folder.write("parts/a.stl", "1 2 3 thin\n10 20 30 deep\n");
        folder.write("parts/b.stl", "");
        folder.write("parts/sub/c.stl", "5 5 5 sharp\n");
        folder.write("find.xml", ruleFile(risky("Find")));
    }

    static std::string risky(const std::string& name) { return moduleRule(name, "", "risky.dll"); }

    /// Runs `corvane run` in the folder.
    ProcessResult run(std::vector<std::string> arguments, const std::string& before = {}) const {
        std::string command = "cd \"$1\" && shift && exec " + before + " \"$0\" \"$@\"";
        std::vector<std::string> all{"/bin/sh", "-c", command, CORVANE_BUILD_DIR "/bin/corvane",
                                     folder.path()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return runProcess(all);
    }
    ProcessResult rules(std::vector<std::string> arguments, const std::string& before = {}) const {
        arguments.insert(arguments.begin(), {"run", "--modules", CORVANE_BUILD_DIR "/tests/risky"});
        return run(std::move(arguments), before);
    }
    json results(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--format", "json"});
        return json::parse(rules(std::move(arguments)).out);
    }
    /// Runs `corvane run` and sends it a signal soon after a rule of the module has begun to hang.
    ProcessResult rulesUntilTheyHang(std::vector<std::string> arguments,
                                     const std::string& signal) const {
        return rules(
            std::move(arguments),
            "sh -c 'env --default-signal \"$@\" & program=$!\n"
            "until grep -q hang log 2>/dev/null || ! kill -0 $program; do sleep 0.05; done\n"
            "sleep 0.3; kill -" +
                signal + " $program; wait $program' sh");
    }
    /// How often a rule of the module has run.
    auto count(const std::string& what) const {
        std::istringstream log(folder.read("log"));
        return std::count_if(std::istream_iterator<std::string>(log), {},
                             [&](const std::string& word) { return word == what; });
    }

    static std::vector<std::string> verdicts(const json& run, std::size_t part = 0) {
        std::vector<std::string> verdicts;
        for (const json& rule : run.at("parts").at(part).at("rules"))
            verdicts.push_back(rule.at("verdict"));
        return verdicts;
    }

    CommandLine corvane;
    const TemporaryFolder& folder = corvane.folder;
    EnvironmentScope logName_{"CORVANE_TEST_LOG", corvane.folder.path("log")};
};

/// Results without what may differ from run to run.
std::string timeless(const std::string& text) {
    return std::regex_replace(text, std::regex(R"re("(seconds|started)":[^,}]*)re"), "");
}

TEST_F(Runs, ARuleThatEndsOrBlocksItsProcessCostsItsRow) {
    std::string all;
    for (const char* name :
         {"Find", "Crash", "Leave", "Hang", "Eat", "Chat", "Fail", "Kill", "Find"})
        all += risky(name);
    folder.write("rules.xml", ruleFile(all));
    const std::vector<std::string> arguments{"rules.xml",   "--part",   "parts/a.stl", "--part",
                                             "parts/b.stl", "-j",       "2",           "--timeout",
                                             "8",           "--memory", "300"};
    const json run = results(arguments);
    EXPECT_THAT(verdicts(run, 0), ElementsAre("failed", "error", "error", "error", "error",
                                              "passed", "error", "error", "failed"));
    EXPECT_THAT(verdicts(run, 1), ElementsAre("passed", "error", "error", "error", "error",
                                              "passed", "error", "error", "passed"));
    const json& rules = run["parts"][1]["rules"];
    EXPECT_THAT(rules[1]["reasons"][0], HasSubstr("ended its process (signal 6"));
    EXPECT_EQ(rules[2]["reasons"][0], "the rule ended its process (exit status 0)");
    EXPECT_EQ(rules[3]["reasons"][0], "the rule took longer than 8 s");
    EXPECT_EQ(rules[4]["reasons"][0], "the rule took more than 300 MB of memory");
    EXPECT_EQ(rules[6]["reasons"][0], "the rule ended with result -3");
    EXPECT_THAT(rules[7]["reasons"][0],
                HasSubstr("signal 9, Killed, as when the machine's memory"));
}

TEST_F(Runs, WorkersAndSharesGiveTheSameResultsByteForByte) {
    folder.write("rules.xml", ruleFile(risky("Find") + risky("Crash") + risky("Find")));
    const std::vector<std::string> arguments{"rules.xml", "find.xml", "--part",
                                             "parts",     "--format", "json"};
    const auto with = [&](std::initializer_list<std::string> more) {
        std::vector<std::string> all = arguments;
        all.insert(all.end(), more);
        return rules(all);
    };
    const ProcessResult one = with({"-j", "1"});
    EXPECT_EQ(one.status, 1);
    EXPECT_EQ(timeless(with({"-j", "3"}).out), timeless(one.out));

    for (const std::string share : {"1", "2"})
        EXPECT_NE(
            with({"--shard", share + "/2", "--output", "json=share" + share + ".json"}).status, 2);
    const ProcessResult merged = run({"merge", "share2.json", "share1.json", "--format", "json"});
    EXPECT_EQ(merged.status, 1);
    EXPECT_EQ(timeless(merged.out), timeless(one.out));

    EXPECT_EQ(run({"merge", "share1.json", "share2.json", "./share1.json", "share1.json"}).err,
              "./share1.json is named more than once and counts once\n");
    EXPECT_EQ(run({"merge", ".", "share1.json"}).err, "");
    std::filesystem::copy(folder.path("share1.json"), folder.path("copy.json"));
    const ProcessResult partial = run({"merge", "share1.json", "copy.json"});
    EXPECT_EQ(partial.status, 2);
    EXPECT_THAT(partial.err,
                AllOf(HasSubstr("this share is double"), HasSubstr("share 2 of 2 is missing")));
    folder.write("find.xml", ruleFile(risky("Find") + "<!-- -->"));
    with({"--shard", "2/2", "--output", "json=other.json"});
    EXPECT_THAT(run({"merge", "share1.json", "other.json"}).err,
                HasSubstr("other.json: this is a share of another run than share1.json"));
    const std::string whole = CORVANE_TEST_DATA "/cli/data/results.json";
    std::filesystem::copy(whole, folder.path("again.json"));
    EXPECT_THAT(run({"merge", whole, "again.json"}).err,
                HasSubstr("again.json: the part parts/bracket.stl is double"));
}

TEST_F(Runs, AnInterruptedRunTellsWhatIsDone) {
    folder.write("rules.xml", ruleFile(risky("Find") + risky("Hang") + risky("Find")));
    // The last as from what ends a process and then its group.
    for (const char* signal : {"INT", "HUP", "TERM $program; kill -TERM"}) {
        std::filesystem::remove(folder.path("log"));
        const ProcessResult result = rulesUntilTheyHang(
            {"rules.xml", "--part", "parts", "-j", "1", "--output", "json=out.json"}, signal);
        EXPECT_EQ(result.status, 1) << signal;
        EXPECT_THAT(result.out, HasSubstr("interrupted after 1 part, 3 rules: 0 passed, 1 failed, "
                                          "2 not run"));
        const json run = json::parse(folder.read("out.json"));
        EXPECT_TRUE(run["end"]["interrupted"]);
        EXPECT_THAT(verdicts(run), ElementsAre("failed", "notRun", "notRun"));
    }
}

TEST_F(Runs, ASignalThatEndsTheProgramLeavesNothingHalfDone) {
    folder.write("rules.xml", ruleFile(risky("Hang")));
    folder.write("scripts/UserDefinedFile.xml", "");
    folder.write("out/a.json", "old");
    std::filesystem::create_directory(folder.path("tmp"));
    const EnvironmentScope temporary("TMPDIR", folder.path("tmp"));
    const auto namesIn = [this](const std::string& name) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path(name)))
            names.push_back(entry.path().filename());
        return names;
    };
    rulesUntilTheyHang({"rules.xml", "--scripts", "scripts", "--output", "json=out/a.json"},
                       "XCPU");
    EXPECT_THAT(namesIn("tmp"), IsEmpty());
    EXPECT_THAT(namesIn("out"), ElementsAre("a.json"));
    EXPECT_EQ(folder.read("out/a.json"), "old");
}

TEST_F(Runs, FilesAreWholeWhenTheReaderOfTheResultsGoesAway) {
    folder.write("rules.xml", ruleFile(risky("Find")));
    rules({"rules.xml", "--part", "parts", "--output", "json=out.json"},
          "sh -c '{ sleep 0.3; env --default-signal \"$@\"; echo $? >status; } | true' sh");
    EXPECT_EQ(folder.read("status"), "2\n");
    EXPECT_EQ(json::parse(folder.read("out.json"))["end"]["summary"]["failed"], 2);  // one a part
}

TEST_F(Runs, RightsAndLinksOfFilesAreKept) {
    using std::filesystem::perms;
    // Root reads and writes everything unless it gives that up.
    const std::string rights = "-dac_override,-dac_read_search";
    const std::string before =
        geteuid() == 0 ? "setpriv --inh-caps=" + rights + " --bounding-set=" + rights : "";
    folder.write("private.json", "old");
    folder.write("kept.json", "old");
    std::filesystem::permissions(folder.path("private.json"), perms(0600));
    std::filesystem::permissions(folder.path("kept.json"), perms(0400));
    std::filesystem::create_symlink("private.json", folder.path("link.json"));
    const auto runInto = [&](const std::string& file) {
        return rules({"find.xml", "--parts", "parts", "--output", "json=" + file}, before);
    };
    EXPECT_EQ(runInto("link.json").status, 1);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.json")));
    EXPECT_THAT(folder.read("private.json"), HasSubstr("parts/a.stl"));
    EXPECT_EQ(std::filesystem::status(folder.path("private.json")).permissions(), perms(0600));
    EXPECT_THAT(runInto("kept.json").err, HasSubstr("kept.json: cannot be written"));
    EXPECT_EQ(folder.read("kept.json"), "old");

    std::filesystem::permissions(folder.path("parts/sub"), perms(0));
    const ProcessResult result = runInto("link.json");
    std::filesystem::permissions(folder.path("parts/sub"), perms(0700));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "parts/sub: cannot be read\n");
    EXPECT_THAT(result.out, HasSubstr("2 parts, 2 rules"));
}

TEST_F(Runs, AKilledRunGoesOnWhereItWasAndLeavesNoWorkerBehind) {
    folder.write("rules.xml", ruleFile(risky("Find") + risky("Hang")));
    const std::vector<std::string> arguments{
        "rules.xml", "--part", "parts/a.stl", "--cache", "cache", "--timeout", "3"};
    rulesUntilTheyHang(arguments, "KILL");
    EXPECT_EQ(count("find"), 1);
    std::istringstream log(folder.read("log"));
    std::string what;
    pid_t worker = 0;
    while (log >> what >> worker && what != "hang") {
    }
    // The system ends the worker soon after its controller.
    for (int i = 0; i < 200 && kill(worker, 0) == 0; ++i)
        usleep(10000);
    EXPECT_NE(kill(worker, 0), 0);

    EXPECT_THAT(rules(arguments).out, HasSubstr("2 rules: 0 passed, 1 failed, 1 error"));
    EXPECT_EQ(count("find"), 1) << "it was judged before the kill";
    EXPECT_EQ(count("hang"), 2) << "an error is no result worth keeping";
}

TEST_F(Runs, TheCacheNoticesEachChangeAndIsNotMisledByDamage) {
    const std::vector<std::string> arguments{"find.xml", "--part",   "parts/a.stl", "--cache",
                                             "cache",    "--format", "json"};
    const std::string first = rules(arguments).out;
    EXPECT_EQ(timeless(rules(arguments).out), timeless(first));
    EXPECT_EQ(count("find"), 1);

    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path("cache"))) {
        if (!entry.is_regular_file()) continue;
        std::string damaged = TemporaryFolder::readFile(entry.path());
        damaged.replace(damaged.find("thin"), 4, "thiN");
        std::ofstream(entry.path()) << damaged;
    }
    EXPECT_EQ(timeless(rules(arguments).out), timeless(first));
    EXPECT_EQ(count("find"), 2) << "the damaged entry is not there";

    folder.write("parts/a.stl", "1 2 3 thin\n");
    EXPECT_NE(timeless(rules(arguments).out), timeless(first));
    EXPECT_EQ(count("find"), 3);
    folder.write("find.xml", ruleFile(moduleRule("Find", parameter(1, ""), "risky.dll")));
    rules(arguments);
    EXPECT_EQ(count("find"), 4);
    std::vector<std::string> other = arguments;
    other.insert(other.end(), {"--material", "ABS"});
    rules(other);
    EXPECT_EQ(count("find"), 5);
    rules(arguments);
    rules(other);
    EXPECT_EQ(count("find"), 5);
}

TEST_F(Runs, AWaivedFindingFailsNothingUntilItsDay) {
    const std::string waiver = "[[waiver]]\nrule = 'Find'\nreason = 'agreed'\nauthor = 'J. K.'\n";
    folder.write("waivers.toml", waiver + "part = 'a.stl'\nexpires = 2999-01-31\n" + waiver +
                                     "part = 'parts/*/c.stl'\nexpires = 2020-01-31\n" + waiver +
                                     "part = 'z*'\nexpires = '2999-01-31'\n");
    const std::vector<std::string> arguments{"find.xml", "--parts", "parts", "--waivers",
                                             "waivers.toml"};
    const ProcessResult result = rules(arguments);
    EXPECT_EQ(result.status, 1) << "the second waiver has expired";
    EXPECT_THAT(result.out,
                AllOf(HasSubstr("waived  waived until 2999-01-31 (agreed): thin"),
                      HasSubstr("failed  sharp"), HasSubstr("1 passed, 1 failed, 1 waived")));
    EXPECT_THAT(result.err, AllOf(HasSubstr("for parts/*/c.stl expired on 2020-01-31\n"),
                                  HasSubstr("for z* matches no finding\n")));
    EXPECT_EQ(rules({"find.xml", "--part", "parts/a.stl", "--waivers", "waivers.toml"}).status, 0);

    const std::time_t now = std::time(nullptr);
    char today[11];
    std::strftime(today, sizeof today, "%F", std::gmtime(&now));
    folder.write("waivers.toml", waiver + "part = 'a.stl'\nexpires = " + today + "\n");
    EXPECT_EQ(rules({"find.xml", "--part", "parts/a.stl", "--waivers", "waivers.toml"}).status, 0);

    // One finding alone.
    const json run = results({"find.xml", "--part", "parts/a.stl"});
    const std::string fingerprint = run["parts"][0]["rules"][0]["findings"][1]["fingerprint"];
    folder.write(
        "waivers.toml",
        waiver + "part = '**/a.stl'\nexpires = 2999-01-31\nfingerprint = '" + fingerprint + "'\n");
    const ProcessResult partly = rules(arguments);
    EXPECT_THAT(partly.out, AllOf(HasSubstr("failed  thin"), HasSubstr("(agreed): deep")));
}

TEST_F(Runs, AWaiverThatIsNotWholeIsRefusedWithItsPlace) {
    const std::string whole =
        "[[waiver]]\nrule = 'r'\npart = 'p'\nauthor = 'a'\nreason = 'x'\nexpires = 2999-01-31\n";
    const auto without = [&](std::string_view text, std::string_view instead = {}) {
        std::string changed = whole;
        return changed.replace(changed.find(text), text.size(), instead);
    };
    const struct {
        std::string text;
        const char* told;
    } cases[] = {
        {without("reason = 'x'\n"), "w.toml:1: the waiver has no \"reason\""},
        {without("'x'", "'  '"), "has no \"reason\""},
        {without("author = 'a'\n"), "has no \"author\""},
        {without("expires = 2999-01-31\n"), "has no \"expires\""},
        {without("2999-01-31", "'soon'"), "\"expires\" is no date"},
        {without("part =", "prat ="), "w.toml:3: the key \"prat\" is not known here"},
        {without("'p'", "[1]"), "w.toml:3: the value is no text, whole number or date"},
        {without("[[waiver]]", "[[waver]]"), "nothing but [[waiver]] is known here"},
        {without("'r'", "'r"), "w.toml:2: "},
    };
    for (const auto& [text, told] : cases) {
        folder.write("w.toml", text);
        const ProcessResult result =
            rules({"find.xml", "--part", "parts/b.stl", "--waivers", "w.toml"});
        EXPECT_EQ(result.status, 2) << told;
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, HasSubstr(told));
    }
}

TEST_F(Runs, OnlyFindingsThatABaselineLacksFail) {
    const std::vector<std::string> arguments{"find.xml", "--part", "parts/a.stl", "--baseline",
                                             "before.json"};
    rules({"find.xml", "--part", "parts/a.stl", "--output", "json=before.json"});
    const ProcessResult same = rules(arguments);
    EXPECT_EQ(same.status, 0);
    EXPECT_THAT(same.out, HasSubstr("waived  known before: thin"));

    folder.write("parts/a.stl", "9 9 9 new\n1 2 3 thin\n1 2 3 thin\n");
    const json run = results(arguments);
    const json& findings = run["parts"][0]["rules"][0]["findings"];
    EXPECT_FALSE(findings[0].contains("waiver")) << "it is new";
    EXPECT_TRUE(findings[1].contains("waiver"));
    EXPECT_FALSE(findings[2].contains("waiver")) << "there was one of these only";
    EXPECT_EQ(rules(arguments).status, 1);

    // Another folder, the same file.
    folder.write("elsewhere/a.stl", "1 2 3 thin\n");
    EXPECT_EQ(rules({"find.xml", "--part", "elsewhere/a.stl", "--baseline", "before.json"}).status,
              0);
    folder.write("before.json", "{}");
    EXPECT_EQ(rules(arguments).status, 2);
}

TEST_F(Runs, RulesAreSelectedAndSeveritiesDecide) {
    const auto rule = [](const char* severity, const char* category) {
        return std::string("<Rule Name='Find' Severity='") + severity + "' RuleCategory='" +
               category + "' File='risky.dll'/>";
    };
    folder.write("rules.xml",
                 ruleFile(rule("1", "Milling") + rule("3", "General") + rule("9", "General")));
    folder.write("names.toml",
                 "[[severity]]\nnumber = 9\nname = 'grave'\n"
                 "[[severity]]\nnumber = 1\nname = 'light'\n");
    const struct {
        std::vector<std::string> options;
        int status;
        const char* told;
    } cases[] = {
        {{"--rule", "fi*"}, 1, "3 rules: 0 passed, 3 failed"},
        {{"--category", "MILL?NG"}, 1, "1 rule: 0 passed, 1 failed"},
        {{"--severity", "minor"}, 1, "1 rule: "},
        {{"--severity", "minor", "--severity", "1"}, 1, "2 rules: "},
        {{"--severity", "minor", "--fail-on", "major"}, 0, "1 rule: 0 passed, 1 failed"},
        {{"--severity", "minor", "--fail-on", "MINOR"}, 1, "1 rule: "},
        {{"--severity", "9", "--fail-on", "critical"}, 1, "1 rule: "},
        {{"--severities", "names.toml", "--severity", "light", "--fail-on", "grave"}, 0, "light"},
        {{"--severities", "names.toml", "--severity", "grave", "--fail-on", "light"}, 1, "grave"},
        {{"--rule", "none"}, 2, "no rule fits"},
        {{"--fail-on", "9"}, 2, "there is no severity 9"},
        {{"--severity", "bad"}, 2, "there is no severity bad"},
        {{"--format", "pdf"}, 2, "one of text, json, sarif, junit, html"},
        {{"--output", "json"}, 2, "FORMAT=FILE"},
        {{"--output", "json=none/x.json"}, 2, "none/x.json: cannot be written"},
        {{"--shard", "3/2"}, 2, "I/N"},
        {{"--units", "parsec"}, 2, "--units: parsec is no unit of length; there are mm, "},
        {{"--units", "Inch", "--severity", "minor"}, 1, "1 rule: "},
    };
    for (const auto& [options, status, told] : cases) {
        std::vector<std::string> arguments{"rules.xml", "--part", "parts/a.stl"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProcessResult result = rules(arguments);
        EXPECT_EQ(result.status, status) << told;
        EXPECT_THAT(result.out + result.err, HasSubstr(told));
    }
}

TEST_F(Runs, PartsComeFromFoldersPatternsAndLists) {
    folder.write("parts/notes.txt", "no part");
    folder.write("list", "# parts\n\nparts/b.stl\r\n@more\n");
    folder.write("more", "parts/*/c.stl\nparts/b.stl\n");
    folder.write("loop", "@loop\n");
    folder.write("none.txt", "# no part yet\n");
    const struct {
        std::vector<std::string> parts;
        std::vector<std::string> found;
        const char* problem;
    } cases[] = {
        {{"parts"}, {"parts/a.stl", "parts/b.stl", "parts/sub/c.stl"}, ""},
        {{"parts/*.stl"}, {"parts/a.stl", "parts/b.stl"}, ""},
        {{"**/?.stl"}, {"parts/a.stl", "parts/b.stl", "parts/sub/c.stl"}, ""},
        {{"parts/b.stl", "./parts/b.stl", "parts"},
         {"parts/b.stl", "parts/a.stl", "parts/sub/c.stl"},
         ""},
        {{"@list"}, {"parts/b.stl", "parts/sub/c.stl"}, ""},
        {{"parts/a.stl", "none.stl"}, {"parts/a.stl"}, "none.stl: no such part"},
        {{"parts/a.stl", "x*.stl"}, {"parts/a.stl"}, "x*.stl: no file fits this pattern"},
        {{"parts/a.stl", "@none"}, {"parts/a.stl"}, "none: this list of files cannot be read"},
        {{"parts/a.stl", "@none.txt"}, {"parts/a.stl"}, "none.txt: this list names no file"},
        {{"parts/a.stl", "/dev/null"}, {"parts/a.stl"}, "/dev/null is no file"},
        {{"parts/a.stl", "@loop"}, {"parts/a.stl"}, "loop: this list of files leads to itself"},
    };
    for (const auto& [parts, found, problem] : cases) {
        std::vector<std::string> arguments{"find.xml", "--format", "json", "--parts"};
        arguments.insert(arguments.end(), parts.begin(), parts.end());
        const ProcessResult result = rules(arguments);
        std::vector<std::string> paths;
        const json run = json::parse(result.out);
        for (const json& part : run["parts"])
            paths.push_back(part["path"]);
        EXPECT_EQ(paths, found);
        EXPECT_THAT(result.err, HasSubstr(problem));
        EXPECT_EQ(result.status == 2, *problem != '\0');
    }
}

TEST_F(Runs, AModuleThatWasCutOffCostsItsRow) {
    const std::string whole =
        TemporaryFolder::readFile(CORVANE_BUILD_DIR "/lib/rules/partrules.so");
    folder.write("mine/cut.so", whole.substr(0, 4000));
    folder.write("cut.xml", ruleFile(moduleRule("Maximum mass", "", "cut.dll")));
    const ProcessResult result = run({"run", "cut.xml", "--modules", "mine"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out,
                testing::ContainsRegex("Maximum mass +Milling +major +error +the rule"));
}

TEST_F(Runs, APageShowsThePartsSurface) {
    if (!std::filesystem::exists(CORVANE_BUILD_DIR "/lib/CorvanePartSurface.so"))
        GTEST_SKIP() << "built without the module of parts";
    std::filesystem::copy(CommandLine::part("bracket"), folder.path("bracket.stl"));
    rules({"find.xml", "--parts", "bracket.stl", "parts/b.stl", "--output", "html=out.html"});
    const std::string page = folder.read("out.html");
    EXPECT_THAT(page, HasSubstr("class=\"geometry\" data-part=\"1\""));
    EXPECT_THAT(page, testing::Not(HasSubstr("class=\"geometry\" data-part=\"2\"")))
        << "an empty file has no surface";
}

}  // namespace
