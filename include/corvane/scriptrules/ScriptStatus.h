#pragma once

#include <cstdint>

#include <corvane/base/Types.h>
#include <corvane/platform/Unknown.h>

// What the script host of this system answers. Another implementation of IScriptProcessor may
// answer otherwise.

namespace corvane {

/// What IScriptProcessor::AddEngineFile answers, apart from 0 when the engine is there. A negative
/// status is a failure.
enum EngineStatus : std::int32_t {
    kEngineKnown = 1,                                             ///< It was there already.
    kEngineNameBad = kErrorInvalidArgument,                       ///< The stem is no Lua name.
    kEngineMissing = kErrorModuleNotFound,                        ///< Neither NAME.lua nor module.
    kEngineBroken = static_cast<std::int32_t>(0x800700C1),        ///< The module will not load.
    kEngineWithoutEntry = static_cast<std::int32_t>(0x8007007F),  ///< No function luaopen_NAME.
    kEngineNameTaken = static_cast<std::int32_t>(0x800700B7),     ///< Another global has the name.
    /// It raised an error, reached a limit or gave no table. GetScriptError says more.
    kEngineFailed = static_cast<std::int32_t>(0x8007045A),
};

/// The error number that IScriptProcessor::GetScriptError gives for each kind of failure. NotMet is
/// a judgement on the part; with all others the script could not judge.
enum class ScriptError : QorLong {
    Syntax = 1,
    RunTime = 2,
    NotMet = 3,        ///< The script returned false, or reported findings.
    Instructions = 4,  ///< A limit was reached: of instructions,
    Time = 5,          ///< of time,
    Memory = 6,        ///< of memory.
    Engine = 7,        ///< An engine failed while it was loaded.
};

/// The status code that goes with an error number.
constexpr std::int32_t ScriptErrorCode(ScriptError number) {
    return static_cast<std::int32_t>(0x80040200U + static_cast<std::uint32_t>(number));
}

/// True when number and code of a failed script say that the part does not meet the rule. A host
/// that gives other codes is not understood as saying so.
constexpr bool SaysNotMet(QorLong errorNumber, QorLong errorCode) {
    return errorNumber == static_cast<QorLong>(ScriptError::NotMet) &&
           errorCode == ScriptErrorCode(ScriptError::NotMet);
}

}  // namespace corvane
