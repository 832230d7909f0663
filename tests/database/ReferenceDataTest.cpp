// The seed and its lookups, in a file and behind the driver manager of servers.

#include <cmath>
#include <set>
#include <tuple>

#include "database/CollectorTest.h"

namespace {

enum class Place { File, Server };

class Reference : public testing::TestWithParam<Place> {
protected:
    Reference() { EXPECT_THAT(collector->installSchema(), IsOk()); }

    std::unique_ptr<IConnectorData> connector() const {
        const CStringW file = folder.wide("rules.dat");
        if (GetParam() == Place::File)
            return std::make_unique<SQLLiteConnectorData>(kSqliteDriver, file);
        return std::make_unique<MSSQLConnectorData>(u"QorOdbcDatabaseu.dll", sourceOf(file));
    }

    const TemporaryFolder folder;
    const CollectorScope collector{*connector()};
    IReferenceData& reference = collector.reference();
};

INSTANTIATE_TEST_SUITE_P(All, Reference, testing::Values(Place::File, Place::Server));

TEST_P(Reference, HasTapDrillsThatFitTheirThreadsAndCanBeBought) {
    for (const double nominal : {1.0,  1.6,  2.5,  3.5,  5.0,  6.0,  8.0,  10.0, 12.0, 16.0,
                                 18.0, 20.0, 22.0, 24.0, 30.0, 36.0, 42.0, 48.0, 52.0, 68.0}) {
        const auto threads = reference.threads(nominal);
        ASSERT_THAT(threads.status(), IsOk()) << nominal;
        EXPECT_EQ((*threads)[0].series, u"coarse");
        for (const ThreadHole& thread : *threads) {
            const double pitch = thread.pitch;
            // ISO 965-1: the limits of the minor diameter, tolerance 6H.
            const double least = nominal - 1.0825318 * pitch;
            const double tolerance =
                pitch < 1 ? 433 * pitch - 190 * std::pow(pitch, 1.22) : 230 * std::pow(pitch, 0.7);
            EXPECT_GE(thread.tapDrill, least) << thread.designation.ToUtf8();
            EXPECT_LE(thread.tapDrill, least + tolerance / 1000) << thread.designation.ToUtf8();
            const auto drill = reference.nearestDrill(thread.tapDrill, false);
            EXPECT_EQ(drill->diameter, thread.tapDrill) << thread.designation.ToUtf8();
            EXPECT_FALSE(thread.source.IsEmpty());
        }
    }
}

TEST_P(Reference, FindsThreadsInEveryWayOfWriting) {
    const std::pair<std::u16string_view, const char16_t*> cases[] = {
        {u"M6", u"M6"},
        {u"m8X1", u"M8x1"},
        {u"M8 \u00D7 1", u"M8x1"},
        {u"M8x1.25", u"M8"},
        {u"M2.5", u"M2.5"},
        {u"M8x2", nullptr},
        {u"M13", nullptr},
        {u"", nullptr},
        {std::u16string_view(u"M6\0x", 4), nullptr},
        {u"' OR 1=1 --", nullptr},
    };
    for (const auto& [asked, found] : cases) {
        const auto thread = reference.thread(asked);
        EXPECT_EQ(thread.status().code, found ? ErrorCode::Ok : ErrorCode::NotFound);
        EXPECT_EQ(thread ? thread->designation : CStringW(), found);
    }
}

TEST_P(Reference, FindsTheNearestDrillAndTheSmallerOfTwo) {
    const std::tuple<double, bool, double> cases[] = {
        {4.24, false, 4.2}, {4.26, false, 4.3}, {4.25, false, 4.2}, {1.075, false, 1.05},
        {4.24, true, 4},    {4.26, true, 4.5},  {0, false, 0.2},    {1e17, false, 62},
    };
    for (const auto& [asked, preferred, found] : cases)
        EXPECT_EQ(reference.nearestDrill(asked, preferred)->diameter, found) << asked;
    const auto all = reference.drillSizes(false);
    for (std::size_t i = 1; i < all->size(); ++i)
        EXPECT_LT((*all)[i - 1].diameter, (*all)[i].diameter);
    const auto preferred = reference.drillSizes(true);
    EXPECT_GT(all->size(), 2 * preferred->size());
    for (const DrillSize& drill : *preferred)
        EXPECT_EQ(drill.diameter * 2, std::floor(drill.diameter * 2));
}

TEST_P(Reference, HasClearanceHolesForEveryFit) {
    // 6.000000000000001
    EXPECT_EQ(reference.clearanceHole(3 * 0.1 * 20, ClearanceFit::Fine)->diameter, 6.4);
    EXPECT_EQ(reference.clearanceHole(8, ClearanceFit::Medium)->diameter, 9);
    EXPECT_EQ(reference.clearanceHole(12, ClearanceFit::Coarse)->diameter, 14.5);
    EXPECT_THAT(reference.clearanceHole(13, ClearanceFit::Fine).status(),
                Fails(ErrorCode::NotFound));
}

TEST_P(Reference, BendsByMaterialOrGroupInTheRangeThatHoldsTheThickness) {
    constexpr auto kAcross = BendDirection::Across;
    constexpr auto kAlong = BendDirection::Along;
    const std::tuple<const char16_t*, double, BendDirection, double> cases[] = {
        {u"S235JR", 1.5, kAcross, 1.6},   {u"s235", 1.51, kAcross, 2.5},
        {u"S235J2", 4, kAlong, 6},        {u"S355", 20, kAlong, 63},
        {u"S355", 15 * 0.1, kAlong, 2.5}, {u"S700MC", 3, kAlong, 4.5},
        {u"S700MC", 3.01, kAcross, 6.02}, {u"EN AW-6082 T6", 2, kAcross, 7},
    };
    for (const auto& [material, thickness, direction, radius] : cases) {
        const auto bend = reference.bendRadius(material, thickness, direction);
        ASSERT_THAT(bend.status(), IsOk());
        EXPECT_DOUBLE_EQ(bend->radius, radius) << thickness;
    }
    for (const auto& [material, thickness] : {std::pair(u"S355", 20.1),
                                              {u"S235", 1.0},
                                              {u"S355MC", 1.4},
                                              {u"DC01", 2.0},
                                              {u"milk", 2.0}}) {
        EXPECT_THAT(reference.bendRadius(material, thickness, kAlong).status(),
                    Fails(ErrorCode::NotFound));
    }
}

TEST_P(Reference, KnowsTheBendsOfEachMaterialThatNamesAGroup) {
    std::set<CStringW> groups;
    for (const Material& material : *reference.materials()) {
        groups.insert(material.group);
        EXPECT_GT(material.tensileStrength, material.yieldStrength);
        if (material.bendGroup.IsEmpty()) continue;
        const auto bend = reference.bendRadius(material.name, 2, BendDirection::Along);
        EXPECT_THAT(bend.status(), IsOk()) << material.name.ToUtf8();
    }
    EXPECT_EQ(groups, (std::set<CStringW>{u"aluminium", u"stainless steel", u"steel"}));
    EXPECT_EQ(reference.material(u"s355jr")->yieldStrength, 355);
}

TEST_P(Reference, TakesTheWallOfTheMaterialBeforeTheOneOfAnyMaterial) {
    EXPECT_EQ(reference.minimumWall(u"Die Casting", u"zinc")->minimum, 0.63);
    EXPECT_THAT(run(*collector, u"INSERT INTO qor_minimum_wall VALUES (?, ?, ?, ?)",
                    {u"FDM", u"ABS", 1.2, u"house rule 7"}),
                IsOk());
    EXPECT_EQ(reference.minimumWall(u"fdm", u"abs")->minimum, 1.2);
    EXPECT_EQ(reference.minimumWall(u"FDM", u"PLA")->material, u"any");
    EXPECT_THAT(reference.minimumWall(u"die casting", u"wood").status(),
                Fails(ErrorCode::NotFound));
    EXPECT_GT(reference.minimumWalls()->size(), 25U);
    EXPECT_THAT(run(*collector, u"INSERT INTO qor_bend_radius VALUES (?, ?, ?, ?, ?, ?, ?)",
                    {u"own", 0.0, 9.0, u"any", Value(), Value(), u"house rule 8"}),
                IsOk());
    EXPECT_THAT(reference.bendRadius(u"own", 1, BendDirection::Along).status(),
                Fails(ErrorCode::BadRow));
}

TEST_P(Reference, RefusesWhatIsNoLength) {
    for (const double length : {-1.0, std::nan(""), HUGE_VAL}) {
        for (const Status& status :
             {reference.nearestDrill(length, false).status(), reference.threads(length).status(),
              reference.clearanceHole(length, ClearanceFit::Fine).status(),
              reference.bendRadius(u"S235", length, BendDirection::Along).status()})
            EXPECT_THAT(status, Fails(ErrorCode::BadParameter));
    }
}

}  // namespace
