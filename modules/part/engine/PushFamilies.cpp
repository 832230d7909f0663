#include "Push.h"

namespace partengine {

using namespace corvane::part;

void push(lua_State* lua, const TurnedSection& section) {
    const Record record(lua);
    record("inner", section.inner)("start", section.start)("length", section.length);
    record("start_diameter", section.startDiameter)("end_diameter", section.endDiameter);
    record("taper_angle", unlessZero(section.taperAngle))("faces", section.faces);
}

void push(lua_State* lua, const Groove& groove) {
    const Record record(lua);
    record("inner", groove.inner)("start", groove.start)("width", groove.width);
    record("depth", groove.depth)("diameter", groove.diameter)("point", groove.point);
    record("corner_radius", groove.cornerRadius)("faces", groove.faces);
}

void push(lua_State* lua, const Turned& turned) {
    const Record record(lua);
    record("is", turned.is)("reason", turned.reason);
    if (!turned.is) return;
    record("origin", turned.origin)("axis", turned.axis)("length", turned.length);
    record("diameter", turned.diameter)("share", turned.share);
    record("sections", turned.sections)("grooves", turned.grooves);
}

void push(lua_State* lua, const Bend& bend) {
    const Record record(lua);
    record("inner_radius", bend.innerRadius)("angle", bend.angle)("length", bend.length);
    record("point", bend.point)("axis", bend.axis)("flange_length", bend.flangeLength);
    record("closed", bend.closed)("faces", bend.faces);
}

void push(lua_State* lua, const SheetHole& hole) {
    const Record record(lua);
    record("hole", hole.hole)("edge_distance", hole.edgeDistance);
    if (hole.bend > 0) record("bend", hole.bend)("bend_distance", hole.bendDistance);
}

void push(lua_State* lua, const SheetMetal& sheet) {
    const Record record(lua);
    record("is", sheet.is)("reason", sheet.reason);
    if (!sheet.is) return;
    record("thickness", sheet.thickness)("bends", sheet.bends)("holes", sheet.holes);
}

}  // namespace partengine
