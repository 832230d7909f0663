// What a script has of the context of its run: parameters, the part, the rule database, and the way
// back by findings.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <corvane/database/IDatabaseCollector.h>
#include <corvane/database/SQLLiteConnectorData.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/host/RunContext.h>
#include <corvane/scriptrules/ScriptStatus.h>

#include "scripthost/HostRun.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

namespace {

using corvane::Finding;
using corvane::Place;
using corvane::RunContext;
using corvane::RunContextScope;
using testing::HasSubstr;
using Kind = corvane::Place::Kind;

struct Results : QORResultSet {
    std::vector<Finding> findings;
    void AddFinding(const CStringW&) override { FAIL() << "the text alone"; }
    void ReportFinding(const Finding& finding) override { findings.push_back(finding); }
};

class ScriptContext : public testing::Test {
protected:
    ScriptContext() { context.results = &results; }

    Outcome run(const std::string& script, const std::vector<CStringW>& engines = {}) {
        results.findings.clear();
        const RunContextScope scope(context);
        return runScript(script, engines);
    }

    Results results;
    RunContext context;
    const TemporaryFolder folder;
};

/// A place in short: its kind, its label, its points and faces.
std::string shown(const Place& place) {
    std::string text = std::to_string(static_cast<int>(place.kind)) + place.label.ToUtf8();
    for (const corvane::Point& p : place.points)
        for (const double value : {p.x, p.y, p.z})
            text += " " + std::to_string(static_cast<int>(value));
    for (const QorLong face : place.faces)
        text += " #" + std::to_string(face);
    return text;
}

TEST_F(ScriptContext, FindingsArriveWithMeasureLimitAndPlaces) {
    const struct {
        const char* at;
        std::vector<std::string> places;
    } cases[] = {
        {"{1, 2, 3}", {"0 1 2 3"}},
        {"{x = 1, y = 2, z = 3}", {"0 1 2 3"}},
        {"{point = {1, 2, 3}, label = 'ü'}", {"0ü 1 2 3"}},
        {"{box = {{4, 0, 6}, {1, 2, 3}}}", {"1 1 0 3 4 2 6"}},
        {"{polyline = {{0, 0, 0}, {1, 1, 1}, {0, 0, 0}}}", {"2 0 0 0 1 1 1 0 0 0"}},
        {"{facets = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}}}", {"3 0 0 0 1 0 0 0 1 0"}},
        {"{faces = {7, 2}, label = 'rim'}", {"4rim #7 #2"}},
        {"{faces = {1}, facets = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}}}", {"4 0 0 0 1 0 0 0 1 0 #1"}},
        {"{{1, 2, 3}, {faces = {2}}}", {"0 1 2 3", "4 #2"}},
        {"{}", {}},
        {"params.HERE", {"0 5 6 7"}},
    };
    context.parameters = {{1, u"HERE", true, {5.0, 6.0, 7.0}}};
    for (const auto& [at, places] : cases) {
        SCOPED_TRACE(at);
        const Outcome outcome =
            run(std::string("return false, {message = 'thin', measured = 1.2, limit = 2, "
                            "unit = 'mm', fingerprint = 'f', at = ") +
                at + "}");
        EXPECT_EQ(outcome.type + ": " + outcome.message, "Rule not met: thin");
        ASSERT_EQ(results.findings.size(), 1U);
        const Finding& finding = results.findings[0];
        EXPECT_EQ(finding.measured, 1.2);
        EXPECT_EQ(finding.limit, 2);
        EXPECT_EQ(finding.unit + u"/" + finding.fingerprint, u"mm/f");
        std::vector<std::string> told;
        for (const Place& place : finding.places)
            told.push_back(shown(place));
        EXPECT_EQ(told, places);
    }
}

TEST_F(ScriptContext, FindingsFailTheRuleAndNotesDoNot) {
    const struct {
        const char* script;
        const char* outcome;
        std::vector<const char*> reported;
        int line;
    } cases[] = {
        {"result.note 'n'", "", {"n*"}, 0},
        {"result.note {message = 'n'} return false",
         "Rule not met: the rule is not met",
         {"n*", "the rule is not met"},
         0},
        {"\nresult.finding 'a'\nresult.note 'n' result.finding {message = 'b'}",
         "Rule not met: a (and 1 more)",
         {"a", "n*", "b"},
         1},
        {"result.finding 'a' return true", "Rule not met: a", {"a"}, 0},
        {"result.finding 'a' return false", "Rule not met: a", {"a"}, 0},
        {"result.finding 'a' return nil, 'b'", "Rule not met: a (and 1 more)", {"a", "b"}, 0},
        {"result.finding 'a'\nerror 'broken'", "Run-time error: broken", {"a"}, 1},
        {"return false, 12.5", "Rule not met: 12.5", {"12.5"}, 0},
    };
    for (const auto& [script, expected, reported, line] : cases) {
        SCOPED_TRACE(script);
        const Outcome outcome = run(script);
        EXPECT_EQ(outcome.success ? "" : outcome.type + ": " + outcome.message, expected);
        EXPECT_EQ(outcome.success ? line : outcome.line, line);
        const bool isNotMet = std::string_view(expected).starts_with("Rule not met");
        EXPECT_EQ(corvane::SaysNotMet(outcome.number, outcome.code), isNotMet);
        std::vector<std::string> told;
        for (const Finding& finding : results.findings)
            told.push_back(finding.message.ToUtf8() + (finding.isNote ? "*" : ""));
        EXPECT_EQ(told, std::vector<std::string>(reported.begin(), reported.end()));
    }
    context.results = nullptr;
    EXPECT_EQ(run("result.finding 'a'").message, "a") << "nobody listens";
}

TEST_F(ScriptContext, AFindingOfWrongFormIsAnErrorOfTheScript) {
    const std::pair<const char*, const char*> cases[] = {
        {"{}", "needs a 'message'"},
        {"{message = 5}", "'message' of a finding is a text, not a number"},
        {"{message = 'm', measured = '5'}", "'measured' of a finding is a finite number"},
        {"{message = 'm', limit = 0 / 0}", "'limit' of a finding is a finite number"},
        {"{message = 'm', unit = {}}", "'unit' of a finding is a text"},
        {"{message = 'm', mesured = 5}", "a finding has no field 'mesured'"},
        {"{message = 'm', at = 5}", "a place is a table, not a number"},
        {"{message = 'm', at = {1, 2}}", "a point is three numbers"},
        {"{message = 'm', at = {1, 2, 3, 4}}", "a point is three numbers"},
        {"{message = 'm', at = {1, 2, math.huge}}", "a point is three numbers"},
        {"{message = 'm', at = {x = 1, y = 2}}", "a point is three numbers"},
        {"{message = 'm', at = {box = {{1, 2, 3}}}}", "a box is two points"},
        {"{message = 'm', at = {polyline = {{1, 2, 3}}}}", "a polyline is a list of two"},
        {"{message = 'm', at = {facets = {{{1, 2, 3}}}}}", "triangles of three points"},
        {"{message = 'm', at = {facets = {}}}", "triangles of three points"},
        {"{message = 'm', at = {faces = {0}}}", "a list of numbers from 1"},
        {"{message = 'm', at = {faces = {1.5}}}", "a list of numbers from 1"},
        {"{message = 'm', at = {label = 'only'}}", "has one of the fields"},
        {"{message = 'm', at = {point = {1, 2, 3}, faces = {1}}}", "has one of the fields"},
        {"{message = 'm', at = {sphere = {1, 2, 3}}}", "a place has no field 'sphere'"},
        {"{message = 'm', at = {{1, 2, 3}, 5}}", "a place is a table"},
    };
    for (const auto& [finding, message] : cases) {
        SCOPED_TRACE(finding);
        for (const char* call : {"\nresult.finding(", "\nresult.note(", "\nreturn false, ("}) {
            const Outcome outcome = run(std::string(call) + finding + ")");
            EXPECT_EQ(outcome.number, static_cast<int>(corvane::ScriptError::RunTime));
            EXPECT_THAT(outcome.message, HasSubstr(message));
            EXPECT_EQ(outcome.line, 1);
            EXPECT_TRUE(results.findings.empty());
        }
    }
    EXPECT_THAT(run("result.finding()").message, HasSubstr("table or text expected"));
}

TEST_F(ScriptContext, FindingsCountAsMemoryWhetherTheyAreKeptOrBroken) {
    const EnvironmentScope memory("CORVANE_SCRIPT_MAX_MEMORY_MB", "8");
    const std::string text = "local s = ('x'):rep(1e5) while true do ";
    EXPECT_EQ(run(text + "result.note(s) end").number, 6);
    EXPECT_LT(results.findings.size(), 50U);
    EXPECT_EQ(run("local s = ('x'):rep(1e5) for i = 1, 300 do "
                  "pcall(result.note, {message = s, at = 1}) end return false, 'ended'")
                  .message,
              "ended");
    EXPECT_EQ(run("local p = setmetatable({}, {__len = function() return 1 << 60 end, "
                  "__index = function() return {1, 2, 3} end}) "
                  "result.note {message = 'endless', at = {polyline = p}}")
                  .number,
              6);
}

TEST_F(ScriptContext, ParametersAreValuesAndReadOnly) {
    context.parameters = {{1, u"WALL", false, {2.5}},
                          {2, u"COUNT", false, {std::int64_t{3}}},
                          {3, u"NAME", false, {CStringW(u"ABS ä")}},
                          {4, u"STRICT", false, {true}},
                          {5, u"SIZES", true, {1.5, 2.0, 4.0}},
                          {6, u"NONE", true, {}}};
    EXPECT_EQ(run(R"(
        assert(params.WALL == 2.5 and math.type(params.COUNT) == 'integer' and params.COUNT == 3)
        assert(params.NAME == 'ABS ä' and params.STRICT == true and params.OTHER == nil)
        assert(#params.SIZES == 3 and table.unpack(params.SIZES, 3) == 4 and #params.NONE == 0)
        local sum, names = 0, {}
        for _, size in ipairs(params.SIZES) do sum = sum + size end
        for name in pairs(params) do names[#names + 1] = name end
        table.sort(names)
        assert(not pcall(function() params.WALL = 1 end))
        assert(not pcall(function() params.SIZES[1] = 1 end))
        assert(not pcall(setmetatable, params, nil))
        return false, sum .. ' ' .. table.concat(names, ' '))")
                  .message,
              "7.5 COUNT NAME NONE SIZES STRICT WALL");
    EXPECT_TRUE(runScript(std::string("return next(params) == nil and params.WALL == nil")).success)
        << "a run without context";
}

TEST_F(ScriptContext, ThePartHasItsPathNameAndMaterialAndTakesAnEngineOfItsName) {
    const std::string all =
        "return false, tostring(part.path) .. '|' .. tostring(part.name) .. '|' .. "
        "tostring(part.material)";
    const EnvironmentScope environment("CORVANE_PART", nullptr);
    EXPECT_EQ(run(all).message, "nil|nil|nil");
    const EnvironmentScope fromOutside("CORVANE_PART", "/parts/lid.stl");
    EXPECT_EQ(run(all).message, "/parts/lid.stl|lid.stl|nil");
    context.partPath = u"/parts/bracket.stl";
    context.partMaterial = u"S235JR";
    EXPECT_EQ(run(all).message, "/parts/bracket.stl|bracket.stl|S235JR");
    context.partName = u"Bracket 7";
    folder.write("part.lua",
                 "local mine = {path = 'mine'} "
                 "function mine.twice() return part.name .. part.name end return mine");
    EXPECT_EQ(run("return false, part.path .. part.twice()", {folder.wide("part.tlb")}).message,
              "/parts/bracket.stlBracket 7Bracket 7");
    folder.write("other/part.lua", "return {}");
    EXPECT_EQ(run("", {folder.wide("part.tlb"), folder.wide("other/part.tlb")}).status,
              static_cast<HResult>(corvane::kEngineNameTaken));
}

class ScriptDatabase : public ScriptContext {
protected:
    ScriptDatabase() {
        const SQLLiteConnectorData connector(u"QorSqliteDatabaseu.dll",
                                             folder.wide("rules.dat").GetString());
        module.function<qor_db::CreateCollectorFunction>(qor_db::kCreateCollectorName)(
            &connector, &context.database);
    }
    ~ScriptDatabase() override {
        module.function<qor_db::DestroyCollectorFunction>(qor_db::kDestroyCollectorName)(
            &context.database);
    }

    const corvane::LoadedModule module{u"QORDatabaseu.dll"};
};

TEST_F(ScriptDatabase, AnswersEveryLookUp) {
    EXPECT_EQ(run(R"(
        assert(db.thread('M6').pitch == 1 and db.thread('M6').tap_drill == 5)
        assert(#db.threads(8) > 1 and db.threads(8)[1].series == 'coarse')
        assert(db.nearest_drill(5.02).diameter == 5 and db.nearest_drill(5.1, true).diameter == 5)
        assert(#db.drill_sizes() > #db.drill_sizes(true) and db.drill_sizes(true)[1].preferred)
        assert(db.clearance_hole(6).diameter == 6.6 and db.clearance_hole(6, 'fine').diameter == 6.4)
        local steel = db.material('s235jr')
        assert(steel.name == 'S235JR' and steel.yield_strength == 235 and steel.source)
        assert(#db.materials() > 3)
        local along, across = db.bend_radius('S235JR', 2, 'along'), db.bend_radius('S235JR', 2, 'across')
        assert(along.radius >= across.radius and across.radius > 0 and along.thickness == 2)
        assert(db.bend_radius('S235JR', 2).radius == along.radius)
        local walls = db.minimum_walls()
        assert(db.minimum_wall(walls[1].process, walls[1].material).minimum == walls[1].minimum)
        local none, why = db.material('unobtainium')
        assert(none == nil and why ~= '')
        local held, message = pcall(db.nearest_drill, -1)
        assert(not held and message ~= '' and not pcall(db.clearance_hole, 6, 'loose'))
        return false, 'all')")
                  .message,
              "all");
    context.database = nullptr;
    EXPECT_EQ(run("\ndb.thread 'M6'").message, "this run has no rule database");
}

}  // namespace
