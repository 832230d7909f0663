#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

#include "MeshModel.h"
#include "Reading.h"
#include "StlPrecision.h"
#include "Weld.h"

namespace corvane::part::reading {
namespace {

static_assert(std::endian::native == std::endian::little, "binary STL is little endian");

constexpr std::size_t kHeader = 84, kFacet = 50;
constexpr std::size_t kMostFacets = 20'000'000;

/// What a file holds. A facet with a coordinate that is no number is nowhere, and left out.
struct Facets {
    std::vector<StlFacet> all;
    std::size_t nowhere = 0;
    WrittenDigits digits;

    void add(const StlFacet& facet) {
        const auto isFinite = [](float value) { return std::isfinite(value); };
        const bool isSomewhere = std::all_of(facet.begin(), facet.end(), [&](const auto& corner) {
            return std::all_of(corner.begin(), corner.end(), isFinite);
        });
        if (isSomewhere)
            all.push_back(facet);
        else
            ++nowhere;
    }
};

bool isBinary(const std::string& bytes) {
    if (bytes.size() < kHeader) return false;
    std::uint32_t count = 0;
    std::memcpy(&count, bytes.data() + 80, sizeof count);
    // A text that begins like a binary file never has exactly this length.
    return bytes.size() == kHeader + std::size_t{count} * kFacet ||
           bytes.compare(0, 5, "solid") != 0;
}

std::string readBinary(const std::string& bytes, Facets& facets) {
    std::uint32_t count = 0;
    std::memcpy(&count, bytes.data() + 80, sizeof count);
    if (count > kMostFacets) return "the STL file has too many facets";
    if (bytes.size() < kHeader + std::size_t{count} * kFacet) return "the STL file is cut short";
    for (std::size_t i = 0; i < count; ++i) {
        StlFacet facet;
        std::memcpy(&facet, bytes.data() + kHeader + i * kFacet + 12, sizeof facet);
        facets.add(facet);
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

bool number(std::string_view text, float& value) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    // Through double, which still holds what is too small for a float.
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return false;
    value = static_cast<float>(number);
    return true;
}

std::string readText(std::string_view rest, Facets& facets) {
    StlFacet facet{};
    std::size_t corner = 0;
    for (std::string_view next = word(rest); !next.empty(); next = word(rest)) {
        if (next == "facet") {
            if (corner % 3 != 0) return "a facet of the STL file has fewer than three corners";
            corner = 0;
        }
        if (next != "vertex") continue;
        if (corner == 3) return "a facet of the STL file has more than three corners";
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::string_view text = word(rest);
            if (!number(text, facet[corner][axis]))
                return "a vertex of the STL file is no three numbers";
            facets.digits.add(text, axis);
        }
        if (++corner == 3) facets.add(facet);
        if (facets.all.size() > kMostFacets) return "the STL file has too many facets";
    }
    return corner % 3 == 0 ? std::string() : "the STL file is cut short";
}

/// Tells of the facets that are not in the mesh.
void tellLeftOut(const Facets& facets, std::size_t kept, Model& model) {
    if (facets.nowhere > 0)
        model.damages.push_back({Damage::Kind::Missing,
                                 "the shape lacks facets with corners that are no numbers, " +
                                     std::to_string(facets.nowhere) + " in all",
                                 {},
                                 {}});
    if (kept < facets.all.size())
        model.notes.push_back(
            "facets that the rounding of coordinates makes lines or points are "
            "left out, " +
            std::to_string(facets.all.size() - kept) + " in all");
}

}  // namespace

Result readStl(const std::filesystem::path& file, double factor) {
    Result result;
    const std::string bytes = contentOf(file);
    Facets facets;
    result.error = isBinary(bytes) ? readBinary(bytes, facets) : readText(bytes, facets);
    if (!result.error.empty()) return result;
    Mesh mesh = weld(facets.all, factor);
    const std::size_t kept = mesh.triangles.size();
    if (mesh.triangles.empty()) {
        result.error = "the STL file has no facets";
        return result;
    }
    const double precision = precisionOf(mesh, factor, facets.digits);
    result = modelOf(std::move(mesh), precision);
    findDamages(result.model);
    tellLeftOut(facets, kept, result.model);
    return result;
}

}  // namespace corvane::part::reading
