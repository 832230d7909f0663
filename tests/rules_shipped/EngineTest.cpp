#include <gmock/gmock.h>

#include "Figures.h"
#include "cli/CommandLine.h"
#include "part/Shapes.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

const std::string kPartEngine =
    "<Engines><Engine Engine='part.tlb' GUID='{77918782-36CB-42A6-BA4B-ACE245F1DA9C}' "
    "MajorVersion='1' MinorVersion='0' LCID='0'/></Engines>";

/// A block of 60 x 40 x 20 mm with a hole of 10 mm through it.
class PartEngine : public testing::Test {
protected:
    PartEngine() {
        corvane.folder.write("rules.xml", ruleFile(scriptRule("r", "a.lua", kPartEngine)));
        shapes::write(
            shapes::cut(shapes::box(60, 40, 20), shapes::cylinder({{30, 20, 0}, {0, 0, 1}}, 5, 20)),
            corvane.folder.path("block.step"));
    }
    ProcessResult run(const std::string& script, std::vector<std::string> part = {"@block.step"}) {
        corvane.folder.write("scripts/a.lua", script);
        std::vector<std::string> arguments{"@rules.xml", "--batch"};
        for (const std::string& file : part)
            arguments.insert(arguments.end(), {"--part", file});
        return corvane("run", arguments);
    }
    CommandLine corvane;
};

TEST_F(PartEngine, GivesTheMeasuresOfThePartBesideWhatTheHostSaysOfIt) {
    const char* const truths[] = {
        "part.name == 'block.step' and part.path:sub(-10) == 'block.step'",
        "select('#', part.size()) == 3",
        "near(({part.size()})[1], 60) and near(part.box().greatest.z, 20)",
        "near(part.volume(), 48000 - math.pi * 25 * 20)",
        "near(part.mass(7850), part.volume() * 7.85e-6)",
        "near(part.area(), 2 * (2400 + 1200 + 800) - 2 * math.pi * 25 + math.pi * 200)",
        "near(part.centre().x, 30) and #part.smallest_box().axes == 3",
        "#part.solids() == 1 and #part.faces() == 7 and #part.damages() == 0 and #part.notes() == "
        "0",
        "#part.units() > 0 and not part.is_mesh()",
        "(function() for _, f in ipairs(part.faces()) do if f.kind == 'cylinder' then "
        "return f.concave and near(f.radius, 5) and near(f.turn, 360) end end end)()",
        "(function() local n = 0 for _, e in ipairs(part.edges()) do "
        "if e.kind == 'circle' then n = n + 1 end end return n == 2 end)()",
        "part.edge(1).number == 1 and part.face(7).number == 7",
        "#part.face(1).edges[1] > 0",
        "#part.holes() == 1 and near(part.holes()[1].diameter, 10)",
        "part.holes()[1].bottom == 'through' and part.holes()[1].counterbore_diameter == nil",
        "near(part.holes()[1].edge_distance, 15) and part.holes()[1].hole_distance == nil",
        "part.holes()[1].free_length == nil and #part.holes()[1].sections == 1",
        "#part.patterns() == 0 and #part.pockets() == 0 and #part.corners() == 0",
        "#part.fillets() == 0 and not part.turned().is and #part.sheet().reason > 0",
        "part.gaps().places[1].faces[1] == part.gaps().places[1].faces[2]",
        "near(math.abs(part.draft().pull.z), 1) and #part.draft{pull = {0, 0, 2}}.faces == 7",
        "#part.draft{pull = {x = 1, y = 0, z = 0}}.undercuts > 0",
        "#part.overhangs() == 0 and #part.overhangs{up = {0, 1, 0}, angle = 40} == 1",
        "math.abs(part.walls().thinnest.value - 15) < 0.01 and #part.walls().places > 0",
    };
    std::string script =
        "local function near(a, b) return math.abs(a - b) < 1e-6 * math.abs(b) + 1e-6 end\n";
    for (const char* truth : truths)
        script += "if not (" + std::string(truth) + ") then error([=[" + truth + "]=]) end\n";
    const ProcessResult result = run(script);
    EXPECT_EQ(result.status, 0) << result.out;
}

