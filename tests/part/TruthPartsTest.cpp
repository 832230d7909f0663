// Parts of known features, made from seeds: each feature is found once with its sizes, and nothing
// else is found, however the part lies, is written and is scaled.

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "FeatureChecks.h"
#include "FeatureShapes.h"

using namespace corvane::part;
using shapes::apart;
using shapes::KnownPart;
using shapes::moved;
using shapes::turned;

namespace {

enum class Form { Plain, Turned, Mirrored, Shrunk, Grown, Inches, Assembly, Mesh, Coarse, Fine };
constexpr Form kForms[]{Form::Plain,  Form::Turned,   Form::Mirrored, Form::Shrunk, Form::Grown,
                        Form::Inches, Form::Assembly, Form::Mesh,     Form::Coarse, Form::Fine};
constexpr const char* kNames[]{"plain",  "turned",   "mirrored", "shrunk", "grown",
                               "inches", "assembly", "mesh",     "coarse", "fine"};

bool isMesh(Form form) {
    return form >= Form::Mesh;
}
shapes::Meshing meshingOf(Form form) {
    return form == Form::Coarse ? shapes::Meshing{0.1, 0.4, true}
           : form == Form::Fine ? shapes::Meshing{0.005, 0.05, true}
                                : shapes::Meshing{};
}

/// A known part as a file has it.
struct Made {
    std::shared_ptr<const Part> part;
    std::vector<gp_Trsf> places;  // one for each copy of the part
    double scale = 1.0;
    double tolerance = shapes::kExact;  // of lengths
    double angle = shapes::kExact;      // of angles

