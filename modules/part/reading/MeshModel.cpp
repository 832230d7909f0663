#include "MeshModel.h"

#include "../Elementary.h"
#include "../Vec.h"
#include "../facets/Borders.h"
#include "../facets/Regions.h"
#include "../facets/Settle.h"

namespace corvane::part::reading {
namespace {

class Builder {
public:
    Builder(Mesh mesh, double precision)
        : mesh_(std::move(mesh)), precision_(precision), topology_(mesh_) {}

    Result build();
    Mesh takeMesh() { return std::move(mesh_); }

private:
    void addSolids();
    void addTo(Solid& solid, std::uint32_t facet) const;
    void addFaces(const facets::Strips& strips);
    [[nodiscard]] Vector middleOf(std::uint32_t facet) const {
        const auto& t = mesh_.triangles[facet];
        return (mesh_.vertices[t[0]] + mesh_.vertices[t[1]] + mesh_.vertices[t[2]]) * (1.0 / 3.0);
    }
    void addFace(const facets::Strips& strips, const facets::Region& region);

    Mesh mesh_;
    double precision_;
    MeshTopology topology_;
    Model model_;
    std::vector<std::uint32_t> solidOf_;
};

void Builder::addSolids() {
    Groups groups(mesh_.triangles.size());
    for (const MeshEdge& edge : topology_.edges)
        for (std::size_t i = 1; i < edge.facets.size(); ++i)
            groups.join(edge.facets[0], edge.facets[i]);
    std::vector<std::uint32_t> shellOf;
    std::vector<Solid> shells(groups.number(shellOf));
    std::vector<bool> open(shells.size(), false);
    for (const MeshEdge& edge : topology_.edges)
        if (edge.facets.size() != 2) open[shellOf[edge.facets[0]]] = true;
    for (std::uint32_t facet = 0; facet < mesh_.triangles.size(); ++facet)
        addTo(shells[shellOf[facet]], facet);
    // A closed shell with its inside out bounds a hollow of the solid before it.
    for (std::size_t s = 0; s < shells.size(); ++s) {
        if (open[s]) continue;
        if (shells[s].volume < 0.0 && !model_.solids.empty()) {
            Solid& outer = model_.solids.back();
            outer.volume += shells[s].volume;
            outer.area += shells[s].area;
            outer.centre = outer.centre + shells[s].centre;
            shells[s].number = outer.number;
            continue;
        }
        if (shells[s].volume < 0.0) {
            shells[s].volume = -shells[s].volume;
            shells[s].centre = -shells[s].centre;
        }
        shells[s].number = static_cast<int>(model_.solids.size()) + 1;
        model_.solids.push_back(shells[s]);
    }
    for (Solid& solid : model_.solids)
        if (solid.volume > 0.0) solid.centre = solid.centre * (1.0 / solid.volume);
    for (const std::uint32_t shell : shellOf)
        solidOf_.push_back(static_cast<std::uint32_t>(shells[shell].number));
}

/// The facet's part of the volume, the area and the centre, which counts as often as the volume.
void Builder::addTo(Solid& solid, std::uint32_t facet) const {
    const auto& t = mesh_.triangles[facet];
    const Vector &a = mesh_.vertices[t[0]], &b = mesh_.vertices[t[1]], &c = mesh_.vertices[t[2]];
    const double volume = dot(a, cross(b, c)) / 6.0;
    solid.volume += volume;
    solid.area += topology_.areas[facet];
    solid.centre = solid.centre + (a + b + c) * (volume / 4.0);
}

/// Degrees that the facets go around the axis of the surface together.
double turnAround(const Surface& s, const Mesh& mesh, double rounding,
                  const std::vector<std::uint32_t>& facets) {
    const Vector x = squareTo(s.axis), y = cross(s.axis, x);
    std::vector<std::pair<double, double>> arcs;
    for (const std::uint32_t facet : facets) {
        std::vector<double> angles;
        for (const std::uint32_t vertex : mesh.triangles[facet]) {
            const Vector from = mesh.vertices[vertex] - s.origin;
            const double u = dot(from, x), v = dot(from, y);
            // A corner on the axis is in every direction.
            if (std::hypot(u, v) > 4.0 * rounding) angles.push_back(degrees(std::atan2(v, u)));
        }
        if (angles.empty()) continue;
        std::sort(angles.begin(), angles.end());
        if (angles.back() - angles.front() <= 180.0) {
            arcs.emplace_back(angles.front(), angles.back());
            continue;
        }
        // Over the seam of the angles.
        const auto first =
            std::find_if(angles.begin(), angles.end(), [](double a) { return a > 0.0; });
        arcs.emplace_back(*first, 180.0);
        arcs.emplace_back(-180.0, *std::prev(first));
    }
    std::sort(arcs.begin(), arcs.end());
    double covered = 0.0, end = -180.0;
    for (const auto& [from, to] : arcs) {
        covered += std::max(0.0, to - std::max(from, end));
        end = std::max(end, to);
    }
    return covered > 359.9 ? 360.0 : covered;
}

/// The places of curved surfaces near their facets; a ball's axis through the middle of its face.
Surface placed(Surface s, const Vector& middle) {
    if (s.kind == SurfaceKind::Sphere && distance(middle, s.origin) > 1e-3 * s.radius)
        s.axis = unit(middle - s.origin);
    if (s.kind != SurfaceKind::Cylinder && s.kind != SurfaceKind::Cone) return s;
    const double along = dot(middle - s.origin, s.axis);
    s.origin = s.origin + s.axis * along;
    if (s.kind == SurfaceKind::Cone) s.radius += along * std::tan(radians(s.halfAngle));
    return s;
}

void Builder::addFace(const facets::Strips& strips, const facets::Region& region) {
    Face face;
    face.number = static_cast<int>(model_.faces.size()) + 1;
    face.concave = region.concave;
    Vector middle;
    double widest = -1.0;
    std::uint32_t shown = 0;  // the facet whose middle is farthest from a border, about
    for (const std::uint32_t facet : region.facets) {
        mesh_.faces[facet] = face.number;
        const double area = topology_.areas[facet];
        face.area += area;
        middle = middle + middleOf(facet) * area;
        if (area <= widest) continue;
        widest = area;
        shown = facet;
    }
    if (face.area > 0.0) middle = middle * (1.0 / face.area);
    face.surface = placed(region.surface, middle);
    face.point = middleOf(shown);
    face.normal = topology_.normals[shown];
    const Offset offset = offsetFrom(face.surface, face.point);
    if (offset.isKnown) {
        face.point = face.point - offset.outward * offset.distance;
        face.normal = face.concave ? -offset.outward : offset.outward;
    }
    if (face.surface.kind != SurfaceKind::Plane && face.surface.kind != SurfaceKind::Other)
        face.turn = turnAround(face.surface, mesh_, strips.rounding(), region.facets);
    face.solid = static_cast<int>(solidOf_[shown]);
    model_.faces.push_back(std::move(face));
}

/// Faces in the order of their first facets.
void Builder::addFaces(const facets::Strips& strips) {
    std::vector<facets::Region> regions = facets::findRegions(strips);
    facets::settleFacets(strips, topology_, regions);
    std::vector<std::pair<std::uint32_t, std::size_t>> order;
    for (std::size_t i = 0; i < regions.size(); ++i)
        order.emplace_back(regions[i].facets.front(), i);
    std::sort(order.begin(), order.end());
    mesh_.faces.assign(mesh_.triangles.size(), 0);
    for (const auto& [first, region] : order)
        addFace(strips, regions[region]);
}

Result Builder::build() {
    addSolids();
    const facets::Strips strips(mesh_, topology_, precision_);
    addFaces(strips);
    facets::addBorders(model_, mesh_, topology_, strips.rounding());
    model_.isMesh = true;
    Result result;
    result.model = std::move(model_);
    return result;
}

class FacetShape : public Shape {
public:
    explicit FacetShape(Mesh mesh) : mesh_(std::move(mesh)) {}
    Mesh mesh(double /*deviation*/) override { return mesh_; }
    Box box(const Frame& frame) override {
        Box box;
        for (const Vector& v : mesh_.vertices)
            add(box, {dot(v, frame.x), dot(v, frame.y), dot(v, frame.z)});
        return box;
    }
    std::vector<int> invalidFaces() override { return {}; }

private:
    Mesh mesh_;
};

}  // namespace

Result modelOf(Mesh mesh, double precision) {
    Builder builder(std::move(mesh), precision);
    Result result = builder.build();
    result.shape = std::make_unique<FacetShape>(builder.takeMesh());
    return result;
}

}  // namespace corvane::part::reading
