#include <gmock/gmock.h>

#include "CommandLine.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(Db, LookUpsTellValuesWithTheirUnitsAndSource) {
    const CommandLine corvane;
    const struct {
        std::vector<std::string> arguments;
        const char* told;
    } cases[] = {
        {{"drill", "6.27"}, "Drill +6.3 mm\n.*Source +[A-Z]+ [0-9]"},
        {{"drill", "6.27", "--preferred"}, "Drill +6.5 mm\n"},
        {{"thread", "m6"}, "Thread +M6\n.*Pitch +1 mm\n +Tap drill +5 mm\n +Source +ISO"},
        {{"threads", "6"}, "\nM6 +coarse .* 5 mm +ISO.*\nM6x0.75 +fine .* 0.75 mm "},
        {{"hole", "6"}, "Hole +6.6 mm\n"},
        {{"hole", "6", "fine"}, "Hole +6.4 mm\n"},
        {{"hole", "6", "coarse"}, "Hole +7 mm\n"},
        {{"material", "s235jr"}, "Density +7850 kg/m3\n +Modulus +210 GPa\n +Yield +235 MPa\n"},
        {{"materials"}, "\nDC01 .* 7850 kg/m3 +210 GPa +- +270 MPa +EN 10130"},
        {{"bend", "S235JR", "2"}, "Thickness +2 mm\n +Radius +2.5 mm\n +Source +EN"},
        {{"bend", "S235JR", "4", "across"}, "Radius +5 mm\n"},
        {{"bend", "S235JR", "4", "along"}, "Radius +6 mm\n"},
        {{"wall", "Injection moulding", "abs"}, "Least wall +1.143 mm\n +Source +[A-Z]"},
        {{"wall", "FDM"}, "Material +any\n +Least wall +0.8 mm\n"},
        {{"install"}, "^The reference tables have version [0-9]+.\n$"},
        {{}, "type +SQLite\n.*file +/.*/db/qorSqliteDb.dat\n +state +open\n +tables +version"},
    };
    for (const auto& [arguments, told] : cases) {
        const ProcessResult result = corvane("db", arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.out, ContainsRegex(told));
        EXPECT_THAT(result.err, IsEmpty());
    }
    EXPECT_THAT(corvane("db", {"drills"}).out, ContainsRegex("6.3 mm +no "));
    EXPECT_THAT(corvane("db", {"drills", "--preferred"}).out,
                AllOf(HasSubstr("6.5 mm"), Not(HasSubstr("6.3 mm"))));
    EXPECT_THAT(corvane("db", {"walls"}).out, ContainsRegex("die casting +zinc +0.63 mm +[A-Z]"));
}

TEST(Db, WhatIsNotFoundEndsWithOneAndBadUsageWithTwo) {
    const CommandLine corvane;
    corvane.folder.write("bad/Settings/ConfigModule.ini",
                         "[RULE_DATABASE_MODULES]\nFileName=" + corvane.folder.path() + "\n");
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* told;
    } cases[] = {
        {{"thread", "M7x9"}, 1, "M7x9"},
        {{"hole", "1000"}, 1, "1000"},
        {{"thread", "M6", "--data", "@bad"}, 1, "is a folder"},
        {{"install", "--data", "@bad"}, 1, "is a folder"},
        {{"drill", "--", "-3"}, 2, "not below 0"},
        {{"drill", "nan"}, 2, "millimetres"},
        {{"drill", "six"}, 2, "DIAMETER"},
        {{"hole", "6", "loose"}, 2, "FIT"},
        {{"bend", "S235JR"}, 2, "THICKNESS is required"},
        {{"walk"}, 2, "walk"},
        {{"query", "SELECT nothing"}, 2, "nothing"},
    };
    for (const auto& [arguments, status, told] : cases) {
        SCOPED_TRACE(told);
        const ProcessResult result = corvane("db", arguments);
        EXPECT_EQ(result.status, status);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, HasSubstr(told));
    }
    const ProcessResult closed = corvane("db", {"--data", "@bad"});
    EXPECT_EQ(closed.status, 1);
    EXPECT_THAT(closed.out, ContainsRegex("state +not open\n +problem +.*is a folder"));
}

TEST(Db, AQueryShowsEveryKindOfValueAndChangesNothing) {
    const CommandLine corvane;
    const auto query = [&](const std::string& statement) {
        return corvane("db", {"query", statement, "--limit", "2"});
    };
    EXPECT_THAT(query("SELECT 1 AS a, 2.5 AS b, NULL AS c, x'0aff' AS d, 'e\x1b' AS e;").out,
                HasSubstr("a  b    c     d        e\n1  2.5  NULL  x'0AFF'  e\\u001b\n\n1 row\n"));
    EXPECT_THAT(query("VALUES (1), (2), (3)").out, HasSubstr("\n1\n2\n\nthe first 2 rows"));

    const std::string count = query("SELECT count(*) FROM qor_thread").out;
    for (const char* statement :
         {"DELETE FROM qor_thread", "SELECT 1; DELETE FROM qor_thread", "PRAGMA user_version = 9",
          "WITH x AS (SELECT 1) DELETE FROM qor_thread", "COMMIT", ""})
        EXPECT_EQ(query(statement).status, 2) << statement;
    EXPECT_EQ(query("WITH x AS (SELECT 1) DELETE FROM qor_thread RETURNING 1").status, 0);
    EXPECT_EQ(query("SELECT count(*) FROM qor_thread").out, count);
}

}  // namespace
