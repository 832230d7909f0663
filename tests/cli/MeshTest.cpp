#include <algorithm>
#include <bit>
#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

#include "meshengine/Measures.h"
#include "meshengine/MeshReader.h"
#include "meshengine/PartFile.h"
#include "support/TemporaryFolder.h"

namespace {

using meshengine::Mesh;
using meshengine::Vector;
using testing::HasSubstr;

using Facets = std::vector<Vector>;

/// A box from one corner to the other, facets outward.
Facets box(const Vector& low, const Vector& high) {
    const auto point = [&](int bits) {
        return Vector{bits & 1 ? high.x : low.x, bits & 2 ? high.y : low.y,
                      bits & 4 ? high.z : low.z};
    };
    constexpr int sides[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                 {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    Facets facets;
    for (const auto& side : sides)
        for (const int corner : {0, 1, 2, 0, 2, 3})
            facets.push_back(point(side[corner]));
    return facets;
}

Facets turned(Facets facets) {
    for (std::size_t i = 0; i < facets.size(); i += 3)
        std::swap(facets[i], facets[i + 1]);
    return facets;
}

Facets operator+(Facets a, const Facets& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

void append32(std::string& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
}

std::string binary(const Facets& facets, std::string header = "part") {
    header.resize(80, ' ');
    std::string bytes = header;
    append32(bytes, static_cast<std::uint32_t>(facets.size() / 3));
    for (std::size_t i = 0; i < facets.size(); ++i) {
        if (i % 3 == 0) bytes.append(12, '\0');
        for (const std::size_t axis : {0U, 1U, 2U})
            append32(bytes, std::bit_cast<std::uint32_t>(static_cast<float>(facets[i][axis])));
        if (i % 3 == 2) bytes.append(2, '\0');
    }
    return bytes;
}

double thicknessOf(const Mesh& mesh) {
    return meshengine::thinnestWall(mesh).value_or(meshengine::Wall{-1, {}, {}}).thickness;
}

std::string text(const std::string& corner = "0 1 0") {
    return "solid part\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex " +
           corner + "\nendloop\nendfacet\nendsolid part\n";
}

TEST(MeshMeasures, KnownSolidsHaveTheirKnownMeasures) {
    const Facets cube = box({0, 0, 0}, {2, 2, 2});
    const Facets tetra{{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 0}, {1, 0, 0}, {0, 0, 1},
                       {0, 0, 0}, {0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const struct {
        const char* name;
        Facets facets;
        double volume, area, wall;
    } cases[] = {
        {"cube", cube, 8, 24, 2},
        // Straight up from the middle of an upright face to the slanted one.
        {"tetrahedron", tetra, 1.0 / 6, 1.5 + std::sqrt(3.0) / 2, 1 / 3.0},
        {"plate far off", box({1e6, 1e6, 1e6}, {1e6 + 10, 1e6 + 20, 1e6 + 0.5}), 100, 430, 0.5},
        {"hollow cube", box({0, 0, 0}, {10, 10, 10}) + turned(box({3, 3, 3}, {9, 7, 7})), 1000 - 96,
         600 + 128, 1},
    };
    for (const auto& [name, facets, volume, area, wall] : cases) {
        SCOPED_TRACE(name);
        const Mesh mesh = meshengine::weld(facets);
        EXPECT_EQ(meshengine::openEdges(mesh), 0U);
        EXPECT_NEAR(meshengine::enclosedVolume(mesh).value_or(-1), volume, volume * 1e-9);
        EXPECT_NEAR(meshengine::surfaceArea(mesh), area, area * 1e-9);
        EXPECT_NEAR(thicknessOf(mesh), wall, 1e-9);
        EXPECT_NEAR(*meshengine::enclosedVolume(meshengine::weld(turned(facets))), -volume,
                    volume * 1e-9);
    }
}

TEST(MeshMeasures, OpenEdgesAreThoseThatTwoOppositeFacetsDoNotShare) {
    const Facets cube = box({0, 0, 0}, {1, 1, 1});
    const Facets first(cube.begin(), cube.begin() + 3);
    const Facets rest(cube.begin() + 3, cube.end());
    const struct {
        const char* name;
        Facets facets;
        std::size_t open;
    } cases[] = {
        {"facet missing", rest, 3},
        {"facet turned around", turned(first) + rest, 3},
        {"facet twice", first + cube, 3},
        {"facet without area", Facets{{0, 0, 0}, {0, 0, 0}, {1, 0, 0}} + cube, 2},
        {"nearly equal corner", Facets{first[0], first[1], first[2] + Vector{1e-12, 0, 0}} + rest,
         4},
    };
    for (const auto& [name, facets, open] : cases) {
        SCOPED_TRACE(name);
        const Mesh mesh = meshengine::weld(facets);
        EXPECT_EQ(meshengine::openEdges(mesh), open);
        EXPECT_FALSE(meshengine::enclosedVolume(mesh));
    }
    EXPECT_FALSE(meshengine::thinnestWall(meshengine::weld(first))) << "nothing lies opposite";
}

TEST(MeshMeasures, TheThinnestWallGoesFromOneSideToTheOther) {
    const Facets hollow = box({0, 0, 0}, {10, 10, 10}) + turned(box({3, 3, 3}, {9, 7, 7}));
    const auto wall = meshengine::thinnestWall(meshengine::weld(hollow));
    ASSERT_TRUE(wall);
    EXPECT_EQ(std::min(wall->from.x, wall->to.x), 9);
    EXPECT_EQ(std::max(wall->from.x, wall->to.x), 10);
    for (const std::size_t axis : {1U, 2U}) {
        EXPECT_EQ(wall->from[axis], wall->to[axis]);
        EXPECT_GT(wall->from[axis], 3) << "beside the hollow the wall is thicker";
        EXPECT_LT(wall->from[axis], 7);
    }
}

/// A tube of thin facets: many rays, each of which must find its own opposite side.
TEST(MeshMeasures, TheThinnestWallOfAFineTubeIsFoundInTheTree) {
    constexpr int kSteps = 1000;
    const auto circle = [](double radius, int step, double x, double z) {
        const double angle = 2 * std::numbers::pi * step / kSteps;
        return Vector{x + radius * std::cos(angle), radius * std::sin(angle), z};
    };
    Facets facets;
    const auto quad = [&](const Vector& a, const Vector& b, const Vector& c, const Vector& d) {
        for (const Vector& corner : {a, b, c, a, c, d})
            facets.push_back(corner);
    };
    for (int i = 0; i < kSteps; ++i) {
        const auto outer = [&](int step, double z) { return circle(10, step, 0, z); };
        const auto inner = [&](int step, double z) { return circle(8, step, 0.5, z); };
        quad(outer(i, 0), outer(i + 1, 0), outer(i + 1, 50), outer(i, 50));
        quad(inner(i + 1, 0), inner(i, 0), inner(i, 50), inner(i + 1, 50));
    }
    EXPECT_NEAR(thicknessOf(meshengine::weld(facets)), 1.5, 0.001);
}

TEST(MeshReader, BothFormsOfOneFileGiveTheSameMesh) {
    const Facets triangle{{0, 0, 0}, {1, 0, 0}, {0, 1.5, -0.25}};
    std::string shouted = text("+0 1.5 -25e-2");
    std::transform(shouted.begin(), shouted.end(), shouted.begin(),
                   [](char unit) { return unit >= 'a' ? static_cast<char>(unit - 32) : unit; });
    const std::string twoLines =
        "solid a\nendsolid a\nsolid facet b\r\n" + text("0 1.5 -.25").substr(11);
    for (const std::string& bytes : {text("0 1.5 -0.25"), shouted, twoLines, binary(triangle),
                                     binary(triangle, "solid but binary")}) {
        const meshengine::ReadResult result = meshengine::parseMesh(bytes);
        ASSERT_TRUE(result.mesh) << result.error << '\n' << bytes;
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ(result.mesh->corner(0, i), triangle[i]);
    }
}

TEST(MeshReader, APartIsReadOnceUntilItsFileChanges) {
    const TemporaryFolder folder;
    const std::string path = folder.path("part.stl");
    const auto past = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    const auto read = [&](const std::string& bytes, std::filesystem::file_time_type written) {
        folder.write("part.stl", bytes);
        std::filesystem::last_write_time(path, written);
        std::string error;
        return meshengine::readPart(path, error);
    };
    const auto first = read(text("0 1 0"), past);
    ASSERT_TRUE(first);
    EXPECT_EQ(read(text("0 1 0"), past), first);

    const auto heightOf = [](const Mesh& mesh) { return meshengine::boundingSize(mesh).y; };
    EXPECT_EQ(heightOf(*read(text("0 20 0"), past)), 20) << "another size";
    EXPECT_EQ(heightOf(*read(text("0 30 0"), past + std::chrono::seconds(1))), 30)
        << "another time";
    const auto now = std::filesystem::file_time_type::clock::now();
    EXPECT_EQ(heightOf(*read(text("0 40 0"), now)), 40);
    EXPECT_EQ(heightOf(*read(text("0 50 0"), now)), 50) << "the time proves nothing yet";
    EXPECT_EQ(heightOf(*first), 1) << "whoever has a part keeps it";

    std::filesystem::remove(path);
    std::string error;
    EXPECT_FALSE(meshengine::readPart(path, error));
    EXPECT_EQ(error, path + ": no such file");
}

TEST(MeshReader, HostileBytesAreRefusedWithTheirPlace) {
    const Facets cube = box({0, 0, 0}, {1, 1, 1});
    const std::string good = binary(cube);
    std::string huge = good;
    huge.replace(80, 4, "\xFF\xFF\xFF\xFF");
    Facets nan = cube;
    nan[4].y = std::nan("");
    Facets infinite = cube;
    infinite[35].z = HUGE_VAL;
    const struct {
        std::string bytes;
        const char* error;
    } cases[] = {
        {"", "line 1: expected \"solid\", found the end of the file"},
        {"solid", "line 1: expected \"facet\" or \"endsolid\", found the end"},
        {"solid a\nendsolid", "no triangles"},
        {binary({}), "no triangles"},
        {good.substr(0, good.size() - 1), "length"},
        {good + '\0', "length"},
        {good.substr(0, 83), "length"},
        {huge, "length"},
        {binary(nan), "triangle 2"},
        {binary(infinite), "triangle 12"},
        {text("0 nan 0"), "line 6: expected finite coordinates, found \"0\""},
        {text("0 1e999 0"), "line 6: expected a number, found \"1e999\""},
        {text("0 -inf 0"), "line 6: expected finite"},
        {text("0 1e10 0"), "line 6: expected finite"},
        {text("0 0x1 0"), "line 6: expected a number, found \"0x1\""},
        {text("0 ++1 0"), "line 6: expected a number"},
        {text("0 1"), "line 7: expected a number, found \"endloop\""},
        {text("0 1 0 0"), "line 6: expected \"endloop\", found \"0\""},
        {text().substr(0, text().find("endfacet")), "found the end of the file"},
        {text() + "facet", "expected \"solid\" or the end"},
    };
    for (const auto& [bytes, error] : cases) {
        const meshengine::ReadResult result = meshengine::parseMesh(bytes);
        EXPECT_FALSE(result.mesh) << error;
        EXPECT_THAT(result.error, HasSubstr(error));
    }
}

}  // namespace
