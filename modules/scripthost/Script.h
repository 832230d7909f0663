#pragma once

#include <lua.hpp>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <corvane/platform/LoadedModule.h>
#include <corvane/platform/Unknown.h>

#include "Engine.h"
#include "Run.h"
#include "ScriptFault.h"

namespace scripthost {

/// One script with its engines, from loading to its end, in a Lua state of its own.
class Script {
public:
    /// Null when the memory of the limits does not even hold the libraries.
    static std::unique_ptr<Script> create();
    ~Script() = default;
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    /// Makes an engine a global of the script. 0, or a status of corvane::EngineStatus.
    HResult addEngine(std::u16string_view libraryPath);
    /// The longest text that compile takes, in 16-bit units. It is copied and converted before the
    /// limits count it, so it has a share of the memory.
    std::uint64_t longestText() const { return run_.limits.budget().bytes() / 4; }
    /// Makes a text that is longer the fault.
    void refuseText();
    /// False with fault() for a text that is no script.
    bool compile(std::string text);
    /// Runs what compile took. False with fault() for an error or a rule that is not met.
    bool run();

    const std::optional<ScriptFault>& fault() const { return fault_; }

private:
    struct Close {
        void operator()(lua_State* lua) const { lua_close(lua); }
    };

    explicit Script(const Budget& budget) : run_(budget) {}
    HResult install(const Engine& engine, corvane::LoadedModule& module);
    std::string describe(int index);
    void fail(ScriptFault fault);
    bool judge();

    std::vector<corvane::LoadedModule>
        modules_;  ///< Outlive the state: their code closes their objects.
    std::vector<Engine> engines_;
    std::string text_;
    std::optional<ScriptFault> fault_;
    Run run_;
    std::unique_ptr<lua_State, Close> state_;
};

}  // namespace scripthost