    [[nodiscard]] bool same(double found, double truth) const {
        const double wanted = truth == kNone ? kNone : truth * scale;
        return found == wanted || std::abs(found - wanted) <= tolerance;
    }
    [[nodiscard]] bool sameAngle(double found, double truth) const {
        return std::abs(found - truth) <= angle;
    }
};

Made make(const TopoDS_Shape& shape, Form form, unsigned seed) {
    Made made;
    gp_Trsf by;
    if (form == Form::Turned || form == Form::Assembly)
        by.SetRotation({{1, 2, 3}, {1, 1, 0.3}}, 0.1 * seed + 0.05);
    if (form == Form::Mirrored) by.SetMirror(gp_Ax2({3, 4, 5}, {1, 2, 3}));
    if (form == Form::Shrunk || form == Form::Grown) {
        made.scale = form == Form::Shrunk ? 0.04 : 25.0;
        by.SetScale({7, 8, 9}, made.scale);
    }
    made.places = {by};
    if (isMesh(form)) {
        const shapes::Meshing meshing = meshingOf(form);
        made.tolerance = 2.5 * meshing.deviation;  // facets keep within one on either side
        made.angle = 1.0;
        made.part = shapes::partOf(shape, ".stl", "MM", meshing);
    } else if (form == Form::Assembly) {
        gp_Trsf aside, turn;
        aside.SetTranslation({0, 400, 0});
        turn.SetRotation({{0, 0, 0}, {0, 0, 1}}, 1.0);
        made.places.push_back(by * aside * turn);
        const TemporaryFolder folder;
        const std::string file = folder.path("two.step");
        shapes::writeAssembly({shape.Moved(made.places[0]), shape.Moved(made.places[1])}, file);
        made.part = Part::open(file).part;
    } else {
        made.part = shapes::partOf(shapes::transformed(shape, by), ".step",
                                   form == Form::Inches ? "INCH" : "MM");
    }
    return made;
}

/// A file of inches or metres has the digits of its own unit.
void expectHole(const Made& made, const Hole& found, const Hole& truth) {
    EXPECT_EQ(found.bottom, truth.bottom);
    const std::pair<const char*, double Hole::*> sizes[] = {
        {"diameter", &Hole::diameter},
        {"depth", &Hole::depth},
        {"bore depth", &Hole::boreDepth},
        {"bottom radius", &Hole::bottomRadius},
        {"counterbore", &Hole::counterboreDiameter},
        {"counterbore depth", &Hole::counterboreDepth},
        {"countersink", &Hole::countersinkDiameter}};
    for (const auto& [name, size] : sizes)
        EXPECT_TRUE(made.same(found.*size, truth.*size))
            << name << ' ' << found.*size << " for " << truth.*size;
    const std::pair<const char*, double Hole::*> angles[] = {
        {"bottom angle", &Hole::bottomAngle},
        {"countersink angle", &Hole::countersinkAngle},
        {"taper", &Hole::taperAngle}};
    for (const auto& [name, angle] : angles)
        EXPECT_TRUE(made.sameAngle(found.*angle, truth.*angle))
            << name << ' ' << found.*angle << " for " << truth.*angle;
    EXPECT_TRUE(found.squareEntry && found.squareExit);
    EXPECT_EQ(found.turn, 360.0);
    EXPECT_EQ(found.freeLength, kNone);
}

void expectHoles(const Made& made, const std::vector<Hole>& truth) {
    const std::vector<Hole>& holes = made.part->holes();
    ASSERT_EQ(holes.size(), truth.size() * made.places.size());
    for (const gp_Trsf& by : made.places)
        for (const Hole& hole : truth) {
            const Vector entry = moved(hole.entry, by), axis = turned(hole.axis, by);
            const double depth = hole.depth * made.scale;
            const Vector exit{entry.x + axis.x * depth, entry.y + axis.y * depth,
                              entry.z + axis.z * depth};
            int matches = 0;
            for (const Hole& found : holes) {
                // A plain through hole has no upper end.
                const bool through = hole.bottom == HoleBottom::Through;
                const double miss = apart(found.entry, entry);
                if (std::min(miss, through ? apart(found.entry, exit) : miss) > made.tolerance)
                    continue;
                ++matches;
                expectHole(made, found, hole);
                EXPECT_NEAR(apart(found.axis, axis), miss > made.tolerance ? 2.0 : 0.0, made.angle);
            }
            EXPECT_EQ(matches, 1);
        }
}

/// Finds for each of the truth, once for each copy, one not yet used that fits; tells what has no
/// partner.
template <typename T, typename Fits>
void expectSame(const Made& made, const std::vector<T>& found, const std::vector<T>& truth,
                Fits fits) {
    ASSERT_EQ(found.size(), truth.size() * made.places.size());
    std::vector<bool> used(found.size(), false);
    for (std::size_t i = 0; i < found.size(); ++i) {
        std::size_t at = 0;
        while (at < found.size() && (used[at] || !fits(found[at], truth[i % truth.size()])))
            ++at;
        ASSERT_LT(at, found.size()) << "nothing fits number " << i % truth.size();
        used[at] = true;
    }
}

void expectPockets(const Made& made, const KnownPart& known) {
    const Part& part = *made.part;
    const std::size_t copies = made.places.size();
    EXPECT_EQ(part.fillets().size(), known.fillets * copies);
    EXPECT_EQ(part.sharpCorners().size(), known.sharp * copies);
    EXPECT_EQ(std::count_if(part.sharpCorners().begin(), part.sharpCorners().end(),
                            [](const SharpCorner& corner) { return corner.pocketWall; }),
              static_cast<std::ptrdiff_t>(known.sharpWalls * copies));
    expectSame(made, part.pockets(), known.pockets, [&](const Pocket& l, const Pocket& r) {
        const bool along =
            l.floor == 0 || std::any_of(made.places.begin(), made.places.end(), [&](auto& by) {
                return apart(l.axis, turned(r.axis, by)) <= made.angle;
            });
        return along && made.same(l.width, r.width) && made.same(l.length, r.length) &&
               made.same(l.depth, r.depth) && made.same(l.tallestWall, r.tallestWall) &&
               made.same(l.cornerRadius, r.cornerRadius) &&
               made.same(l.floorRadius, r.floorRadius) && l.open == r.open &&
               l.sharpCorner == r.sharpCorner;
    });
}

void expectTurned(const Made& made, const KnownPart& known) {
    const Turned& found = made.part->turned();
    ASSERT_TRUE(found.is) << found.reason;
    EXPECT_TRUE(made.same(found.length, known.turned.length));
    EXPECT_TRUE(made.same(found.diameter, known.turned.diameter));
    EXPECT_NEAR(found.share, 1.0, made.tolerance);
    const auto same = [&](double l, double r) { return made.same(l, r); };
    expectSame(made, found.sections, known.turned.sections, [&](const auto& l, const auto& r) {
        const bool along =
            same(l.startDiameter, r.startDiameter) && same(l.endDiameter, r.endDiameter);
        const bool against =
            same(l.startDiameter, r.endDiameter) && same(l.endDiameter, r.startDiameter);
        return l.inner == r.inner && same(l.length, r.length) && (along || against) &&
               made.sameAngle(l.taperAngle, r.taperAngle);
    });
    expectSame(made, found.grooves, known.turned.grooves, [&](const auto& l, const auto& r) {
        return same(l.width, r.width) && same(l.depth, r.depth) && same(l.diameter, r.diameter);
    });
    EXPECT_FALSE(made.part->sheetMetal().is);
}

void expectSheet(const Made& made, const KnownPart& known) {
    const SheetMetal& sheet = made.part->sheetMetal();
    ASSERT_TRUE(sheet.is) << sheet.reason;
    EXPECT_TRUE(made.same(sheet.thickness, known.sheet.thickness));
    const auto same = [&](double l, double r) { return made.same(l, r); };
    expectSame(made, sheet.bends, known.sheet.bends, [&](const Bend& l, const Bend& r) {
        return same(l.innerRadius, r.innerRadius) && made.sameAngle(l.angle, r.angle) &&
               same(l.length, r.length) && same(l.flangeLength, r.flangeLength) && !l.closed;
    });
    expectSame(made, sheet.holes, known.sheet.holes, [&](const SheetHole& l, const SheetHole& r) {
        return l.hole == r.hole && same(l.bendDistance, r.bendDistance) &&
               same(l.edgeDistance, r.edgeDistance);
    });
    EXPECT_FALSE(made.part->turned().is);
}

void expectMoulded(const Made& made, const KnownPart& known) {
    const Walls& walls = made.part->walls();
    EXPECT_TRUE(made.same(walls.smallestByRay.value, known.wall)) << walls.smallestByRay.value;
    EXPECT_TRUE(made.same(walls.smallestBySphere.value, known.wall))
        << walls.smallestBySphere.value;
    const Draft draft = made.part->draft(turned({0, 0, 1}, made.places[0]));
    EXPECT_TRUE(draft.undercuts.empty());
    std::size_t drafted = 0;
    for (const FaceDraft& face : draft.faces) {
        const bool upright = face.angle < 45.0;
        drafted += upright ? 1 : 0;
        EXPECT_TRUE(made.sameAngle(face.angle, upright ? known.draft : 90.0)) << face.angle;
    }
    EXPECT_EQ(drafted, known.drafted);
}

struct Family {
    const char* name;
    KnownPart (*make)(unsigned seed);
    unsigned seeds;
    void (*expect)(const Made& made, const KnownPart& known);
    /// One solid is asked for, or its place among others.
    bool alone = false;
};

const Family kFamilies[]{
    {"drilled", shapes::drilledBlock, 96,
     [](const Made& made, const KnownPart& known) { expectHoles(made, known.holes); }},
    {"milled", shapes::milledBlock, 48,
     [](const Made& made, const KnownPart& known) {
         EXPECT_TRUE(made.part->holes().empty());
         expectPockets(made, known);
     }},
    {"machined", shapes::machinedBlock, 24,
     [](const Made& made, const KnownPart& known) {
         expectHoles(made, known.holes);
         expectPockets(made, known);
     }},
    {"shaft", shapes::shaft, 24, expectTurned, true},
    {"strip", shapes::bentStrip, 24, expectSheet, true},
    {"cup", shapes::draftedCup, 16, expectMoulded, true}};

/// The first seed and the step to the next. Each exact form has seeds of its own; facets of each
/// part come out in another way, so that one mesh of all of them is asked, and some of the others.
std::pair<unsigned, unsigned> seedsOf(const Family& family, Form form) {
    if (form == Form::Mesh) return {0, 1};
    if (form == Form::Coarse) return {4, 6};
    if (form == Form::Fine) return {4, family.seeds / 2};
    return {static_cast<unsigned>(form), 8};
}

class TruthParts : public testing::TestWithParam<std::tuple<std::size_t, Form>> {};

}  // namespace

TEST_P(TruthParts, HaveEachFeatureOnceAndNoOther) {
    const auto& [number, form] = GetParam();
    const Family& family = kFamilies[number];
    const auto [first, step] = seedsOf(family, form);
    for (unsigned seed = first; seed < family.seeds; seed += step) {
        SCOPED_TRACE(seed);
        const KnownPart known = family.make(seed);
        const Form used = family.alone && form == Form::Assembly ? Form::Turned : form;
        const Made made = make(known.shape, used, seed);
        ASSERT_TRUE(made.part);
        family.expect(made, known);
    }
}

const auto nameOf = [](const auto& given) {
    return std::string(kFamilies[std::get<0>(given.param)].name) + "_" +
           kNames[static_cast<int>(std::get<1>(given.param))];
};
INSTANTIATE_TEST_SUITE_P(Families, TruthParts,
                         testing::Combine(testing::Range(std::size_t{0}, std::size(kFamilies)),
                                          testing::ValuesIn(kForms)),
                         nameOf);
