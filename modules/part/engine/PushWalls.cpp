#include <limits>

#include "Push.h"

namespace partengine {

using namespace corvane::part;

double unlessZero(double value) {
    return value == 0.0 ? std::numeric_limits<double>::quiet_NaN() : value;
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

}  // namespace partengine
