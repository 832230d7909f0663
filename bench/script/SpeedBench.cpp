// Scripts that work, within the limits of the script host, beside Lua without limits.

#include <benchmark/benchmark.h>
#include <lua.hpp>
#include <string>

#include "Host.h"

namespace {

struct Work {
    const char* name;
    const char* text;
};

constexpr Work kWorks[] = {
    {"5 million turns of a loop", "local x = 0 for i = 1, 5000000 do x = x + i end return x > 0"},
    {"fib(27)",
     "local function fib(n) if n < 2 then return n end return fib(n - 1) + fib(n - 2) end "
     "return fib(27) == 196418"},
    {"sort of 100,000",
     "local t, x = {}, 42 for i = 1, 100000 do x = (x * 1103515245 + 12345) & 0x7fffffff t[i] = x "
     "end table.sort(t) return t[1] <= t[2]"},
    {"table.insert, 1 million",
     "local t = {} for i = 1, 1000000 do table.insert(t, i) end return #t == 1000000"},
};

void inHost(benchmark::State& state, const char* text) {
    const CStringW script = CStringW::FromUtf8(text);
    for (auto _ : state) {
        if (runInHost(script)) continue;
        state.SkipWithError("failed");
        break;
    }
}

void inLua(benchmark::State& state, const char* text) {
    for (auto _ : state) {
        lua_State* lua = luaL_newstate();
        luaL_openlibs(lua);
        const bool isRight = luaL_dostring(lua, text) == LUA_OK && lua_toboolean(lua, -1);
        lua_close(lua);
        if (isRight) continue;
        state.SkipWithError("failed");
        break;
    }
}

const bool registered = [] {
    for (const Work& work : kWorks) {
        benchmark::RegisterBenchmark((std::string(work.name) + ":corvane").c_str(), inHost,
                                     work.text)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((std::string(work.name) + ":Lua").c_str(), inLua, work.text)
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
