#include "Samples.h"

namespace corvane::part::walls {
namespace {

/// Between samples inside facets, as parts of the part's size.
constexpr double kCoarse = 1.0 / 40, kFine = 1.0 / 600;
/// Samples across the width of a face.
constexpr double kAcross = 3.0;
/// Samples inside all facets together. Faces that want more than an equal share get one.
constexpr double kMostInside = 60'000;
constexpr std::size_t kMostVertices = 2'000'000;
/// Vertices nearer together than this part of the samples' spacing need one sample.
constexpr double kCrowded = 0.4;
/// How far beside a vertex its sample is, on the way to the middle of the facet.
constexpr double kInset = 1e-4;
/// Facets that turn by less than this cosine share a rounded surface.
constexpr double kRounded = 0.77;
/// Facets around a vertex that are looked at. Only a broken mesh has more, but it may have
/// millions.
constexpr std::uint32_t kMostAround = 256;

/// The most that one may get so that all together get no more than `sum`.
double shareOf(std::vector<double> wanted, double sum) {
    std::sort(wanted.begin(), wanted.end());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const double share = sum / static_cast<double>(wanted.size() - i);
        if (wanted[i] > share) return share;
        sum -= wanted[i];
    }
    return 1e300;
}

}  // namespace

Samples::Samples(const Skin& skin, Vertices vertices) : skin_(skin) {
    linkVertices();
    chooseSpacing();
    if (vertices == Vertices::Apart) chooseVertices();
}

void Samples::linkVertices() {
    const Mesh& mesh = skin_.mesh();
    first_.assign(mesh.vertices.size() + 1, 0);
    for (std::uint32_t t = 0; t < mesh.triangles.size(); ++t)
        if (skin_.usable(t))
            for (const std::uint32_t v : mesh.triangles[t])
                ++first_[v + 1];
    for (std::size_t v = 1; v < first_.size(); ++v)
        first_[v] += first_[v - 1];
    triangles_.resize(first_.back());
    std::vector<std::uint32_t> next(first_.begin(), first_.end() - 1);
    for (std::uint32_t t = 0; t < mesh.triangles.size(); ++t)
        if (skin_.usable(t))
            for (const std::uint32_t v : mesh.triangles[t])
                triangles_[next[v]++] = t;
}

/// A face is as wide as its area over half its border; grooves and ribs are narrow.
void Samples::chooseSpacing() {
    const Model& model = skin_.model();
    spacings_.assign(model.faces.size() + 1, 0.0);
    densities_.assign(model.faces.size() + 1, 0.0);
    std::vector<double> wanted;
    for (const Face& face : model.faces) {
        double border = 0.0;
        for (const auto& loop : face.loops)
            for (const int edge : loop)
                border += model.edge(edge).length;
        const double width =
            border > 0.0 ? 2.0 * face.area / border : std::sqrt(std::max(face.area, 0.0));
        const double spacing =
            std::clamp(width / kAcross, kFine * skin_.size(), kCoarse * skin_.size());
        if (!(spacing > 0.0) || !(face.area > 0.0)) continue;
        spacings_[static_cast<std::size_t>(face.number)] = spacing;
        densities_[static_cast<std::size_t>(face.number)] = 1.0 / (spacing * spacing);
        wanted.push_back(face.area / (spacing * spacing));
    }
    const double most = shareOf(std::move(wanted), kMostInside);
    for (const Face& face : model.faces) {
        double& density = densities_[static_cast<std::size_t>(face.number)];
        if (density * face.area > most) density = most / face.area;
    }
}

/// Vertices follow each other along borders, so the one before is the nearest.
void Samples::chooseVertices() {
    const Mesh& mesh = skin_.mesh();
    const auto count = static_cast<std::uint32_t>(mesh.vertices.size());
    spokesmen_.resize(count);
    spokenFor_.assign(count, 0.0);
    std::vector<std::uint32_t> last(spacings_.size(), Sample::kNoVertex);
    for (std::uint32_t v = 0; v < count; ++v) {
        spokesmen_[v] = v;
        const auto begin = triangles_.begin() + first_[v], end = triangles_.begin() + first_[v + 1];
        if (begin == end) continue;
        const auto face = static_cast<std::size_t>(mesh.faces[*begin]);
        double area = 0.0;
        const bool isOfOne = std::all_of(begin, end, [&](std::uint32_t t) {
            area += shareOfCorner(t);
            return static_cast<std::size_t>(mesh.faces[t]) == face;
        });
        if (!isOfOne) continue;
        std::uint32_t& other = last[face];
        if (other == Sample::kNoVertex ||
            distance(mesh.vertices[v], mesh.vertices[other]) > kCrowded * spacings_[face]) {
            other = v;
            continue;
        }
        spokesmen_[v] = other;
        spokenFor_[other] += area;
    }
}

/// How many samples are inside a facet. Small facets take turns by a fixed sequence.
std::uint32_t Samples::inside(std::uint32_t triangle, double area) const {
    constexpr double kGolden = 0.61803398874989485;
    const double turn = triangle * kGolden;
    const double wanted = area * densities_[static_cast<std::size_t>(skin_.mesh().faces[triangle])];
    return static_cast<std::uint32_t>(std::min(wanted, kMostInside) + (turn - std::floor(turn)));
}

