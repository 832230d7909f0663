#include <filesystem>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "CommandLine.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kSample = CORVANE_TEST_DATA "/cli/data/results.json";

TEST(Formats, AServerForContinuousIntegrationReadsTheJUnitFile) {
    const CommandLine corvane;
    std::string sample = TemporaryFolder::readFile(kSample);
    const std::string_view plain = "no script folder";
    // What XML cannot hold at all.
    corvane.folder.write("r.json", sample.replace(sample.find(plain), plain.size(),
                                                  "no \\u0000\\u001b\\ufffe folder"));
    EXPECT_EQ(
        corvane("merge", {"@r.json", "--output", "junit=" + corvane.folder.path("r.xml")}).status,
        1);
    const std::string reader =
        "import junitparser, sys\n"
        "for suite in junitparser.JUnitXml.fromfile(sys.argv[1]):\n"
        "    print(suite.name, suite.tests, suite.failures, suite.errors, suite.skipped)\n"
        "    for case in suite:\n"
        "        print(case.classname, case.name, [type(r).__name__ for r in case.result])\n";
    const ProcessResult read =
        runProcess({"/usr/bin/env", "PYTHONIOENCODING=utf-8", "/usr/bin/python3", "-c", reader,
                    corvane.folder.path("r.xml")});
    EXPECT_EQ(read.out,
              "parts/bracket.stl 2 1 0 0\n"
              "Injection moulding Minimum wall ['Failure']\n"
              "Milling Fits the machine []\n"
              "parts/<b>\"A&B\"</b> \u58c1.stl 2 0 1 1\n"
              "Injection moulding Minimum wall ['Error']\n"
              "Milling Fits the machine ['Skipped']\n"
              "parts/housing.stl 2 0 0 0\n"
              "Injection moulding Minimum wall []\n"
              "Milling Fits the machine []\n")
        << read.err;
}

TEST(Formats, SarifHoldsFindingsWithFingerprintsAndWaiversAsSuppressions) {
    const CommandLine corvane;
    const json log = json::parse(corvane("merge", {kSample, "--format", "sarif"}).out);
    const json& run = log["runs"][0];
    EXPECT_EQ(run["tool"]["driver"]["rules"].size(), 2U);
    ASSERT_EQ(run["results"].size(), 4U);
    const json& first = run["results"][0];
    EXPECT_EQ(first["level"], "error");
    EXPECT_EQ(first["partialFingerprints"]["corvaneFinding/v1"], "5be1c07a2f0e9d34");
    EXPECT_EQ(first["properties"]["places"][1]["kind"], "polyline");
    EXPECT_FALSE(first.contains("suppressions"));
    EXPECT_EQ(run["results"][1]["suppressions"][0]["justification"],
              "agreed with the mould shop (J. Keller), until 2027-01-31");
    EXPECT_EQ(run["results"][2]["kind"], "informational");
    EXPECT_EQ(run["results"][3]["suppressions"][0]["status"], "accepted");
    const json& invocation = run["invocations"][0];
    EXPECT_FALSE(invocation["executionSuccessful"]);
    EXPECT_EQ(invocation["toolExecutionNotifications"].size(), 2U);
    EXPECT_EQ(run["artifacts"][1]["location"]["uri"],
              "parts/%3Cb%3E%22A%26B%22%3C/b%3E%20%E5%A3%81.stl");
}

TEST(Formats, NoTextEndsTheScriptElementOfAPage) {
    const std::string page = CommandLine()("merge", {kSample, "--format", "html"}).out;
    EXPECT_THAT(page, HasSubstr("parts/\\u003cb>"));
    EXPECT_THAT(page, Not(HasSubstr("parts/<b>")));
}

TEST(Formats, EachFileHoldsWhatItsFormatWritesToStandardOutput) {
    const CommandLine corvane;
    std::vector<std::string> all{kSample};
    for (const char* format : {"text", "json", "sarif", "junit", "html"})
        all.insert(all.end(),
                   {"--output", std::string(format) + "=" + corvane.folder.path(format)});
    corvane("merge", all);
    for (const char* format : {"text", "json", "sarif", "junit", "html"})
        EXPECT_EQ(corvane("merge", {kSample, "--format", format}).out, corvane.folder.read(format))
            << format;
    for (const auto& entry : std::filesystem::directory_iterator(corvane.folder.path()))
        EXPECT_THAT(entry.path().string(), Not(HasSubstr(".tmp")));
}

}  // namespace
