#include <array>
#include <cctype>
#include <cstdio>
#include <fstream>

#include "corvane/part/LengthUnits.h"

#include "../Vec.h"
#include "Reading.h"

namespace corvane::part::reading {
namespace {

constexpr std::uintmax_t kMostBytes = 2'000'000'000;
/// A part below a millimetre or above a hundred metres was most likely read in a wrong
/// unit.
constexpr double kSmallest = 1.0, kLargest = 100'000.0;

std::string lower(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string head(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(4096, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

/// The content says what a file is; only where it does not, the name does.
std::string kindOf(const std::filesystem::path& file, const std::string& bytes) {
    if (bytes.find("ISO-10303-21") != bytes.npos) return "step";
    if (bytes.find("CASCADE Topology") != bytes.npos || bytes.rfind("DBRep_DrawableShape", 0) == 0)
        return "brep";
    // The first section of an IGES file has an S in column 73.
    if (bytes.size() > 80 && bytes[72] == 'S' &&
        std::isdigit(static_cast<unsigned char>(bytes[79])))
        return "iges";
    const std::string ending = lower(file.extension().string());
    if (ending == ".igs" || ending == ".iges") return "iges";
    if (ending == ".stp" || ending == ".step") return "step";
    if (ending == ".brep" || ending == ".brp") return "brep";
    if (ending == ".stl" || bytes.rfind("solid", 0) == 0) return "stl";
    return {};
}

void judgeSize(Model& model) {
    Box box;
    for (const Edge& edge : model.edges)
        for (const Vector& point : edge.points)
            add(box, point);
    const double size = diagonal(box);
    if (isEmpty(box) || (size >= kSmallest && size <= kLargest)) return;
    const Vector sizes = box.greatest - box.least;
    std::array<char, 200> text{};
    std::snprintf(text.data(), text.size(), "the part is %.3g x %.3g x %.3g mm large%s", sizes.x,
                  sizes.y, sizes.z,
                  model.unitsAssumed ? ", as its file names no unit of length and mm are taken"
                                     : ": is its unit of length right?");
    model.damages.push_back({Damage::Kind::Size, text.data(), {box.least}, {}});
}

std::vector<int> usedFaces(const Edge& edge) {
    std::vector<int> faces;
    for (const int face : edge.faces)
        if (face > 0) faces.push_back(face);
    return faces;
}

}  // namespace

std::string contentOf(const std::filesystem::path& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > kMostBytes) return {};
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

void findDamages(Model& model) {
    for (const Edge& edge : model.edges)
        if (edge.convexity == Convexity::Open && edge.faces[1] == 0)
            model.damages.push_back({Damage::Kind::OpenEdge, "the surface is open along this edge",
                                     edge.points, usedFaces(edge)});
    std::vector<int> loose;
    for (const Face& face : model.faces)
        if (face.solid == 0) loose.push_back(face.number);
    if (!loose.empty())
        model.damages.push_back({Damage::Kind::NotSolid,
                                 "these faces enclose no volume",
                                 {model.face(loose.front()).point},
                                 loose});
}

Result read(const std::filesystem::path& file, const std::string& units) {
    Result result;
    const double factor = units.empty() ? 1.0 : millimetresIn(units);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    const std::string bytes = error ? std::string() : head(file);
    const std::string kind = kindOf(file, bytes);
    if (factor == 0.0) {
        result.error = "the unit of length is unknown: " + units;
    } else if (error || !std::filesystem::is_regular_file(file, error)) {
        result.error = "the file is not there or cannot be read";
    } else if (bytes.empty()) {
        result.error = "the file is empty or cannot be read";
    } else if (size > kMostBytes) {
        result.error = "the file is larger than 2 GB";
    } else if (kind.empty()) {
        result.error = "the file is no STEP, IGES, BREP or STL file";
    } else {
        result = kind == "stl" ? readStl(file, factor) : readExact(file, kind, factor);
    }
    result.model.unitsAssumed = units.empty() && result.model.units.empty();
    if (result.error.empty()) judgeSize(result.model);
    return result;
}

}  // namespace corvane::part::reading
