#include <gtest/gtest.h>
#include <lua.hpp>
#include <memory>

#include "scripthost/HostRun.h"

namespace {

/// What both interpreters run first: `say` collects results, and `told` gives them back.
constexpr const char* kPrelude = R"(
local said = {}
local function show(v)
  return (math.type(v) or type(v)) .. (type(v) == 'table' and '' or ' ' .. tostring(v):gsub('0x%x+', 'address'))
end
local function say(...)
  local t = table.pack(...)
  for i = 1, t.n do t[i] = show(t[i]) end
  said[#said + 1] = table.concat(t, ', ')
end
local function told()
  local text, sums = table.concat(said, '\n') .. '\n', {}
  if #text < 3500 then return text end
  for i = 1, #text, #text // 200 + 1 do
    local sum = 0
    for j = i, math.min(#text, i + #text // 200) do sum = (sum * 31 + text:byte(j)) % 2147483647 end
    sums[#sums + 1] = string.format('%x', sum)
  end
  return table.concat(sums, ' ')
end
local seed = 42
local function random(n)
  seed = (seed * 1103515245 + 12345) % 2147483648
  return (seed >> 8) % n + 1
end
)";

/// The text that the script returns behind false, in Lua with its own libraries.
std::string runPlainly(const std::string& script) {
    const std::unique_ptr<lua_State, void (*)(lua_State*)> state(luaL_newstate(), lua_close);
    lua_State* lua = state.get();
    luaL_openlibs(lua);
    if (luaL_loadbufferx(lua, script.data(), script.size(), "=script", "t") != LUA_OK ||
        lua_pcall(lua, 0, 2, 0) != LUA_OK)
        return std::string("plain Lua: ") + lua_tostring(lua, -1);
    return luaL_tolstring(lua, -1, nullptr);
}

void expectTheSame(const std::string& body) {
    const std::string script = kPrelude + body + "\nreturn false, told()";
    const Outcome outcome = runScript(script);
    EXPECT_EQ(outcome.type, "Rule not met");
    EXPECT_EQ(outcome.message, runPlainly(script));
}

TEST(LuaSemantics, PatternsOfEveryKindMatchAsInLua) {
    expectTheSame(R"(
local subjects = {'', 'a', 'aaab', 'THE (quick) fox', '[[x]] and [y]', 'key = value', '  trim  ', 'a\0b\0',
  '(a(b)c)(d', 'x^y$z', 'äöü', 'hello world from Lua', '2026-11-24', ('ab'):rep(20), '%d', 'a.b-c+d*e?'}
local patterns = {'', '^', '$', '^$', 'a', 'a*', 'a-', 'a+', 'a?', 'a-b', '^a*$', '.', '.-$', '(.-)%s*$', '^%s*(.-)%s*$',
  '%b()', '%b[]', '%bxx', '%f[%w]%w+', '%f[%a]', '%f[\0]', '()', '()a()', '(a)(b)', '(a*(.)%w(%s*))', '((a)(b))',
  '(%w+) = (%w+)', '%1', '(a)%1', '(.)%1', '(()a)%1', '%0', '(', ')', '(a', 'a)', '%', 'a%', '[', '[a', '[]', '[]]', '[^]]',
  '[^', '[%', '[%]]', '[a-]', '[-a]', '[a-c]+', '[^a-c]', '[%a%d]+', '[%w_]*', '[a-%%]', '[%a-z]', '%b', '%bx', '%f', '%fa',
  '[\128-\255]+', '\195', '%z', '%Z', '%S+', '%D', '%X', '%g+', '%p', '%c', '%U', '%l*', 'x^y', 'y$z', '^^', '$$', '%$',
  '%.', '.%-.', ('(a)'):rep(33), ('a?'):rep(250) .. 'b', ('()'):rep(32), '(a*)*', 'a**', 'a*?', '[a]*b', '\0', '[\0]'}
local replacements = {'', 'x', '<%0>', '<%1>', '%2', '%', '%x', '%%', 7, {a = 'A', [''] = 'E', key = false}, {a = {}},
  function(a, b) return b end, function() return false end, function() return {} end, string.upper}
for _, s in ipairs(subjects) do
  for _, p in ipairs(patterns) do
    for init = -3, 5, 4 do
      say(pcall(string.find, s, p, init)) say(pcall(string.match, s, p, init)) say(pcall(string.find, s, p, init, true))
      say(pcall(function() for a, b in s:gmatch(p, init) do say(a, b) end end))
    end
    for i, r in ipairs(replacements) do say(pcall(string.gsub, s, p, r)) say(pcall(string.gsub, s, p, r, i % 3)) end
  end
end)");
}

TEST(LuaSemantics, RandomPatternsMatchAsInLua) {
    expectTheSame(R"(
local pieces = {'.', '%a', 'a', 'b', 'a', '[ab]', '[^a]', '(', ')', '(', ')', '()', '%1', '%2', '*', '+', '-', '?', '%b()', '%f[a]',
  '%f[^b]', '$', '^', '%', '[', ']', '[a-x]', '[%a-z]', '[]]', '[^]]', '%d', '%W', '\0', 'x', '%s*', '.-', '.*', '(.)', '(a*)'}
local units = {'a', 'b', '(', ')', 'x', '1', ' ', '\0', 'aab', 'ab', ']', '-'}
local function text(from, most)
  local t = {}
  for i = 1, random(most) do t[i] = from[random(#from)] end
  return table.concat(t)
end
for i = 1, 6000 do
  local s, p = text(units, 9), text(pieces, 6)
  say(pcall(string.find, s, p, random(5) - 2)) say(pcall(string.match, s, p)) say(pcall(string.gsub, s, p, text({'%1', '%0', 'y', '%2'}, 2)))
  say(pcall(function() for a, b in s:gmatch(p) do say(a, b) end end))
end)");
}

TEST(LuaSemantics, TablesChangeAsInLua) {
    expectTheSame(R"(
local function values(t) for i = -1, 12 do say(i, t[i]) end end
for i = 1, 3000 do
  local t, n = {}, random(9) - 1
  for j = 1, n do t[j] = random(5) end
  local a, b, c = random(14) - 4, random(14) - 4, random(14) - 4
  local what = random(7)
  if what == 1 then say(pcall(function() table.insert(t, a, 'new') end))
  elseif what == 2 then say((pcall(function() say(table.remove(t, a)) end)))
  elseif what == 3 then say(pcall(function() return table.move(t, a, b, c) end)) say(#table.move(t, 1, n, 2, {}))
  elseif what == 4 then say(pcall(function() return table.concat(t, ';', a, b) end)) say(table.concat(t, ''))
  elseif what == 5 then say(pcall(function() return table.unpack(t, a, b) end)) say(table.unpack(t))
  elseif what == 6 then table.sort(t) say(table.concat(t, ' '))
  else table.sort(t, function(x, y) return x > y end) say(table.concat(t, ' ')) end
  values(t)
end
local log = {}
local proxy = setmetatable({}, {__len = function() return 3 end, __index = function(_, k) say('get', k) return k * 10 end,
  __newindex = function(_, k, v) say('set', k, v) end})
table.insert(proxy, 1, 5) table.remove(proxy, 1) say(table.unpack(proxy)) say(table.concat(proxy, ','))
for _, f in ipairs {table.insert, table.remove, table.concat, table.sort} do say((pcall(f, 7))) say((pcall(f))) end
say(pcall(function() table.insert({}, 1, 2, 3) end)) say(pcall(function() table.insert({}) end))
say(pcall(function() return table.move({}, 1, math.maxinteger, 2) end))
say(pcall(function() return table.move({}, math.mininteger, 1, 2) end))
say((pcall(table.sort, {1, 'x'}))))");
}

TEST(LuaSemantics, TheOtherOwnFunctionsBehaveAsInLua) {
    expectTheSame(R"(
local function boom() error({message = 'm'}) end
say(pcall(pcall)) say(pcall(error)) say(pcall(boom)) say(pcall(load, 'x =')) say(select('#', pcall(error, nil)))
say(xpcall(boom, function(e) return e.message end)) say(xpcall(function(...) return ... end, print, 1, nil, 3))
say(xpcall(boom, function() error('again') end)) say(pcall(xpcall)) say(pcall(xpcall, print, 1))
local co = coroutine.create(function(...)
  say(pcall(function(...) say(coroutine.yield(...)) error('in') end, ...))
  say(xpcall(function() say(coroutine.yield('x')) error('in') end, function(m) return 'h ' .. m end))
  return 'end'
end)
say(coroutine.resume(co, 1, 2)) say(coroutine.resume(co, 3)) say(coroutine.resume(co, 4)) say(coroutine.resume(co))
say(coroutine.status(co), coroutine.close(co)) say(pcall(coroutine.close, coroutine.running()))
local closed = coroutine.create(function() local a <close> = setmetatable({}, {__close = function(_, e) say('closing', e) end}) coroutine.yield() end)
coroutine.resume(closed) say(coroutine.close(closed)) say(coroutine.status(closed))
local failing = coroutine.create(function() local a <close> = setmetatable({}, {__close = function() error('c', 0) end}) coroutine.yield() end)
coroutine.resume(failing) say(coroutine.close(failing))
local w = coroutine.wrap(function(...) local a <close> = setmetatable({}, {__close = function() say('closed') end}) coroutine.yield(...) error({}) end)
say(w(1, 2)) say(pcall(w)) say((pcall(w))) say(pcall(coroutine.resume, 1)) say(pcall(coroutine.wrap, 1))
say(load('return ...', 'n', 't', {})(5)) say(load('return x', 'n', 't', {x = 6})()) say(load('x ='))
say(load('syntax', '=name')) say(pcall(load, 5)) say(load('return 1', 'n', 'b') == nil)
local parts = {'return ', '1', ' + 2', ''}
say(load(function() return table.remove(parts, 1) end)()) say((load(function() return {} end))) say(pcall(load, {}))
say(load(function() error('reader') end))
local m = setmetatable({}, {__metatable = 'hidden'})
say(getmetatable(m), pcall(setmetatable, m, {})) say(pcall(setmetatable, 1, {})) say(pcall(setmetatable, {})) say(getmetatable('').__index == string)
say(getmetatable({}), getmetatable(1)) say(setmetatable({}, nil) ~= nil)
for _, a in ipairs {{'ab', 3}, {'ab', 3, ','}, {'', 5, '-'}, {'x', 0}, {'x', -1}, {'x', 1, ','}, {7, 2}} do say(string.rep(table.unpack(a))) end
say(pcall(string.rep, 'xx', math.maxinteger)) say(('%5.1f|%-5d|%q'):format(1.25, 3, 'a\nb')) say(('x'):upper(), #string.pack('i4', 1)))");
}

}  // namespace