TEST_F(PartEngine, WhatCannotBeMeasuredIsAnErrorAndNeverPasses) {
    corvane.folder.write("broken.step", "ISO-10303-21;\nnothing\n");
    shapes::write(figures::openBox(), corvane.folder.path("open.brep"));
    const struct {
        const char* script;
        std::vector<std::string> part;
        const char* told;
    } cases[] = {
        {"part.volume()", {}, "error +this run has no part .a.lua:1:1."},
        {"part.volume()", {"@broken.step"}, "error +.* .a.lua:1:1."},
        {"part.mass()", {"@block.step"}, "number expected, got no value"},
        {"part.mass(0/0)", {"@block.step"}, "a density is above 0"},
        {"part.mass(1/0)", {"@block.step"}, "a density is above 0"},
        {"part.mass(-1)", {"@block.step"}, "a density is above 0"},
        {"part.face(0)", {"@block.step"}, "the part has no face 0"},
        {"part.face(math.maxinteger)", {"@block.step"}, "the part has no face 9223"},
        {"part.face(1.5)", {"@block.step"}, "integer representation"},
        {"part.draft{pull = {0, 0, 0}}", {"@block.step"}, "a direction needs a length"},
        {"part.draft{pull = {0, 0/0, 1}}", {"@block.step"}, "a direction is three numbers"},
        {"part.draft{pull = 'up'}", {"@block.step"}, "a direction is three numbers"},
        {"part.draft(7)", {"@block.step"}, "table expected, got number"},
        {"part.overhangs{up = {1e300, 0, 0}}", {"@block.step"}, "a direction is three numbers"},
        {"part.overhangs{angle = 0/0}", {"@block.step"}, "above 0 and at most 90"},
        {"part.overhangs{angle = 91}", {"@block.step"}, "above 0 and at most 90"},
        {"part.walls()", {"@open.brep"}, "not closed"},
        {"part.draft()", {"@open.brep"}, "not closed"},
        {"part.overhangs()", {"@open.brep"}, "not closed"},
        {"part.volume()", {"@open.brep"}, "encloses no volume"},
        {"part.edge({})", {"@block.step"}, "number expected, got table"},
        {"local t = {} while true do t[#t + 1] = part.faces() end", {"@block.step"}, "memory"},
    };
    for (const auto& [script, part, told] : cases) {
        SCOPED_TRACE(script);
        const ProcessResult result = run(script, part);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, ContainsRegex(told));
    }
}

TEST_F(PartEngine, GivesTheThreadsThatTheFileNames) {
    shapes::nameCylinder(corvane.folder.path("block.step"), 5, "M12x1.5-6H THRU");
    const ProcessResult result =
        run("local t = part.threads()[part.holes()[1].thread] "
            "assert(t.designation == 'M12x1.5-6H' and t.diameter == 12 and t.pitch == 1.5) "
            "assert(t.source == 'face' and t.text == 'M12x1.5-6H THRU') "
            "assert(part.face(t.faces[1]).kind == 'cylinder')");
    EXPECT_EQ(result.status, 0) << result.out;
}

TEST_F(PartEngine, TakesTheUnitsOfTheRunForAFileWithoutUnits) {
    shapes::write(shapes::box(1, 2, 3), corvane.folder.path("plain.brep"));
    corvane.folder.write("scripts/a.lua",
                         "local x = part.size() if math.abs(x - 25.4) > 1e-9 then error(x) end");
    const ProcessResult result =
        corvane("run", {"@rules.xml", "--part", "@plain.brep", "--units", "inch"});
    EXPECT_EQ(result.status, 0) << result.out;
}

}  // namespace
