// The engine as scripts see it: the table `part`, whose functions look at the part of the run.
// There is no way to open another file: scripts are not trusted, and may not find out what the
// machine holds.

#include <cmath>

#include <corvane/base/ModuleExport.h>

#include "Answer.h"
#include "Functions.h"

namespace partengine {
namespace {

using corvane::part::Part;

/// What a mass, a volume or its centre is asked of.
bool hasVolume(const Part& part, Failure& failure) {
    const bool has = part.volume() > 0.0;
    if (!has) failure.set("the part encloses no volume");
    return has;
}

int box(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure& failure) -> const auto& {
            const corvane::part::Box& found = part.box();
            if (found.least.x > found.greatest.x) failure.set("the part has no surface");
            return found;
        });
}

int smallestBox(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.smallestBox(); });
}

int size(lua_State* lua) {
    box(lua);
    lua_getfield(lua, -1, "size");
    for (const char* const name : {"x", "y", "z"}) {
        lua_getfield(lua, -1, name);
        lua_insert(lua, -2);
    }
    lua_pop(lua, 1);
    return 3;
}

int volume(lua_State* lua) {
    return answer(lua, [](const Part& part, Failure& failure) {
        return hasVolume(part, failure) ? part.volume() : 0.0;
    });
}

int area(lua_State* lua) {
    return answer(lua, [](const Part& part, Failure&) { return part.area(); });
}

int centre(lua_State* lua) {
    return answer(lua, [](const Part& part, Failure& failure) {
        hasVolume(part, failure);
        return part.centre();
    });
}

int mass(lua_State* lua) {
    constexpr double kCubicMillimetres = 1e9;  // in a cubic metre
    const double density = luaL_checknumber(lua, 1);
    luaL_argcheck(lua, std::isfinite(density) && density > 0.0, 1, "a density is above 0 kg/m3");
    return answer(lua, [density](const Part& part, Failure& failure) {
        hasVolume(part, failure);
        return part.volume() * density / kCubicMillimetres;
    });
}

int isMesh(lua_State* lua) {
    return answer(lua, [](const Part& part, Failure&) { return part.model().isMesh; });
}

int units(lua_State* lua) {
    const corvane::part::Model& model = partOf(lua).model();
    push(lua, model.units);
    push(lua, model.unitsAssumed);
    return 2;
}

int solids(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.model().solids; });
}

int faces(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.model().faces; });
}

int edges(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.model().edges; });
}

/// Pushes one of a list of the model, by its number.
template <typename List>
int one(lua_State* lua, List list, const char* what) {
    const lua_Integer number = luaL_checkinteger(lua, 1);
    const auto& all = partOf(lua).model().*list;
    if (number < 1 || static_cast<std::size_t>(number) > all.size())
        return luaL_error(lua, "the part has no %s %I", what, static_cast<LUAI_UACINT>(number));
    push(lua, all[static_cast<std::size_t>(number - 1)]);
    return 1;
}

int face(lua_State* lua) {
    return one(lua, &corvane::part::Model::faces, "face");
}

int edge(lua_State* lua) {
    return one(lua, &corvane::part::Model::edges, "edge");
}

int damages(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.damages(); });
}

int notes(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.model().notes; });
}

constexpr luaL_Reg kFunctions[] = {{"box", box},         {"smallest_box", smallestBox},
                                   {"size", size},       {"volume", volume},
                                   {"area", area},       {"centre", centre},
                                   {"mass", mass},       {"is_mesh", isMesh},
                                   {"units", units},     {"solids", solids},
                                   {"faces", faces},     {"edges", edges},
                                   {"face", face},       {"edge", edge},
                                   {"damages", damages}, {"notes", notes},
                                   {nullptr, nullptr}};

}  // namespace
}  // namespace partengine

CORVANE_MODULE_EXPORT int luaopen_part(lua_State* lua) {
    partengine::openKept(lua);
    luaL_newlibtable(lua, partengine::kFunctions);
    partengine::newKept(lua);
    lua_pushvalue(lua, -1);
    lua_insert(lua, 1);
    luaL_setfuncs(lua, partengine::kFunctions, 1);
    lua_pushvalue(lua, 1);
    luaL_setfuncs(lua, partengine::kFeatureFunctions, 1);
    return 1;
}
