#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <corvane/scriptrules/ScriptStatus.h>

#include "Run.h"

namespace scripthost {

using FaultKind = corvane::ScriptError;

/// A failure as the host reports it. Lines and characters count from 0, -1 when not known.
struct ScriptFault {
    FaultKind kind = FaultKind::RunTime;
    std::int32_t line = -1;
    std::int32_t character = -1;
    std::string message;
    std::string source = kScriptName;
};

/// The type of a failure in words.
const char16_t* typeText(FaultKind kind);

/// A failure with Lua's message. A place in front of it ("script:12: ") that is in `source` moves
/// to the line; else that is `line`, from 1, or 0 when it is not known.
ScriptFault faultFromMessage(FaultKind kind, std::string_view source, int line,
                             std::string message);
ScriptFault limitFault(const Limits& limits);

/// Finds the character of a failure in its line of `text`: the token that a syntax error names,
/// when it is there once, else where the line's text begins.
void placeCharacter(ScriptFault& fault, std::string_view text);

}  // namespace scripthost
