#include "Findings.h"

#include <cmath>

namespace fuzz {

using namespace corvane::part;

const std::string& Findings::tell() {
    whole();
    holes();
    patterns();
    corners();
    pockets();
    turned();
    sheet();
    walls();
    draft();
    overhangs();
    return text_;
}

void Findings::whole() {
    title("part");
    const Mesh& mesh = part_.mesh();
    require(mesh.faces.size() == mesh.triangles.size(), "each facet has a face");
    for (const auto& triangle : mesh.triangles)
        for (const std::uint32_t corner : triangle)
            require(corner < mesh.vertices.size(), "a facet has corners of the mesh");
    size(static_cast<double>(mesh.triangles.size()), "facets are counted");
    size(part_.area(), "an area is not negative");
    // Where a border contradicts itself there may be neither.
    if (part_.damages().empty()) {
        positive(part_.area(), "a part has an area");
        if (!model_.solids.empty()) positive(part_.volume(), "a solid has a volume");
    }
    place(part_.centre());
    const Box& box = part_.box();
    place(box.least);
    place(box.greatest);
    for (const Damage& damage : part_.damages()) {
        text_ += damage.message;
        if (!damage.faces.empty()) faces(damage.faces, false);
    }
    const OrientedBox& smallest = part_.smallestBox();
    double volume = 1.0;
    for (const double side : smallest.sizes) {
        size(side, "a box has sides");
        volume *= side;
    }
    const double aligned = (box.greatest.x - box.least.x) * (box.greatest.y - box.least.y) *
                           (box.greatest.z - box.least.z);
    require(volume <= aligned * (1.0 + 1e-6) + 1e-12, "no box is smaller than the smallest");
}

void Findings::hole(const Hole& hole) {
    const std::size_t count = part_.holes().size();
    positive(hole.diameter, "a hole has a diameter");
    positive(hole.depth, "a hole has a depth");
    size(hole.boreDepth, "a bore has a depth");
    const bool through = hole.bottom == HoleBottom::Through;
    text_ += std::to_string(static_cast<int>(hole.bottom)) + ' ';
    require(through || hole.squareExit, "a blind hole has no exit");
    angle(hole.bottomAngle, 180, "a tip has an angle");
    require((hole.bottomAngle > 0.0) == (hole.bottom == HoleBottom::Conical), "a cone has a tip");
    size(hole.bottomRadius, "a bottom has a radius");
    require(!through || hole.bottomRadius == 0.0, "a hole is through or has a bottom");
    size(hole.counterboreDiameter, "a counterbore has a diameter");
    size(hole.counterboreDepth, "a counterbore has a depth");
    size(hole.countersinkDiameter, "a countersink has a diameter");
    angle(hole.countersinkAngle, 180, "a countersink has an angle");
    angle(hole.taperAngle, 180, "a taper has an angle");
    flag(hole.squareEntry);
    angle(hole.entryAngle, 180, "an entry has an angle");
    angle(hole.turn, 360, "a hole goes around once at most");
    face(hole.entryFace, false);
    place(hole.entry);
    direction(hole.axis, true);
    for (const double value :
         {hole.edgeDistance, hole.wallDistance, hole.holeDistance, hole.freeLength})
        distance(value, "a distance is none or 0 at least");
    among(hole.nearestHole, count);
    require(hole.nearestHole != hole.number, "a hole is not beside itself");
    require((hole.nearestHole == 0) == (hole.holeDistance == kNone), "a distance is to a hole");
    among(hole.pattern, part_.holePatterns().size());
    for (const int other : hole.aligned) {
        among(other, count);
        require(other != hole.number && other > 0, "a hole is in line with others");
    }
    sections(hole);
    faces(hole.faces);
}

void Findings::sections(const Hole& hole) {
    require(!hole.sections.empty(), "a hole has sections");
    for (const HoleSection& section : hole.sections) {
        size(section.length, "a section has a length");
        size(section.startDiameter, "a section has a diameter");
        size(section.endDiameter, "a section has a diameter");
        angle(section.turn, 360, "a section goes around once at most");
        faces(section.faces, false);
    }
}

void Findings::holes() {
    int number = 0;
    for (const Hole& each : part_.holes()) {
        title("hole");
        require(each.number == ++number, "holes are numbered");
        hole(each);
    }
}

void Findings::patterns() {
    int number = 0;
    for (const HolePattern& pattern : part_.holePatterns()) {
        title("pattern");
        require(pattern.number == ++number, "patterns are numbered");
        require(pattern.holes.size() > 1, "a pattern has holes");
        positive(pattern.diameter, "a pattern has a diameter");
        size(pattern.pitch, "a pattern has a pitch");
        size(pattern.secondPitch, "a pattern has a pitch");
        size(pattern.circleDiameter, "a pattern has a circle");
        for (const int each : pattern.holes) {
            among(each, part_.holes().size());
            require(each > 0 && part_.holes()[static_cast<std::size_t>(each - 1)].pattern == number,
                    "a hole knows its pattern");
        }
    }
}

void Findings::corners() {
    for (const Fillet& fillet : part_.fillets()) {
        title("fillet");
        positive(fillet.radius, "a rounding has a radius");
        size(fillet.largestRadius, "a rounding has a largest radius");
        require(fillet.largestRadius >= fillet.radius, "no radius is above the largest");
        size(fillet.length, "a rounding has a length");
        flag(fillet.concave);
        place(fillet.point);
        direction(fillet.axis, false);
        faces(fillet.faces);
    }
    for (const SharpCorner& corner : part_.sharpCorners()) {
        title("corner");
        require(corner.edge > 0, "a corner is an edge");
        among(corner.edge, model_.edges.size());
        place(corner.point);
        direction(corner.direction, false);
        positive(corner.length, "a corner has a length");
        angle(corner.angle, 180, "a corner has an angle");
        flag(corner.pocketWall);
    }
}

void Findings::pockets() {
    int number = 0;
    for (const Pocket& pocket : part_.pockets()) {
        title("pocket");
        require(pocket.number == ++number, "pockets are numbered");
        face(pocket.floor, false);
        place(pocket.point);
        direction(pocket.axis, true);
        positive(pocket.depth, "a pocket has a depth");
        size(pocket.tallestWall, "a pocket has walls");
        require(pocket.tallestWall >= pocket.depth * (1.0 - 1e-9), "no wall is above the tallest");
        size(pocket.width, "a pocket has a width");
        size(pocket.length, "a pocket has a length");
        distance(pocket.cornerRadius, "a corner has a radius or is sharp");
        require(!pocket.sharpCorner || pocket.cornerRadius == 0.0, "a sharp corner has no radius");
        size(pocket.floorRadius, "a floor has a radius or none");
        flag(pocket.open);
        faces(pocket.faces);
    }
}

void Findings::turned() {
    title("turned");
    const Turned& found = part_.turned();
    if (!isOr(found.is, found.reason, "a part is turned, or why not")) return;
    place(found.origin);
    direction(found.axis, true);
    positive(found.length, "a turned part has a length");
    positive(found.diameter, "a turned part has a diameter");
    upTo(found.share, 1.0, "a share is 1 at most");
    for (const TurnedSection& section : found.sections) {
        flag(section.inner);
        positive(section.length, "a section has a length");
        size(section.startDiameter, "a section has a diameter");
        size(section.endDiameter, "a section has a diameter");
        angle(section.taperAngle, 180, "a taper has an angle");
        faces(section.faces, false);
    }
    for (const Groove& groove : found.grooves) {
        positive(groove.width, "a groove has a width");
        positive(groove.depth, "a groove has a depth");
        positive(groove.diameter, "a groove has a diameter");
        size(groove.cornerRadius, "a groove has corners");
        place(groove.point);
        faces(groove.faces);
    }
}

void Findings::sheet() {
    title("sheet");
    const SheetMetal& found = part_.sheetMetal();
    if (!isOr(found.is, found.reason, "a part is a sheet, or why not")) return;
    positive(found.thickness, "a sheet has a thickness");
    for (const Bend& bend : found.bends) {
        size(bend.innerRadius, "a bend has a radius");
        angle(bend.angle, 360, "a bend has an angle");
        positive(bend.length, "a bend has a length");
        place(bend.point);
        direction(bend.axis, true);
        distance(bend.flangeLength, "a flange has a length");
        faces(bend.faces);
    }
    for (const SheetHole& hole : found.holes) {
        among(hole.hole, part_.holes().size());
        among(hole.bend, found.bends.size());
        distance(hole.bendDistance, "a hole is beside a bend or in it");
        distance(hole.edgeDistance, "a hole is beside a border or at it");
    }
}

void Findings::thickness(const Thickness& each) {
    positive(each.value, "what is measured has a size");
    place(each.point);
    place(each.opposite);
    for (const int number : each.faces)
        face(number, true);
}

void Findings::places(const std::vector<Thickness>& all, const char* name) {
    title(name);
    for (std::size_t i = 0; i < all.size(); ++i) {
        require(i == 0 || all[i - 1].value <= all[i].value, "the thinnest place is the first");
        thickness(all[i]);
    }
}

void Findings::walls() {
    const Walls& walls = part_.walls();
    flag(walls.measurable);
    places(walls.places, "walls");
    places(walls.placesByRay, "walls by ray");
    require(walls.places.empty() || walls.smallestBySphere.value == walls.places.front().value,
            "the thinnest wall is a place");
    require(walls.places.empty() ||
                walls.largestBySphere.value >= walls.smallestBySphere.value * (1.0 - 1e-6),
            "the thickest wall is no thinner");
    size(walls.typical, "a typical wall has a thickness");
    for (const float value : walls.byVertex)
        require(std::isfinite(value) && value >= 0.0F, "a vertex has a thickness");
    require(!walls.measurable || walls.byVertex.size() == part_.mesh().vertices.size(),
            "each vertex has a thickness");
    places(part_.gaps().places, "gaps");
}

void Findings::draft() {
    title("draft");
    const Vector pull = part_.pullDirection();
    direction(pull, false);
    if (std::hypot(pull.x, pull.y, pull.z) == 0.0) return;
    const Draft draft = part_.draft(pull);
    for (const FaceDraft& each : draft.faces) {
        face(each.face, true);
        angle(each.angle, 90, "a draft is upright to flat");
        size(each.area, "a face has an area");
        place(each.point);
        flag(each.undercut);
    }
    for (const Undercut& undercut : draft.undercuts) {
        faces(undercut.faces);
        place(undercut.point);
        size(undercut.area, "an undercut has an area");
        direction(undercut.slide, false);
        size(undercut.travel, "a slide travels");
    }
    for (const int edge : draft.partingEdges)
        among(edge, model_.edges.size());
}

void Findings::overhangs() {
    for (const Overhang& overhang : part_.overhangs({0, 0, 1}, 45)) {
        title("overhang");
        faces(overhang.faces);
        angle(overhang.angle, 90, "an overhang has an angle");
        size(overhang.area, "an overhang has an area");
        size(overhang.span, "an overhang has a span");
        place(overhang.point);
    }
}

}  // namespace fuzz