/// The area of a facet for which a sample at one of its corners speaks.
double Samples::shareOfCorner(std::uint32_t triangle) const {
    const double area = skin_.area(triangle);
    return area / (3.0 * (inside(triangle, area) + 1.0));
}

Vector Samples::cornerNormal(std::uint32_t vertex, std::uint32_t triangle) const {
    const Vector own = skin_.facetNormal(triangle);
    Vector sum = own * skin_.area(triangle);
    const std::uint32_t end = std::min(first_[vertex + 1], first_[vertex] + kMostAround);
    for (std::uint32_t i = first_[vertex]; i < end; ++i) {
        const std::uint32_t t = triangles_[i];
        const bool same = skin_.mesh().faces[t] == skin_.mesh().faces[triangle];
        // Faces of a mesh are guesses; a sliver that is one looks where its neighbours look.
        if (t == triangle || !(same || skin_.model().isMesh)) continue;
        const Vector normal = skin_.facetNormal(t);
        if (dot(normal, own) > kRounded) sum = sum + normal * skin_.area(t);
    }
    return dot(sum, sum) > 0.0 ? unit(sum) : own;
}

Sample Samples::at(std::uint32_t triangle, const Vector& point, Normals& normals) const {
    const Skin::Spot spot = skin_.exactly(triangle, point);
    Sample sample{spot.point, spot.normal, triangle, Sample::kNoVertex, 0.0};
    if (spot.exact) return sample;
    const Vector &a = skin_.corner(triangle, 0), &b = skin_.corner(triangle, 1),
                 &c = skin_.corner(triangle, 2);
    const Vector whole = cross(b - a, c - a);
    const double size = dot(whole, whole);
    if (!(size > 0.0)) return sample;
    const double u = dot(cross(c - b, point - b), whole) / size,
                 v = dot(cross(a - c, point - c), whole) / size;
    if (!normals) {
        const auto& corners = skin_.mesh().triangles[triangle];
        normals = {cornerNormal(corners[0], triangle), cornerNormal(corners[1], triangle),
                   cornerNormal(corners[2], triangle)};
    }
    sample.normal = unit((*normals)[0] * u + (*normals)[1] * v + (*normals)[2] * (1.0 - u - v));
    return sample;
}

/// One sample in each face around a vertex, in the largest of the facets there.
void Samples::beside(std::uint32_t vertex, double share,
                     const std::function<void(const Sample&)>& use) const {
    const std::vector<int>& faces = skin_.mesh().faces;
    const std::uint32_t begin = first_[vertex],
                        end = std::min(first_[vertex + 1], begin + kMostAround);
    for (std::uint32_t i = begin; i < end; ++i) {
        const int face = faces[triangles_[i]];
        const auto same = [&](std::uint32_t t) { return faces[t] == face; };
        if (std::any_of(triangles_.begin() + begin, triangles_.begin() + i, same)) continue;
        std::uint32_t largest = triangles_[i];
        double most = -1.0, all = 0.0;
        for (std::uint32_t k = i; k < end; ++k) {
            if (!same(triangles_[k])) continue;
            const double area = skin_.area(triangles_[k]);
            all += shareOfCorner(triangles_[k]);
            if (area > most) {
                most = area;
                largest = triangles_[k];
            }
        }
        const Vector middle =
            (skin_.corner(largest, 0) + skin_.corner(largest, 1) + skin_.corner(largest, 2)) *
            (1.0 / 3.0);
        const Vector& point = skin_.mesh().vertices[vertex];
        Sample sample = at(largest, point + (middle - point) * kInset);
        sample.vertex = vertex;
        sample.area = (all + (spokenFor_.empty() ? 0.0 : spokenFor_[vertex])) * share;
        use(sample);
    }
}

void Samples::within(std::uint32_t triangle, const std::function<void(const Sample&)>& use) const {
    const double area = skin_.area(triangle);
    const std::uint32_t count = inside(triangle, area);
    const Vector &a = skin_.corner(triangle, 0), &b = skin_.corner(triangle, 1),
                 &c = skin_.corner(triangle, 2);
    Normals normals;
    for (std::uint32_t i = 0; i < count; ++i) {
        // A sequence that fills a square evenly, folded to the triangle (Roberts, 2018).
        double u = 0.5 + (i + 1.0) * 0.75487766624669276, v = 0.5 + (i + 1.0) * 0.56984029099805327;
        u -= std::floor(u);
        v -= std::floor(v);
        if (u + v > 1.0) {
            u = 1.0 - u;
            v = 1.0 - v;
        }
        Sample sample = at(triangle, a + (b - a) * u + (c - a) * v, normals);
        sample.area = area / (count + 1.0);
        use(sample);
    }
}

void Samples::each(const std::function<void(const Sample&)>& use) const {
    const Mesh& mesh = skin_.mesh();
    const std::size_t step = mesh.vertices.size() / kMostVertices + 1;
    for (std::size_t at = 0; at < mesh.vertices.size(); at += step) {
        const auto v = static_cast<std::uint32_t>(at);
        if (spokesman(v) == v) beside(v, static_cast<double>(step), use);
    }
    for (std::uint32_t t = 0; t < mesh.triangles.size(); ++t)
        if (skin_.usable(t)) within(t, use);
}

}  // namespace corvane::part::walls
