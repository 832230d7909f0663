#include "Libraries.h"
#include "Run.h"

namespace scripthost {
namespace {

/// To make one takes far longer than to run an instruction.
constexpr std::uint64_t kStepsToCreate = 100;
/// Closing takes C stack that Lua counts where the coroutine was resumed last, not where it is
/// closed.
constexpr int kDeepestClosing = 50;

lua_State* coroutineAt(lua_State* lua, int index) {
    lua_State* coroutine = lua_tothread(lua, index);
    luaL_argexpected(lua, coroutine != nullptr, index, "thread");
    return coroutine;
}

int create(lua_State* lua) {
    luaL_checktype(lua, 1, LUA_TFUNCTION);
    spend(lua, kStepsToCreate);
    lua_State* coroutine = lua_newthread(lua);
    lua_pushvalue(lua, 1);
    lua_xmove(lua, coroutine, 1);
    return 1;
}

/// Runs a coroutine with the topmost values as arguments. Leaves its results, or -1 and an error
/// value.
int resumeWith(lua_State* lua, lua_State* coroutine, int arguments) {
    if (!lua_checkstack(coroutine, arguments)) {
        lua_pushliteral(lua, "too many arguments to resume");
        return -1;
    }
    spend(lua, 1);
    checkStack(lua);
    lua_xmove(lua, coroutine, arguments);
    Limits& limits = runOf(lua).limits;
    limits.setRunning(coroutine);
    int results = 0;
    const int status = lua_resume(coroutine, lua, arguments, &results);
    limits.setRunning(lua);
    stopIfOver(lua, status);
    if (status != LUA_OK && status != LUA_YIELD) {
        lua_xmove(coroutine, lua, 1);
        return -1;
    }
    if (!lua_checkstack(lua, results + 1)) {
        lua_pop(coroutine, results);
        lua_pushliteral(lua, "too many results to resume");
        return -1;
    }
    lua_xmove(coroutine, lua, results);
    return results;
}

int resume(lua_State* lua) {
    lua_State* coroutine = coroutineAt(lua, 1);
    const int results = resumeWith(lua, coroutine, lua_gettop(lua) - 1);
    lua_pushboolean(lua, results >= 0);
    const int count = results < 0 ? 2 : results + 1;
    lua_insert(lua, -count);
    return count;
}

/// Closes the pending variables of a coroutine. True when all went well; else it leaves the error
/// value on the coroutine's stack.
bool closeVariables(lua_State* lua, lua_State* coroutine) {
    Run& run = runOf(lua);
    if (run.closing >= kDeepestClosing) luaL_error(lua, "C stack overflow");
    spend(lua, 1);
    checkStack(lua);
    ++run.closing;
    run.limits.setRunning(coroutine);
    const int status = lua_resetthread(coroutine);
    run.limits.setRunning(lua);
    --run.closing;
    stopIfOver(lua, status);
    return status == LUA_OK;
}

void refuseActive(lua_State* lua, lua_State* coroutine) {
    if (coroutine == lua) luaL_error(lua, "cannot close a running coroutine");
    lua_Debug record;
    if (lua_status(coroutine) == LUA_OK && lua_getstack(coroutine, 0, &record))
        luaL_error(lua, "cannot close a normal coroutine");
}

int close(lua_State* lua) {
    lua_State* coroutine = coroutineAt(lua, 1);
    refuseActive(lua, coroutine);
    const bool clean = closeVariables(lua, coroutine);
    lua_pushboolean(lua, clean);
    if (clean) return 1;
    lua_xmove(coroutine, lua, 1);
    return 2;
}

int callWrapped(lua_State* lua) {
    lua_State* coroutine = lua_tothread(lua, lua_upvalueindex(1));
    const int results = resumeWith(lua, coroutine, lua_gettop(lua));
    if (results >= 0) return results;
    const int status = lua_status(coroutine);
    if (status != LUA_OK && status != LUA_YIELD) {
        // The error value goes back to where closing expects it.
        lua_xmove(lua, coroutine, 1);
        if (closeVariables(lua, coroutine)) return luaL_error(lua, "error in a coroutine");
        lua_xmove(coroutine, lua, 1);
    }
    return lua_error(lua);
}

int wrap(lua_State* lua) {
    create(lua);
    lua_pushcclosure(lua, callWrapped, 1);
    return 1;
}

}  // namespace

const luaL_Reg kCoroutineFunctions[] = {
    {"close", close}, {"create", create}, {"resume", resume}, {"wrap", wrap}, {nullptr, nullptr}};

}  // namespace scripthost
