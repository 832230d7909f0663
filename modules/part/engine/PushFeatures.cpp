#include "Push.h"

namespace partengine {

using namespace corvane::part;

namespace {

const char* nameOf(HoleBottom bottom) {
    constexpr const char* kNames[] = {"through", "flat", "conical", "round", "other"};
    return kNames[static_cast<int>(bottom)];
}

const char* nameOf(PatternKind kind) {
    constexpr const char* kNames[] = {"row", "circle", "grid", "group"};
    return kNames[static_cast<int>(kind)];
}

const char* nameOf(HoleSection::Kind kind) {
    constexpr const char* kNames[] = {"cylinder", "cone", "sphere", "rounding"};
    return kNames[static_cast<int>(kind)];
}

/// The number of something, or nothing.
void number(const Record& record, const char* name, int value) {
    if (value > 0) record(name, value);
}

}  // namespace

void push(lua_State* lua, const HoleSection& section) {
    const Record record(lua);
    record("kind", nameOf(section.kind))("start", section.start)("length", section.length);
    record("start_diameter", section.startDiameter)("end_diameter", section.endDiameter);
    record("angle", unlessZero(section.angle))("turn", section.turn)("faces", section.faces);
}

void push(lua_State* lua, const Hole& hole) {
    const Record record(lua);
    record("number", hole.number)("solid", hole.solid)("entry", hole.entry)("axis", hole.axis);
    record("diameter", hole.diameter)("depth", hole.depth)("bore_depth", hole.boreDepth);
    record("bottom", nameOf(hole.bottom))("bottom_angle", unlessZero(hole.bottomAngle));
    record("bottom_radius", unlessZero(hole.bottomRadius));
    record("counterbore_diameter", unlessZero(hole.counterboreDiameter));
    record("counterbore_depth", unlessZero(hole.counterboreDepth));
    record("countersink_diameter", unlessZero(hole.countersinkDiameter));
    record("countersink_angle", unlessZero(hole.countersinkAngle));
    record("taper_angle", unlessZero(hole.taperAngle));
    record("square_entry", hole.squareEntry)("square_exit", hole.squareExit);
    record("entry_angle", hole.entryAngle)("turn", hole.turn);
    record("edge_distance", hole.edgeDistance)("wall_distance", hole.wallDistance);
    record("hole_distance", hole.holeDistance)("free_length", hole.freeLength);
    number(record, "entry_face", hole.entryFace);
    number(record, "nearest_hole", hole.nearestHole);
    number(record, "pattern", hole.pattern);
    number(record, "thread", hole.thread);
    record("aligned", hole.aligned)("tap_drill_for", hole.tapDrillFor);
    record("sections", hole.sections)("faces", hole.faces);
}

void push(lua_State* lua, const HolePattern& pattern) {
    const Record record(lua);
    record("number", pattern.number)("kind", nameOf(pattern.kind))("diameter", pattern.diameter);
    record("pitch", unlessZero(pattern.pitch))("second_pitch", unlessZero(pattern.secondPitch));
    record("circle_diameter", unlessZero(pattern.circleDiameter))("holes", pattern.holes);
}

void push(lua_State* lua, const Fillet& fillet) {
    const Record record(lua);
    record("radius", fillet.radius)("largest_radius", fillet.largestRadius);
    record("concave", fillet.concave)("point", fillet.point);
    if (!isNull(fillet.axis)) record("axis", fillet.axis);
    record("length", fillet.length)("faces", fillet.faces);
}

void push(lua_State* lua, const SharpCorner& corner) {
    const Record record(lua);
    record("edge", corner.edge)("point", corner.point)("length", corner.length);
    if (!isNull(corner.direction)) record("direction", corner.direction);
    record("angle", corner.angle)("pocket_wall", corner.pocketWall);
}

void push(lua_State* lua, const Pocket& pocket) {
    const Record record(lua);
    record("number", pocket.number)("solid", pocket.solid)("point", pocket.point);
    number(record, "floor", pocket.floor);
    record("axis", pocket.axis)("depth", pocket.depth)("tallest_wall", pocket.tallestWall);
    record("width", unlessZero(pocket.width))("length", unlessZero(pocket.length));
    record("corner_radius", pocket.cornerRadius)("sharp_corner", pocket.sharpCorner);
    record("floor_radius", unlessZero(pocket.floorRadius))("open", pocket.open);
    record("faces", pocket.faces);
}

}  // namespace partengine
