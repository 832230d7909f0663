#include "Script.h"

#include <algorithm>
#include <utility>

#include "Collector.h"
#include "Compile.h"
#include "ContextTables.h"
#include "Findings.h"
#include "HostThread.h"
#include "Libraries.h"
#include "Watcher.h"

namespace scripthost {

using corvane::LoadedModule;
using enum corvane::EngineStatus;

namespace {

/// What Lua needs at most for the levels of calls in C that it allows, 200, and the host for one
/// function with a large frame. Frame sizes add up to about 150 KB; the rest is a margin.
constexpr std::uintptr_t kStackForLua = 262'144;
constexpr const char* kNoStack =
    "the thread has less than 256 KB of stack left, which scripts need";

/// Stands before a script and has the host called when its main part returns; see noteEnd. It is in
/// the first line, so that lines keep their numbers.
constexpr std::string_view kPrefix = "local __end <close> = ...;";

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The time in which a state works: its clock runs and its thread has the plain locale.
class Session {
public:
    Session(Run& run, lua_State* lua) : run_(run), watch_(run.limits) {
        run_.limits.setRunning(lua);
        run_.limits.startClock();
        const std::uintptr_t end = stackEnd();
        run_.stackFloor = end ? end + kStackForLua : 0;
    }
    ~Session() {
        run_.limits.stopClock();
        run_.limits.setRunning(nullptr);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// False when the thread has not the stack that a script may need.
    bool hasStack() const { return stackPosition() > run_.stackFloor; }

private:
    Run& run_;
    ScriptLocale locale_;
    Watch watch_;
};

/// Drops the mark and what a shell reads of the first line; lines keep their numbers.
std::string_view sourceIn(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    if (text.starts_with('#')) text.remove_prefix(std::min(text.find('\n'), text.size()));
    return text;
}

/// What openEngine needs and tells. It is outside the protected call.
struct EngineCall {
    const char* name;
    const char* chunk;
    lua_CFunction entry;  ///< Null for an engine in Lua.
    std::string_view source;
    bool nameTaken = false;
};

int openEngine(lua_State* lua) {
    auto& call = *static_cast<EngineCall*>(lua_touserdata(lua, 1));
    const bool isTaken = lua_getglobal(lua, call.name) != LUA_TNIL;
    const bool isPart = isTaken && isHostPart(lua);
    call.nameTaken = isTaken && !isPart;
    if (call.nameTaken) return 0;
    if (call.entry) {
        lua_pushcfunction(lua, call.entry);
    } else {
        if (compileText(lua, call.source, call.chunk) != LUA_OK) return lua_error(lua);
    }
    lua_pushstring(lua, call.name);
    lua_call(lua, 1, 1);
    if (!lua_istable(lua, -1)) return luaL_error(lua, "the engine gives no table");
    if (isPart) adoptPart(lua);
    lua_setglobal(lua, call.name);
    return 0;
}

/// Called when the script's main part ends: it is still there, in the line of its return.
int noteEnd(lua_State* lua) {
    lua_Debug record;
    if (lua_isnil(lua, 2) && lua_getstack(lua, 1, &record)) {
        lua_getinfo(lua, "l", &record);
        runOf(lua).returnLine = record.currentline;
    }
    return 0;
}

/// Pushes the value that calls noteEnd.
int pushEnd(lua_State* lua) {
    lua_newuserdatauv(lua, 0, 0);
    lua_createtable(lua, 0, 1);
    lua_pushcfunction(lua, noteEnd);
    lua_setfield(lua, -2, "__close");
    lua_setmetatable(lua, -2);
    return 1;
}

/// Message handler of the run: the stack is still there.
int noteLine(lua_State* lua) {
    runOf(lua).faultLine = scriptLine(lua);
    return 1;
}

/// The text of any error value. Runs protected, since a value can bring its own conversion.
int describeValue(lua_State* lua) {
    if (lua_istable(lua, 1) && luaL_getmetafield(lua, 1, "__tostring") == LUA_TNIL) {
        lua_pushliteral(lua, "message");
        lua_rawget(lua, 1);
        if (lua_type(lua, -1) != LUA_TSTRING) lua_pushliteral(lua, "an error object without text");
        return 1;
    }
    luaL_tolstring(lua, 1, nullptr);
    return 1;
}

}  // namespace

std::unique_ptr<Script> Script::create() {
    learnLibraries();
    std::unique_ptr<Script> script(new Script(Budget::fromEnvironment()));
    lua_State* lua = lua_newstate(Limits::allocate, &script->run_.limits);
    if (!lua) return nullptr;
    script->state_.reset(lua);
    setRun(lua, script->run_);
    for (const lua_CFunction open : {takeCollector, openLibraries, openContext, openResult}) {
        lua_pushcfunction(lua, open);
        if (lua_pcall(lua, 0, 0, 0) != LUA_OK) return nullptr;
    }
    return script;
}

void Script::fail(ScriptFault fault) {
    if (run_.limits.reached() != Limit::None) {
        const std::string source = std::move(fault.source);
        fault = limitFault(run_.limits);
        fault.source = source;
    }
    if (fault.source == kScriptName) placeCharacter(fault, text_);
    fault_ = std::move(fault);
}

std::string Script::describe(int index) {
    lua_State* lua = state_.get();
    lua_pushvalue(lua, index);
    lua_pushcfunction(lua, describeValue);
    lua_insert(lua, -2);
    const bool known = lua_pcall(lua, 1, 1, 0) == LUA_OK && lua_type(lua, -1) == LUA_TSTRING;
    std::string text = "an error object that fails to describe itself";
    if (known) text.assign(lua_tostring(lua, -1), lua_rawlen(lua, -1));
    lua_pop(lua, 1);
    return text;
}

HResult Script::addEngine(std::u16string_view libraryPath) {
    const std::optional<Engine> engine = Engine::fromLibrary(libraryPath);
    if (!engine) return kEngineNameBad;
    if (std::find(engines_.begin(), engines_.end(), *engine) != engines_.end()) return kEngineKnown;
    const Session session(run_, state_.get());
    // In its place from the start: the state may hold its functions even when this throws.
    const HResult status = install(*engine, modules_.emplace_back());
    if (status == corvane::kOk) engines_.push_back(*engine);
    return status;
}

/// An implementation in Lua goes before a shared module, because it has fewer rights.
HResult Script::install(const Engine& engine, LoadedModule& module) {
    std::string chunk = engine.name + ".lua";
    std::optional<std::string> source;
    EngineCall call{engine.name.c_str(), nullptr, nullptr, {}};
    if (const std::u16string file = engine.file(u".lua"); isFile(file)) {
        source = readFile(file, run_.limits.budget().bytes());
        if (!source) return kEngineBroken;
        call.source = sourceIn(*source);
    } else {
        module = LoadedModule(engine.file(u".dll"));
        const bool there = isFile(engine.file(u".so")) || isFile(engine.file(u".dll"));
        if (!module) return there ? kEngineBroken : kEngineMissing;
        call.entry = module.function<lua_CFunction>(("luaopen_" + engine.name).c_str());
        if (!call.entry) return kEngineWithoutEntry;
        chunk = engine.name;
    }
    const std::string chunkName = "=" + chunk;
    call.chunk = chunkName.c_str();
    lua_State* lua = state_.get();
    lua_pushcfunction(lua, openEngine);
    lua_pushlightuserdata(lua, &call);
    const int status = lua_pcall(lua, 1, 0, 0);
    if (status == LUA_OK) return call.nameTaken ? HResult{kEngineNameTaken} : corvane::kOk;
    if (status == LUA_ERRMEM) run_.limits.reach(Limit::Memory);
    fail(faultFromMessage(FaultKind::Engine, chunk, 0, describe(-1)));
    lua_settop(lua, 0);
    return kEngineFailed;
}

void Script::refuseText() {
    fail(faultFromMessage(FaultKind::Memory, kScriptName, 0,
                          "the script's text takes more than a quarter of the " +
                              std::to_string(run_.limits.budget().megabytes) +
                              " MB of memory that it may use (CORVANE_SCRIPT_MAX_MEMORY_MB)"));
}

bool Script::compile(std::string text) {
    const Session session(run_, state_.get());
    text_ = std::move(text);
    text_.erase(text_.find_last_not_of(" \n") + 1);
    run_.limits.hold(text_.size());
    lua_State* lua = state_.get();
    lua_pushcfunction(lua, noteLine);
    if (!session.hasStack()) {
        fail(faultFromMessage(FaultKind::RunTime, kScriptName, 0, kNoStack));
        return false;
    }
    const int status = compileText(lua, sourceIn(text_), kScriptChunk, kPrefix);
    if (status == LUA_OK && run_.limits.reached() == Limit::None) return true;
    if (status == LUA_ERRMEM) run_.limits.reach(Limit::Memory);
    fail(faultFromMessage(FaultKind::Syntax, kScriptName, 0, describe(-1)));
    return false;
}

bool Script::run() {
    const Session session(run_, state_.get());
    lua_State* lua = state_.get();
    lua_pushcfunction(lua, pushEnd);
    int status = lua_pcall(lua, 0, 1, 0);
    if (status == LUA_OK) status = lua_pcall(lua, 1, LUA_MULTRET, 1);
    if (status == LUA_ERRMEM) run_.limits.reach(Limit::Memory);
    // One long step of Lua may have ended after the limit, with nothing after it to notice.
    if (status == LUA_OK && run_.limits.isInTime()) return judge();
    const int line = run_.faultLine;
    fail(faultFromMessage(FaultKind::RunTime, kScriptName, line, describe(-1)));
    return false;
}

/// A script says that its rule is not met by findings, by false, or by nil and a reason.
bool Script::judge() {
    lua_State* lua = state_.get();
    constexpr int first = 2;
    const bool isNil = lua_isnoneornil(lua, first);
    const bool isTrue = lua_toboolean(lua, first) != 0;
    const int line = run_.returnLine;
    if (isTrue && !lua_isboolean(lua, first)) {
        fail(faultFromMessage(FaultKind::RunTime, kScriptName, line,
                              std::string("the script returned a ") + luaL_typename(lua, first) +
                                  " where true or false belongs"));
        return false;
    }
    if (!isTrue && !(isNil && lua_isnoneornil(lua, first + 1))) {
        lua_settop(lua, first + 1);
        lua_pushcfunction(lua, reportReason);
        lua_insert(lua, first + 1);
        const int status = lua_pcall(lua, 1, 0, 1);
        if (status == LUA_ERRMEM) run_.limits.reach(Limit::Memory);
        if (status != LUA_OK) {
            fail(faultFromMessage(FaultKind::RunTime, kScriptName, line, describe(-1)));
            return false;
        }
    }
    if (run_.findings == 0) return true;
    std::string message = run_.findingMessage;
    if (run_.findings > 1) message += " (and " + std::to_string(run_.findings - 1) + " more)";
    fail(faultFromMessage(FaultKind::NotMet, kScriptName, run_.findingLine, std::move(message)));
    return false;
}

}  // namespace scripthost
