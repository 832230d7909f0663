#include <limits>

#include "Push.h"

namespace partengine {

using namespace corvane::part;

namespace {

const char* nameOf(MouldHalf half) {
    constexpr const char* kNames[] = {"pull", "opposite", "either", "both"};
    return kNames[static_cast<int>(half)];
}

const char* nameOf(OverhangKind kind) {
    constexpr const char* kNames[] = {"cantilever", "bridge", "island"};
    return kNames[static_cast<int>(kind)];
}

}  // namespace

double unlessZero(double value) {
    return value == 0.0 ? std::numeric_limits<double>::quiet_NaN() : value;
}

bool isNull(const Vector& vector) {
    return vector.x == 0.0 && vector.y == 0.0 && vector.z == 0.0;
}

void push(lua_State* lua, const Thickness& thickness) {
    if (thickness.value <= 0.0) return lua_pushnil(lua);
    const Record record(lua);
    record("value", thickness.value)("point", thickness.point)("opposite", thickness.opposite);
    lua_createtable(lua, 2, 0);
    for (int i = 0; i < 2; ++i) {
        push(lua, thickness.faces[static_cast<std::size_t>(i)]);
        lua_rawseti(lua, -2, i + 1);
    }
    lua_setfield(lua, -2, "faces");
}

void push(lua_State* lua, const Walls& walls) {
    const Record record(lua);
    record("thinnest", walls.smallestBySphere)("thinnest_by_ray", walls.smallestByRay);
    record("thickest", walls.largestBySphere)("typical", unlessZero(walls.typical));
    record("places", walls.places)("places_by_ray", walls.placesByRay);
}

void push(lua_State* lua, const Gaps& gaps) {
    Record{lua}("places", gaps.places);
}

void push(lua_State* lua, const FaceDraft& draft) {
    const Record record(lua);
    record("face", draft.face)("half", nameOf(draft.half))("angle", draft.angle);
    record("area", draft.area)("point", draft.point)("undercut", draft.undercut);
}

void push(lua_State* lua, const Undercut& undercut) {
    const Record record(lua);
    record("faces", undercut.faces)("point", undercut.point)("area", undercut.area);
    if (isNull(undercut.slide)) return;
    record("slide", undercut.slide)("travel", undercut.travel);
}

void push(lua_State* lua, const Draft& draft) {
    const Record record(lua);
    record("pull", draft.pull)("faces", draft.faces)("undercuts", draft.undercuts);
    record("parting_edges", draft.partingEdges);
}

void push(lua_State* lua, const Overhang& overhang) {
    const Record record(lua);
    record("faces", overhang.faces)("kind", nameOf(overhang.kind))("angle", overhang.angle);
    record("area", overhang.area)("span", overhang.span)("point", overhang.point);
}

}  // namespace partengine
