// Meshes that are finer than their file is exact: what each facet alone tells is little.

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>

#include "FeatureChecks.h"
#include "FeatureShapes.h"

using namespace corvane::part;

namespace {

/// A binary STL file in the making. All lies far from the origin, so that the floats are coarse.
class Facets {
public:
    explicit Facets(bool insideOut = false) : insideOut_(insideOut) {}

    void add(const Vector& a, const Vector& b, const Vector& c) {
        bytes_.append(12, '\0');
        for (const Vector& corner : {a, insideOut_ ? c : b, insideOut_ ? b : c})
            for (const double value : {corner.x + kAway, corner.y, corner.z}) {
                const auto number = static_cast<float>(value);
                bytes_.append(reinterpret_cast<const char*>(&number), sizeof number);
            }
        bytes_.append(2, '\0');
    }
    void add(const Vector& a, const Vector& b, const Vector& c, const Vector& d) {
        add(a, b, c);
        add(a, c, d);
    }
    [[nodiscard]] std::shared_ptr<const Part> part() const {
        const auto count = static_cast<std::uint32_t>(bytes_.size() / 50);
        std::string head(80, '\0');
        head.append(reinterpret_cast<const char*>(&count), sizeof count);
        const TemporaryFolder folder;
        folder.write("part.stl", head + bytes_);
        return Part::open(folder.path("part.stl")).part;
    }

private:
    static constexpr double kAway = 1500.0;
    bool insideOut_;
    std::string bytes_;
};

using Height = std::function<double(double x, double y)>;

/// A square slab with a top of that height.
void addSlab(Facets& facets, const Height& height) {
    constexpr int kSide = 40;
    const auto top = [&](int x, int y) { return Vector{1.0 * x, 1.0 * y, height(x, y)}; };
    const auto bottom = [](int x, int y) { return Vector{1.0 * x, 1.0 * y, 0.0}; };
    const auto addSide = [&](int x0, int y0, int x1, int y1) {
        facets.add(top(x0, y0), bottom(x0, y0), bottom(x1, y1), top(x1, y1));
        facets.add(bottom(x1, y1), bottom(x0, y0), bottom(kSide / 2, kSide / 2));
    };
    for (int i = 0; i < kSide; ++i) {
        for (int k = 0; k < kSide; ++k)
            facets.add(top(i, k), top(i + 1, k), top(i + 1, k + 1), top(i, k + 1));
        addSide(i, 0, i + 1, 0);
        addSide(kSide, i, kSide, i + 1);
        addSide(i + 1, kSide, i, kSide);
        addSide(0, i + 1, 0, i);
    }
}

/// A round pin beside the slab, of facets smaller than those of the slab.
void addPin(Facets& facets, double radius) {
    constexpr int kSides = 24;
    const auto at = [&](int side, double z) {
        const double angle = side % kSides * 2.0 * std::acos(-1.0) / kSides;
        return Vector{-5.0 + radius * std::cos(angle), radius * std::sin(angle), z};
    };
    for (int i = 0; i < kSides; ++i) {
        facets.add(at(i, 0), at(i + 1, 0), at(i + 1, 1), at(i, 1));
        facets.add(at(0, 1), at(i, 1), at(i + 1, 1));
        facets.add(at(0, 0), at(i + 1, 0), at(i, 0));
    }
}

std::map<SurfaceKind, int> kindsOf(const Part& part) {
    std::map<SurfaceKind, int> kinds;
    for (const Face& face : part.model().faces)
        ++kinds[face.surface.kind];
    return kinds;
}

}  // namespace

TEST(Meshes, AFreeformFaceIsOneFaceAndHidesNoOther) {
    const std::pair<const char*, Height> tops[]{
        {"nearly flat", [](double x, double y) { return 9 + std::sin(x / 40) * std::cos(y / 50); }},
        {"bowl", [](double x, double y) { return 5 + x * x / 400 + y * y / 700; }}};
    for (const auto& [name, height] : tops) {
        SCOPED_TRACE(name);
        Facets facets;
        addSlab(facets, height);
        addPin(facets, 0.7);
        const auto part = facets.part();
        ASSERT_TRUE(part);
        const std::map<SurfaceKind, int> kinds{
            {SurfaceKind::Other, 1}, {SurfaceKind::Plane, 7}, {SurfaceKind::Cylinder, 1}};
        EXPECT_EQ(kindsOf(*part), kinds);
    }
}

TEST(Meshes, AFineMeshHasTheFacesOfItsShape) {
    gp_Trsf away;
    away.SetTranslation({500, 0, 0});
    const TopoDS_Shape shape = shapes::transformed(shapes::milledBlock(6).shape, away);
    const auto exact = shapes::partOf(shape);
    const auto mesh = shapes::partOf(shape, ".stl", "MM", {0.001, 0.05, true});
    EXPECT_EQ(kindsOf(*mesh), kindsOf(*exact));
}

TEST(Meshes, ASolidThatIsWrittenInsideOutIsWhereItIs) {
    Facets right, wrong(true);
    for (Facets* facets : {&right, &wrong})
        addSlab(*facets, [](double x, double) { return 10 + x / 10; });
    const auto first = right.part(), second = wrong.part();
    ASSERT_TRUE(first && second);
    EXPECT_GT(first->volume(), 1000.0);
    EXPECT_NEAR(first->volume(), second->volume(), 1e-3);
    EXPECT_LT(shapes::apart(first->centre(), second->centre()), 1e-3);
}
