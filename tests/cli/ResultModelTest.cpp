#include <gmock/gmock.h>
#include <sstream>

#include "Process.h"
#include "results/ResultJson.h"

namespace {

using testing::HasSubstr;

const std::string kData = CORVANE_TEST_DATA "/cli/data/";

std::string written(const results::Run& run) {
    std::ostringstream out;
    const auto writer = results::makeJsonWriter(out);
    writer->begin(run.info);
    for (const results::PartResult& part : run.parts)
        writer->add(part);
    writer->end(run.end);
    return out.str();
}

std::optional<results::Run> read(const std::string& text, std::string& problem) {
    std::istringstream in(text);
    return results::readResults(in, problem);
}

/// What a validator that is none of this project says of a text.
ProcessResult validate(const std::string& text) {
    const TemporaryFolder folder;
    folder.write("results.json", text);
    return runProcess({"/usr/bin/python3", "-m", "jsonschema", "-i", folder.path("results.json"),
                       CORVANE_BUILD_DIR "/share/corvane/corvane-results-1.schema.json"});
}

TEST(ResultModel, AFileOfResultsIsTheSameWhenReadAndWrittenAgain) {
    const std::string sample = TemporaryFolder::readFile(kData + "results.json");
    std::string problem;
    const std::optional<results::Run> run = read(sample, problem);
    ASSERT_TRUE(run) << problem;
    std::string ascii = written(*run);
    const std::string wall = "\u58c1";
    ascii.replace(ascii.find(wall), wall.size(), "\\u58c1");
    EXPECT_EQ(ascii, sample);

    results::Counts counts;
    for (const results::PartResult& part : run->parts)
        counts.add(part);
    EXPECT_EQ(counts, run->end.counts);
}

TEST(ResultModel, TheSchemaTakesWhatIsWrittenAndNothingElse) {
    const std::string sample = TemporaryFolder::readFile(kData + "results.json");
    const ProcessResult good = validate(sample);
    EXPECT_EQ(good.status, 0) << good.out << good.err;
    for (const auto& [from, to] : {std::pair{"\"failed\",\"findings\"", "\"bad\",\"findings\""},
                                   {"\"version\": 1", "\"version\": 2"},
                                   {"[12.5,0.6,10.0]", "[12.5,0.6]"},
                                   {"\"message\"", "\"massage\""}}) {
        std::string wrong = sample;
        wrong.replace(wrong.find(from), std::string(from).size(), to);
        EXPECT_NE(validate(wrong).status, 0) << to;
    }
}

TEST(ResultModel, WhatIsNoFileOfResultsIsRefusedWithAReason) {
    const std::string sample = TemporaryFolder::readFile(kData + "results.json");
    const auto changed = [&](std::string_view from, std::string_view to) {
        std::string text = sample;
        return text.replace(text.find(from), from.size(), to);
    };
    const struct {
        std::string text;
        const char* told;
    } cases[] = {
        {"", "unexpected end of input"},
        {sample.substr(0, sample.size() / 2), "parse error"},
        {"[1]", "no results of corvane"},
        {"{}", "no results of corvane"},
        {changed("\"version\": 1", "\"version\": 2"), "version 2, and this program reads"},
        {changed("\"verdict\":\"failed\"", "\"verdict\":\"fine\""), "unknown word \"fine\""},
        {changed("\"line\":4", "\"line\":4e300"), "a whole number was expected"},
        {changed("\"size\":7284", "\"size\":-1"), "a whole number was expected"},
        {changed("\"seconds\":0.012", "\"second\":0.012"), "seconds"},
        {changed("[12.5,0.6,10.0]", "[12.5,0.6]"), "out of range"},
        {changed("\"values\":[1.5]", "\"values\":[{}]"), "must be string"},
    };
    for (const auto& [text, told] : cases) {
        std::string problem;
        EXPECT_FALSE(read(text, problem)) << told;
        EXPECT_THAT(problem, HasSubstr(told));
    }
}

TEST(ResultModel, TextThatIsNoUnicodeIsWrittenAsAMark) {
    results::Run run;
    run.info.started = "2026-03-31T08:30:00Z";
    run.parts.emplace_back().path = "a\xFF.stl";
    EXPECT_THAT(written(run), HasSubstr("a\uFFFD.stl"));
}

}  // namespace
