#include "FaceCheck.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <Bnd_Box.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>
#include <vector>

#include "../Vec.h"
#include "Convert.h"
#include "MeshTopology.h"

namespace corvane::part::reading {
namespace {

/// Inner borders that are checked together. The kernel compares each with each.
constexpr std::size_t kTogether = 12;

struct Border {
    TopoDS_Shape wire;
    Box box;
    std::uint32_t group = 0;
};

bool meet(const Box& a, const Box& b) {
    return a.least.x <= b.greatest.x && b.least.x <= a.greatest.x && a.least.y <= b.greatest.y &&
           b.least.y <= a.greatest.y && a.least.z <= b.greatest.z && b.least.z <= a.greatest.z;
}

/// All wires of the face; none if it holds anything else.
std::vector<Border> bordersOf(const TopoDS_Face& face) {
    std::vector<Border> borders;
    for (TopoDS_Iterator it(face); it.More(); it.Next()) {
        if (it.Value().ShapeType() != TopAbs_WIRE) return {};
        borders.push_back({it.Value(), {}});
    }
    return borders;
}

/// Numbers groups of borders whose boxes meet, and puts those of a group next to each other.
void group(std::vector<Border>& borders) {
    Box all;
    for (const Border& border : borders) {
        add(all, border.box.least);
        add(all, border.box.greatest);
    }
    const Vector size = all.greatest - all.least;
    const double longest = std::max({size.x, size.y, size.z});
    const auto axis = size.x == longest ? &Vector::x : size.y == longest ? &Vector::y : &Vector::z;
    const auto low = [&](const Border& b) { return b.box.least.*axis; };
    const auto high = [&](const Border& b) { return b.box.greatest.*axis; };
    std::stable_sort(borders.begin(), borders.end(),
                     [&](const Border& l, const Border& r) { return low(l) < low(r); });
    Groups groups(borders.size());
    for (std::uint32_t i = 0; i < borders.size(); ++i)
        for (std::uint32_t k = i + 1; k < borders.size() && low(borders[k]) <= high(borders[i]);
             ++k)
            if (meet(borders[i].box, borders[k].box)) groups.join(i, k);
    for (std::uint32_t i = 0; i < borders.size(); ++i)
        borders[i].group = groups.find(i);
    std::stable_sort(borders.begin(), borders.end(),
                     [](const Border& l, const Border& r) { return l.group < r.group; });
}

/// A face with a part of its inner borders at a time. Borders whose boxes are apart need not be
/// compared: they do not cross, and neither holds the other, as each point in a border is on a
/// straight line of the surface between two of the border's own.
bool isValidInParts(const TopoDS_Face& face, std::vector<Border> borders) {
    const TopoDS_Wire outer = BRepTools::OuterWire(face);
    const auto found = std::find_if(borders.begin(), borders.end(), [&](const Border& border) {
        return border.wire.IsSame(outer);
    });
    if (found == borders.end()) return BRepCheck_Analyzer(face).IsValid();
    // Once: a border that is there twice is a fault.
    borders.erase(found);
    for (Border& border : borders) {
        Bnd_Box box;
        BRepBndLib::Add(border.wire, box, false);
        if (box.IsVoid()) return false;
        border.box = {from(box.CornerMin()), from(box.CornerMax())};
    }
    group(borders);
    const BRep_Builder builder;
    for (std::size_t i = 0; i < borders.size();) {
        TopoDS_Face part = TopoDS::Face(face.EmptyCopied());
        builder.Add(part, outer);
        std::size_t count = 0;
        for (; i < borders.size(); ++i, ++count) {
            const bool begins = i == 0 || borders[i].group != borders[i - 1].group;
            if (count >= kTogether && begins) break;
            builder.Add(part, borders[i].wire);
        }
        if (!BRepCheck_Analyzer(part).IsValid()) return false;
    }
    return true;
}

}  // namespace

bool isValid(const TopoDS_Face& face) {
    const TopoDS_Face forward = TopoDS::Face(face.Oriented(TopAbs_FORWARD));
    const GeomAbs_SurfaceType type = BRepAdaptor_Surface(forward, false).GetType();
    // The surfaces with straight lines.
    if (type == GeomAbs_Plane || type == GeomAbs_Cylinder || type == GeomAbs_Cone) {
        std::vector<Border> borders = bordersOf(forward);
        if (borders.size() > 2 * kTogether) return isValidInParts(forward, std::move(borders));
    }
    return BRepCheck_Analyzer(forward).IsValid();
}

}  // namespace corvane::part::reading
