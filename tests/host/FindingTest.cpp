#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>

#include <corvane/host/Finding.h>

using corvane::Finding;
using corvane::FingerprintOf;
using corvane::Place;
using corvane::Point;
using Kind = corvane::Place::Kind;

namespace {

Place placeOf(Kind kind, std::vector<Point> points) {
    Place place;
    place.kind = kind;
    place.points = std::move(points);
    return place;
}

Finding thinWall() {
    Finding finding;
    finding.message = u"the wall is 1.20 mm, at least 1.5 mm are needed";
    finding.measured = 1.2;
    finding.limit = 1.5;
    finding.unit = u"mm";
    finding.places = {
        placeOf(Kind::Point, {{10, 20, 30}}), placeOf(Kind::Box, {{0, 0, 0}, {12.7, 1e4, 0.125}}),
        placeOf(Kind::Polyline, {{0, 0, 0}, {1, 1, 1}, {-2.5, 1, 1}}),
        placeOf(Kind::Facets, {{0, 0, 0}, {9, 0, 0}, {0, 9, 0}, {9, 0, 0}, {9, 9, 0}, {0, 9, 0}})};
    return finding;
}

using Change = std::function<void(Finding&)>;

CStringW fingerprintAfter(const Change& change) {
    Finding finding = thinWall();
    change(finding);
    return FingerprintOf(u"Wall", finding);
}

}  // namespace

TEST(Fingerprint, StaysTheSameForWhatASaveOrAnotherMeasurementChanges) {
    const std::pair<const char*, Change> changes[] = {
        {"measured", [](Finding& f) { f.measured = 1.1999, f.limit = 2; }},
        {"number in the message",
         [](Finding& f) { f.message = u"the wall is -3e-05 mm, at least 12,5 mm are needed"; }},
        {"label", [](Finding& f) { f.places[0].label = u"here"; }},
        {"own fingerprint", [](Finding& f) { f.fingerprint = u"abc"; }},
        {"order of places", [](Finding& f) { std::ranges::reverse(f.places); }},
        {"order of a polyline", [](Finding& f) { std::ranges::reverse(f.places[2].points); }},
        {"order of facets",
         [](Finding& f) {
             std::vector<Point>& points = f.places[3].points;
             std::rotate(points.begin(), points.begin() + 3, points.end());
         }},
        {"other cut into facets",
         [](Finding& f) {
             f.places[3].points = {{0, 0, 0}, {9, 0, 0}, {9, 9, 0},
                                   {0, 0, 0}, {9, 9, 0}, {0, 9, 0}};
         }},
    };
    const CStringW before = FingerprintOf(u"Wall", thinWall());
    EXPECT_EQ(before.GetLength(), 16);
    for (const auto& [name, change] : changes)
        EXPECT_EQ(fingerprintAfter(change), before) << name;
}

TEST(Fingerprint, DiffersForAnotherPlaceRuleOrMessage) {
    const Change changes[] = {
        [](Finding&) {},
        [](Finding& f) { f.message = u"the wall is 1.20 mm"; },
        [](Finding& f) { f.unit = u"in"; },
        [](Finding& f) { f.isNote = true; },
        [](Finding& f) { f.places[0].points[0].z += 1; },
        [](Finding& f) { f.places[1].points[1].y -= 1; },
        [](Finding& f) { f.places[2].points.pop_back(); },
        [](Finding& f) { f.places[3].points.resize(3); },
        [](Finding& f) { f.places[0].kind = Kind::Polyline; },
        [](Finding& f) { f.places.pop_back(); },
        [](Finding& f) { f.places[3] = placeOf(Kind::Faces, {}), f.places[3].faces = {3}; },
        [](Finding& f) { f.places[3] = placeOf(Kind::Faces, {}), f.places[3].faces = {4}; },
    };
    std::set<CStringW> fingerprints{FingerprintOf(u"Draft", thinWall())};
    for (const Change& change : changes)
        fingerprints.insert(fingerprintAfter(change));
    EXPECT_EQ(fingerprints.size(), std::size(changes) + 1);
}

TEST(Fingerprint, RoundCoordinatesDoNotLieOnTheEdgeOfACell) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> noise(-1e-7, 1e-7);
    int changed = 0;
    for (const double step : {0.01, 0.1, 0.25, 0.5, 1.0, 25.4 / 64}) {
        for (int i = -1000; i <= 1000; ++i) {
            Finding exact, saved;
            exact.places = {placeOf(Kind::Point, {{i * step, 0, 0}})};
            saved.places = {placeOf(Kind::Point, {{i * step + noise(random), noise(random), 0}})};
            if (FingerprintOf(u"r", exact) != FingerprintOf(u"r", saved)) ++changed;
        }
    }
    EXPECT_EQ(changed, 0);
}

TEST(Fingerprint, TakesPlacesThatAreNone) {
    constexpr double kHuge = std::numeric_limits<double>::max();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    Finding finding;
    for (const Kind kind : {Kind::Point, Kind::Box, Kind::Polyline, Kind::Facets, Kind::Faces})
        finding.places = {placeOf(kind, {}), placeOf(kind, {{kNan, kHuge, -kHuge}}),
                          placeOf(kind, {{kHuge, 0, 0}, {-kHuge, kNan, 0}, {0, 0, kHuge}})};
    finding.message = u"5e, 5e-, 5.";
    EXPECT_EQ(FingerprintOf(u"", finding).GetLength(), 16);
}
