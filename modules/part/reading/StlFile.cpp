#include <bit>
#include <charconv>
#include <cstring>
#include <fstream>
#include <unordered_map>

#include "../Vec.h"
#include "MeshModel.h"
#include "Reading.h"

namespace corvane::part::reading {
namespace {

static_assert(std::endian::native == std::endian::little, "binary STL is little endian");

constexpr std::size_t kHeader = 84, kFacet = 50;
constexpr std::size_t kMostFacets = 20'000'000;

/// Joins equal points, so that neighbours share their vertices.
class Joiner {
public:
    explicit Joiner(double factor) : factor_(factor) {}

    std::uint32_t add(const std::array<float, 3>& p) {
        // Zero and minus zero are one point.
        const std::array<float, 3> key{p[0] + 0.0F, p[1] + 0.0F, p[2] + 0.0F};
        const auto [it, fresh] =
            known_.emplace(key, static_cast<std::uint32_t>(mesh.vertices.size()));
        if (fresh)
            mesh.vertices.push_back({static_cast<double>(p[0]) * factor_,
                                     static_cast<double>(p[1]) * factor_,
                                     static_cast<double>(p[2]) * factor_});
        return it->second;
    }
    void addFacet(const std::array<std::array<float, 3>, 3>& points) {
        for (const auto& point : points)
            for (const float value : point)
                if (!std::isfinite(value)) return;
        const std::array<std::uint32_t, 3> corners{add(points[0]), add(points[1]), add(points[2])};
        if (corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0])
            mesh.triangles.push_back(corners);
    }

    Mesh mesh;

private:
    struct Hash {
        std::size_t operator()(const std::array<float, 3>& p) const {
            std::uint64_t h = 0;
            for (const float value : p)
                h = (h ^ std::bit_cast<std::uint32_t>(value)) * 0x9E3779B97F4A7C15U;
            return static_cast<std::size_t>(h ^ (h >> 29U));
        }
    };
    double factor_;
    std::unordered_map<std::array<float, 3>, std::uint32_t, Hash> known_;
};

bool isBinary(const std::string& bytes) {
    if (bytes.size() < kHeader) return false;
    std::uint32_t count = 0;
    std::memcpy(&count, bytes.data() + 80, sizeof count);
    // A text that begins like a binary file never has exactly this length.
    return bytes.size() == kHeader + std::size_t{count} * kFacet ||
           bytes.compare(0, 5, "solid") != 0;
}

std::string readBinary(const std::string& bytes, Joiner& joiner) {
    std::uint32_t count = 0;
    std::memcpy(&count, bytes.data() + 80, sizeof count);
    if (count > kMostFacets) return "the STL file has too many facets";
    if (bytes.size() < kHeader + std::size_t{count} * kFacet) return "the STL file is cut short";
    for (std::size_t i = 0; i < count; ++i) {
        std::array<std::array<float, 3>, 3> points;
        std::memcpy(&points, bytes.data() + kHeader + i * kFacet + 12, sizeof points);
        joiner.addFacet(points);
    }
    return {};
}

/// The next word; empty at the end.
std::string_view word(std::string_view& rest) {
    const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!rest.empty() && isSpace(rest.front()))
        rest.remove_prefix(1);
    std::size_t end = 0;
    while (end < rest.size() && !isSpace(rest[end]))
        ++end;
    const std::string_view found = rest.substr(0, end);
    rest.remove_prefix(end);
    return found;
}

bool number(std::string_view& rest, float& value) {
    std::string_view text = word(rest);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

std::string readText(std::string_view rest, Joiner& joiner) {
    std::array<std::array<float, 3>, 3> points{};
    std::size_t corner = 0;
    for (std::string_view next = word(rest); !next.empty(); next = word(rest)) {
        if (next == "facet") corner = 0;
        if (next != "vertex") continue;
        if (corner == 3) return "a facet of the STL file has more than three corners";
        for (float& value : points[corner])
            if (!number(rest, value)) return "a vertex of the STL file is no three numbers";
        if (++corner == 3) joiner.addFacet(points);
        if (joiner.mesh.triangles.size() > kMostFacets) return "the STL file has too many facets";
    }
    return {};
}

}  // namespace

Result readStl(const std::filesystem::path& file, double factor) {
    Result result;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    Joiner joiner(factor);
    result.error = isBinary(bytes) ? readBinary(bytes, joiner) : readText(bytes, joiner);
    if (!result.error.empty()) return result;
    if (joiner.mesh.triangles.empty()) {
        result.error = "the STL file has no facets";
        return result;
    }
    result = modelOf(std::move(joiner.mesh));
    findDamages(result.model);
    return result;
}

}  // namespace corvane::part::reading
