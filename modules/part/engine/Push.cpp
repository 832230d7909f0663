#include "Push.h"

#include <cmath>

namespace partengine {

using namespace corvane::part;

namespace {

/// What measures give for a distance to something that is not there is above this.
constexpr double kFurthest = 1e299;

const char* nameOf(SurfaceKind kind) {
    constexpr const char* kNames[] = {"plane", "cylinder", "cone", "sphere", "torus", "other"};
    return kNames[static_cast<int>(kind)];
}

const char* nameOf(CurveKind kind) {
    constexpr const char* kNames[] = {"line", "circle", "ellipse", "other"};
    return kNames[static_cast<int>(kind)];
}

const char* nameOf(Convexity kind) {
    constexpr const char* kNames[] = {"convex", "concave", "smooth", "open", "seam"};
    return kNames[static_cast<int>(kind)];
}

const char* nameOf(Damage::Kind kind) {
    constexpr const char* kNames[] = {"open edge", "invalid face", "not solid",
                                      "many-fold", "size",         "missing"};
    return kNames[static_cast<int>(kind)];
}

const char* nameOf(ThreadSource source) {
    constexpr const char* kNames[] = {"property", "dimension", "annotation", "aspect", "face"};
    return kNames[static_cast<int>(source)];
}

}  // namespace

void push(lua_State* lua, double value) {
    if (std::abs(value) < kFurthest)
        lua_pushnumber(lua, value);
    else
        lua_pushnil(lua);
}

void push(lua_State* lua, int value) {
    lua_pushinteger(lua, value);
}

void push(lua_State* lua, bool value) {
    lua_pushboolean(lua, value);
}

void push(lua_State* lua, const char* text) {
    lua_pushstring(lua, text);
}

void push(lua_State* lua, const std::string& text) {
    if (text.empty())
        lua_pushnil(lua);
    else
        lua_pushlstring(lua, text.data(), text.size());
}

void push(lua_State* lua, const Vector& vector) {
    Record{lua}("x", vector.x)("y", vector.y)("z", vector.z);
}

void push(lua_State* lua, const Box& box) {
    const Vector size{box.greatest.x - box.least.x, box.greatest.y - box.least.y,
                      box.greatest.z - box.least.z};
    Record{lua}("least", box.least)("greatest", box.greatest)("size", size);
}

void push(lua_State* lua, const OrientedBox& box) {
    const Record record(lua);
    record("centre", box.centre);
    lua_createtable(lua, 3, 0);
    lua_createtable(lua, 3, 0);
    for (int i = 0; i < 3; ++i) {
        push(lua, box.axes[i]);
        lua_rawseti(lua, -3, i + 1);
        push(lua, box.sizes[i]);
        lua_rawseti(lua, -2, i + 1);
    }
    lua_setfield(lua, -3, "sizes");
    lua_setfield(lua, -2, "axes");
}

void push(lua_State* lua, const Solid& solid) {
    Record{lua}("number", solid.number)("name", solid.name)("place", solid.place)(
        "volume", solid.volume)("area", solid.area)("centre", solid.centre);
}

void push(lua_State* lua, const Face& face) {
    const Surface& surface = face.surface;
    const Record record(lua);
    record("number", face.number)("solid", face.solid)("kind", nameOf(surface.kind));
    record("concave", face.concave)("area", face.area)("point", face.point);
    record("normal", face.normal)("edges", face.loops);
    if (surface.kind == SurfaceKind::Other) return;
    record("origin", surface.origin)("axis", surface.axis);
    if (surface.kind == SurfaceKind::Plane) return;
    record("radius", surface.radius)("turn", face.turn);
    if (surface.kind == SurfaceKind::Torus) record("minor_radius", surface.minorRadius);
    if (surface.kind == SurfaceKind::Cone) record("half_angle", surface.halfAngle);
}

void push(lua_State* lua, const Edge& edge) {
    const Record record(lua);
    record("number", edge.number)("kind", nameOf(edge.kind))("convexity", nameOf(edge.convexity));
    record("angle", edge.angle)("length", edge.length)("points", edge.points);
    if (edge.kind == CurveKind::Circle)
        record("radius", edge.radius)("centre", edge.centre)("axis", edge.axis);
    lua_createtable(lua, 2, 0);
    int count = 0;
    for (const int face : edge.faces) {
        if (face == 0) continue;
        lua_pushinteger(lua, face);
        lua_rawseti(lua, -2, ++count);
    }
    lua_setfield(lua, -2, "faces");
}

void push(lua_State* lua, const Thread& thread) {
    const Record record(lua);
    record("designation", thread.designation)("diameter", thread.diameter);
    record("pitch", unlessZero(thread.pitch))("source", nameOf(thread.source));
    record("text", thread.text)("faces", thread.faces);
}

void push(lua_State* lua, const Damage& damage) {
    Record{lua}("kind", nameOf(damage.kind))("message", damage.message)("points", damage.points)(
        "faces", damage.faces);
}

}  // namespace partengine
