#include "ContextTables.h"

#include <corvane/host/RunContext.h>

#include "DatabaseTable.h"
#include "Run.h"

namespace scripthost {
namespace {

using corvane::RunContext;
using corvane::ScriptParameter;
using corvane::ScriptValue;

char partKey;

/// Where the name of a file begins in its path.
int nameStart(const CStringW& path) {
    int start = 0;
    for (int i = 0; i < path.GetLength(); ++i)
        if (path[i] == u'/' || path[i] == u'\\') start = i + 1;
    return start;
}

/// Pushes the text that `make` gives, in UTF-8.
template <typename Make>
void pushText(lua_State* lua, Make make) {
    if (!keepText(runOf(lua), make)) luaL_error(lua, "not enough memory");
    lua_pushlstring(lua, runOf(lua).text.data(), runOf(lua).text.size());
}

/// Sets a field of the table at the top of the stack; an empty text leaves it out.
template <typename Make>
void setText(lua_State* lua, const char* field, Make make) {
    pushText(lua, make);
    if (lua_rawlen(lua, -1) > 0) {
        lua_setfield(lua, -2, field);
    } else {
        lua_pop(lua, 1);
    }
}

void openPart(lua_State* lua, const RunContext* context) {
    lua_newtable(lua);
    setText(lua, "path", [] { return corvane::CurrentPartPath(); });
    setText(lua, "name", [context] {
        if (context && !context->partName.IsEmpty()) return context->partName;
        const CStringW path = corvane::CurrentPartPath();
        return path.Mid(nameStart(path));
    });
    if (context) setText(lua, "material", [context] { return context->partMaterial; });
    lua_pushvalue(lua, -1);
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &partKey);
    lua_setglobal(lua, kPartName);
}

void pushValue(lua_State* lua, const ScriptValue& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        lua_pushboolean(lua, *flag);
    } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        lua_pushinteger(lua, *whole);
    } else if (const auto* number = std::get_if<double>(&value)) {
        lua_pushnumber(lua, *number);
    } else {
        pushText(lua, [&value] { return *std::get_if<CStringW>(&value); });
    }
}

int refuseChange(lua_State* lua) {
    return luaL_error(lua, "parameters are read only");
}

int readOnlyLength(lua_State* lua) {
    lua_pushinteger(lua, static_cast<lua_Integer>(lua_rawlen(lua, lua_upvalueindex(1))));
    return 1;
}

int nextReadOnly(lua_State* lua) {
    lua_settop(lua, 2);
    if (lua_next(lua, lua_upvalueindex(1))) return 2;
    lua_pushnil(lua);
    return 1;
}

int readOnlyPairs(lua_State* lua) {
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_pushcclosure(lua, nextReadOnly, 1);
    lua_pushvalue(lua, 1);
    return 2;
}

/// Puts an empty table that reads from the table at the top of the stack in its place.
void makeReadOnly(lua_State* lua) {
    lua_newtable(lua);
    lua_createtable(lua, 0, 5);
    const luaL_Reg events[] = {
        {"__newindex", refuseChange}, {"__len", readOnlyLength}, {"__pairs", readOnlyPairs}};
    for (const luaL_Reg& event : events) {
        lua_pushvalue(lua, -3);
        lua_pushcclosure(lua, event.func, 1);
        lua_setfield(lua, -2, event.name);
    }
    lua_pushvalue(lua, -3);
    lua_setfield(lua, -2, "__index");
    lua_pushboolean(lua, 0);
    lua_setfield(lua, -2, "__metatable");
    lua_setmetatable(lua, -2);
    lua_remove(lua, -2);
}

void pushParameter(lua_State* lua, const ScriptParameter& parameter) {
    if (!parameter.isList) {
        parameter.values.empty() ? lua_pushnil(lua) : pushValue(lua, parameter.values.front());
        return;
    }
    lua_newtable(lua);
    lua_Integer index = 0;
    for (const ScriptValue& value : parameter.values) {
        pushValue(lua, value);
        lua_rawseti(lua, -2, ++index);
    }
    makeReadOnly(lua);
}

void openParameters(lua_State* lua, const RunContext* context) {
    lua_newtable(lua);
    for (std::size_t i = 0; context && i < context->parameters.size(); ++i) {
        const ScriptParameter& parameter = context->parameters[i];
        pushText(lua, [&parameter] { return parameter.name; });
        pushParameter(lua, parameter);
        lua_rawset(lua, -3);
    }
    makeReadOnly(lua);
    lua_setglobal(lua, "params");
}

}  // namespace

int openContext(lua_State* lua) {
    const RunContext* context = corvane::CurrentRunContext();
    openParameters(lua, context);
    openPart(lua, context);
    openDatabase(lua);
    return 0;
}

bool isHostPart(lua_State* lua) {
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &partKey);
    const bool same = lua_rawequal(lua, -1, -2) != 0;
    lua_pop(lua, 1);
    return same;
}

void adoptPart(lua_State* lua) {
    lua_rawgetp(lua, LUA_REGISTRYINDEX, &partKey);
    lua_pushnil(lua);
    while (lua_next(lua, -2)) {
        lua_pushvalue(lua, -2);
        lua_insert(lua, -2);
        lua_rawset(lua, -5);
    }
    lua_pop(lua, 1);
}

}  // namespace scripthost
