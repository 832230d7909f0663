#include "Answer.h"
#include "Functions.h"

namespace partengine {

using corvane::part::Draft;
using corvane::part::Part;
using corvane::part::Vector;

namespace {

int holes(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.holes(); });
}

int threads(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.model().threads; });
}

int patterns(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.holePatterns(); });
}

int fillets(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.fillets(); });
}

int corners(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.sharpCorners(); });
}

int pockets(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.pockets(); });
}

int turned(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.turned(); });
}

int sheet(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.sheetMetal(); });
}

int gaps(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure&) -> const auto& { return part.gaps(); });
}

/// The first argument is a table or nothing.
void checkOptions(lua_State* lua) {
    if (lua_isnoneornil(lua, 1)) {
        lua_settop(lua, 0);
        lua_newtable(lua);
    }
    luaL_checktype(lua, 1, LUA_TTABLE);
}

int draft(lua_State* lua) {
    checkOptions(lua);
    Vector pull;
    takeDirection(lua, 1, "pull", pull);
    return answer(lua, [pull](const Part& part, Failure& failure) {
        Draft found = part.draft(isNull(pull) ? part.pullDirection() : pull);
        if (isNull(found.pull)) failure.set("the part is not closed, so no mould forms it");
        return found;
    });
}

int overhangs(lua_State* lua) {
    constexpr double kUsual = 45.0;
    checkOptions(lua);
    Vector up{0.0, 0.0, 1.0};
    takeDirection(lua, 1, "up", up);
    lua_getfield(lua, 1, "angle");
    const double angle = luaL_optnumber(lua, -1, kUsual);
    if (!(angle > 0.0 && angle <= 90.0))
        return luaL_error(lua, "the angle of an overhang is above 0 and at most 90 degrees");
    return answer(lua, [up, angle](const Part& part, Failure& failure) {
        if (!part.walls().measurable) failure.set("the part is not closed, so it cannot be built");
        return part.overhangs(up, angle);
    });
}

int walls(lua_State* lua) {
    return answer(
        lua, [](const Part& part, Failure& failure) -> const auto& {
            const corvane::part::Walls& found = part.walls();
            if (!found.measurable)
                failure.set("the part is not closed, so it has no walls to measure");
            return found;
        });
}

}  // namespace

const luaL_Reg kFeatureFunctions[] = {
    {"holes", holes},     {"threads", threads}, {"patterns", patterns}, {"fillets", fillets},
    {"corners", corners}, {"pockets", pockets}, {"turned", turned},     {"sheet", sheet},
    {"walls", walls},     {"gaps", gaps},       {"draft", draft},       {"overhangs", overhangs},
    {nullptr, nullptr}};

}  // namespace partengine
