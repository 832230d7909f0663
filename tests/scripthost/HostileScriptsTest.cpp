#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include "scripthost/HostRun.h"
#include "support/EnvironmentScope.h"

namespace {

constexpr int kInstructions = 4;
constexpr int kTime = 5;
constexpr int kMemory = 6;
constexpr int kAnyLimit = 0;
constexpr int kRunTime = 2;

const struct {
    const char* name;
    const char* script;
    int number;
} kHostile[] = {
    {"loop", "while true do end", kInstructions},
    {"caught limit", "while true do pcall(function() while true do end end) end", kInstructions},
    {"limit caught by hand", "repeat until not pcall(function() while true do end end) return true",
     kInstructions},
    {"handler that loops",
     "local function f() while true do end end while true do xpcall(f, f) end", kInstructions},
    {"closing variable that loops",
     "local f = function() while true do end end "
     "local m = {__close = f} "
     "pcall(function() local a <close> = setmetatable({}, m) f() end) f()",
     kInstructions},
    {"closing variables of a deep recursion",
     "local m = {__close = function() for i = 1, 1e9 do end end} "
     "local function f() local a <close> = setmetatable({}, m) return (f()) end pcall(f) f()",
     kAnyLimit},
    {"coroutine that loops",
     "while true do coroutine.resume(coroutine.create(function() while true do end end)) end",
     kInstructions},
    {"wrapped coroutine that loops",
     "while true do pcall(coroutine.wrap(function() while true do end end)) end", kInstructions},
    {"coroutines made for ever", "while true do coroutine.wrap(function() end)() end",
     kInstructions},
    {"yielding over a caught limit",
     "local co = coroutine.wrap(function() while true do pcall(function() coroutine.yield() "
     "while true do end end) end end) co() co() co()",
     kInstructions},
    {"coroutine closed while it loops",
     "local co = coroutine.create(function() local a <close> = setmetatable({}, {__close = "
     "function() while true do end end}) coroutine.yield() end) coroutine.resume(co) "
     "while true do coroutine.close(co) end",
     kInstructions},
    {"coroutines that close one another",
     "local all = {} for i = 1, 1000 do local co = coroutine.create(function() "
     "local a <close> = setmetatable({}, {__close = function() "
     "if all[i - 1] then coroutine.close(all[i - 1]) end end}) coroutine.yield() end) "
     "coroutine.resume(co) all[i] = co end local ok, why = coroutine.close(all[#all]) error(why)",
     kRunTime},
    {"coroutines that resume one another", "local function f() return coroutine.wrap(f)() end f()",
     kRunTime},
    {"finalizer", "setmetatable({}, {__gc = function() while true do end end})", kRunTime},
    {"weak keys", "setmetatable({}, {__mode = 'k'})", kRunTime},
    {"match that tries all ways", "(('a'):rep(30)):find(('a*'):rep(30) .. 'b')", kInstructions},
    {"gsub that tries all ways", "(('a'):rep(30)):gsub(('a-'):rep(30) .. 'b', '')", kInstructions},
    {"gmatch that tries all ways",
     "for _ in (('a'):rep(30)):gmatch(('a?a*'):rep(20) .. 'b') do end", kInstructions},
    {"balance over a long text", "local s = ('('):rep(2^20) for _ in s:gmatch('%b()') do end",
     kInstructions},
    {"plain pattern that is longer than its text",
     "local p = ('a'):rep(2^22) while true do ('x'):find(p) end", kInstructions},
    {"empty matches without replacement", "(('x'):rep(2^20)):gsub('', {})", kInstructions},
    {"long set", "local s = ('a'):rep(1e6) s:find('[' .. ('b'):rep(1e6) .. ']')", kInstructions},
    {"plain find that nearly matches everywhere",
     "local s = ('a'):rep(2^22) s:find(('a'):rep(2^21) .. 'b', 1, true)", kInstructions},
    {"captured text compared everywhere",
     "local s = ('a'):rep(2^20) s:find('^(a*)b-%1%1%1c') s:find('(.-)%1%1%1c')", kInstructions},
    {"empty text repeated", "(''):rep(math.maxinteger)", -1},
    {"long text repeated", "('x'):rep(1e15)", kAnyLimit},
    {"format of one long text many times",
     "local t, s = {}, ('x'):rep(2^21) for i = 1, 1e5 do t[i] = s end "
     "string.format(('%.0s'):rep(1e5), table.unpack(t))",
     kInstructions},
    {"padding", "string.pack('!1c1000000000', '')", kMemory},
    {"pattern in an endless replacement", "local s = 'x' while true do s = s:gsub('.', '%0%0') end",
     kAnyLimit},
    {"concat of a huge range",
     "table.concat(setmetatable({}, {__index = table.concat}), '', 1, 1 << 60)", kInstructions},
    {"insert into a false length",
     "table.insert(setmetatable({}, {__len = function() return 1 << 60 end}), 1, 1)",
     kInstructions},
    {"remove from a false length",
     "table.remove(setmetatable({}, {__len = function() return 1 << 60 end}), 1)", kInstructions},
    {"move of a huge range", "table.move({}, 1, math.maxinteger - 1, 2)", kInstructions},
    {"sort of a false length",
     "table.sort(setmetatable({}, {__len = function() return 1 << 30 end}), rawequal)",
     kInstructions},
    {"unpack of a huge range", "table.unpack({}, 1, 1e8)", kInstructions},
    {"unpack of a range that fits", "select('#', table.unpack({}, 1, 9e5))", kInstructions},
    {"text of its whole memory", "local s = ('x'):rep(4096):rep(10240)", kInstructions},
    {"sort of long equal texts",
     "local t, s = {}, ('x'):rep(2^21) for i = 1, 1e5 do t[i] = s end table.sort(t)",
     kInstructions},
    {"sort that contradicts itself",
     "local t = {} for i = 1, 100 do t[i] = i end "
     "while true do pcall(table.sort, t, function() return true end) end",
     kInstructions},
    {"sort made slow by its comparison",
     "local t, gas, solid, n, key = {}, 1e9, 0, 0 for i = 1, 1e5 do t[i] = i end local v = {} "
     "table.sort(t, function(a, b) n = n + 1 "
     "if not v[a] and not v[b] then if a == key then solid = solid + 1 v[a] = solid "
     "else solid = solid + 1 v[b] = solid end end "
     "if not v[a] then key = a elseif not v[b] then key = b end "
     "return (v[a] or gas) < (v[b] or gas) end) return n < 1e7",
     -1},
    {"memory", "local t = {} while true do t = {t, {}, {}} end", kMemory},
    {"memory of a text", "local s = 'x' while true do s = s .. s end", kMemory},
    {"memory, caught",
     "local t = {} while true do pcall(function() while true do t[#t + 1] = ('x'):rep(1e5) .. #t "
     "end end) end",
     kMemory},
    {"memory in a coroutine",
     "local t = {} while true do coroutine.resume(coroutine.create(function() "
     "while true do t[#t + 1] = ('x'):rep(1e5) .. #t end end)) end",
     kMemory},
    {"recursion", "local function f() return 1 + f() end f()", kAnyLimit},
    {"recursion, caught", "local function f() pcall(f) return f() end f()", kAnyLimit},
    {"recursion of another chunk", "load('local function f() return 1 + f() end f()', '=other')()",
     kAnyLimit},
    {"recursion of callbacks", "local function f(s) return (s:gsub('.', f)) end f('x')", kRunTime},
    {"recursion of comparisons", "local function f() table.sort({1, 2, 3}, f) return true end f()",
     kRunTime},
    {"recursion of metamethods",
     "local m = {} m.__index = function(t, k) return t[k .. 'x'] end "
     "return setmetatable({}, m).x",
     kRunTime},
    {"conversion that calls itself", "error(setmetatable({}, {__tostring = tostring}))", kRunTime},
    {"error that describes itself for ever",
     "error(setmetatable({}, {__tostring = function() while true do end end}))", kInstructions},
    {"reason that describes itself for ever",
     "return false, setmetatable({}, {__tostring = function() while true do end end})",
     kInstructions},
    {"error without a description", "error(setmetatable({}, {__tostring = error}))", kRunTime},
    {"deep source", "load(('('):rep(1e5))() ", kRunTime},
    {"endless source", "load(math.random)", kAnyLimit},
    {"endless source of a function", "load(function() return 'x = 1 ' end)", kAnyLimit},
    {"labels",
     "local t = {} for i = 1, 8000 do t[i] = 'goto a' .. i .. ' ::a' .. i .. '::' end "
     "while true do load(table.concat(t, ' ')) end",
     kAnyLimit},
    {"binary chunk", "assert(load('\\27Lua'))()", kRunTime},
    {"functions of the system",
     "assert(not (io or os or require or package or debug or dofile or "
     "loadfile or collectgarbage or string.dump)) nothing()",
     kRunTime},
    {"string metatable",
     "getmetatable('').__index = function() while true do end end "
     "local x = (''):x()",
     kInstructions},
};

TEST(HostileScripts, EachEndsWithAReportWithinTheLimits) {
    const EnvironmentScope instructions("CORVANE_SCRIPT_MAX_INSTRUCTIONS", nullptr);
    const EnvironmentScope memory("CORVANE_SCRIPT_MAX_MEMORY_MB", "16");
    for (const auto& [name, script, number] : kHostile) {
        SCOPED_TRACE(name);
        // What ends by another limit or an error must not depend on how fast this machine is.
        instructions.set(number == kInstructions || number == kAnyLimit ? "1000000" : nullptr);
        const Outcome outcome = runScript(std::string(script));
        EXPECT_EQ(outcome.status, corvane::kOk);
        if (number == -1) {
            EXPECT_TRUE(outcome.success);
            continue;
        }
        EXPECT_FALSE(outcome.success);
        if (number == kAnyLimit) {
            EXPECT_GE(outcome.number, kInstructions);
        } else {
            EXPECT_EQ(outcome.number, number) << outcome.message;
        }
    }
}

TEST(HostileScripts, ATextLargerThanItsShareOfTheMemoryIsRefusedBeforeItIsCopied) {
    const EnvironmentScope memory("CORVANE_SCRIPT_MAX_MEMORY_MB", "4");
    const Outcome outcome = runScript(std::string(1'100'000, '0'));
    EXPECT_EQ(outcome.number, kMemory);
    EXPECT_EQ(outcome.message,
              "the script's text takes more than a quarter of the 4 MB of memory "
              "that it may use (CORVANE_SCRIPT_MAX_MEMORY_MB)");
    EXPECT_TRUE(runScript(std::string(1'000'000, ' ')).success);
}

/// Runs a script on a thread with so many bytes of stack.
Outcome runOnStack(std::size_t size, const char* script) {
    struct Work {
        const char* script;
        Outcome outcome;
    } work{script, {}};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, size);
    pthread_t thread{};
    const auto run = [](void* data) -> void* {
        auto& own = *static_cast<Work*>(data);
        own.outcome = runScript(std::string(own.script));
        return nullptr;
    };
    if (pthread_create(&thread, &attributes, run, &work) == 0) pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return work.outcome;
}

TEST(HostileScripts, RecursionEndsBeforeASmallStackDoes) {
    // First, because the system gives the stacks of ended threads to later ones.
    EXPECT_THAT(runOnStack(192 * 1024, "return true").message, testing::HasSubstr("256 KB"));
    for (const char* script :
         {"local function f(s) return (s:gsub('.', f)) end f('x')",
          "local function f() table.sort({1, 2, 3}, f) return true end f()",
          "local t = setmetatable({}, {}) getmetatable(t).__tostring = function() "
          "return ('%s%s'):format(t, t) end tostring(t)",
          "local t = setmetatable({}, {}) getmetatable(t).__tostring = function() "
          "return tostring(t) end tostring(t)",
          "local m = {} m.__index = function(t, k) return t[k .. 'x'] end "
          "return setmetatable({}, m).x",
          "local m = {} m.__index = function(t) return table.concat(t, ',', 1, 2) end "
          "return setmetatable({}, m)[1]",
          "local function f() return coroutine.wrap(f)() end f()",
          "local function f() error(select(2, pcall(f))) end f()",
          "local function f() local ok, why = load(f) error(why) end f()",
          "assert(load(('('):rep(190) .. '1' .. (')'):rep(190) .. ('x'):rep(1000)))",
          "local m = {} m.__index = function(t) result.note(t) end result.note(setmetatable({}, "
          "m))"})
        EXPECT_EQ(runOnStack(384 * 1024, script).number, kRunTime) << script;
    EXPECT_TRUE(runOnStack(384 * 1024, "return ('abc'):gsub('.', string.upper) == 'ABC'").success);
}

TEST(HostileScripts, SlowOnesEndByTheClock) {
    const EnvironmentScope seconds("CORVANE_SCRIPT_MAX_SECONDS", "1");
    for (const char* script :
         {"local s = ('x'):rep(2^24)\nwhile true do\nlocal _ = s < s end",
          // Each name is looked up among the variables of all functions around it.
          "local t = {} for i = 1, 190 do t[i] = 'l' .. i end local names = table.concat(t, ',')\n"
          "local deep = ('local ' .. names .. ' local function f() '):rep(60)\n"
          "load(deep .. ('a=a '):rep(2^21) .. ('end '):rep(60))"}) {
        const Outcome outcome = runScript(std::string(script));
        EXPECT_EQ(outcome.number, kTime) << outcome.message;
    }
}

}  // namespace
