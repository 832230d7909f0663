#include "ScriptFault.h"

#include <charconv>

#include <corvane/text/CStringW.h>

namespace scripthost {
namespace {

constexpr std::size_t kLongestMessage = 4000;

/// Takes a place "NAME:LINE: " off the front of a message. The line, or 0 without such a place.
int takePlace(std::string& message, std::string_view name) {
    if (!message.starts_with(name) || message.size() <= name.size() || message[name.size()] != ':')
        return 0;
    const char* end = message.data() + message.size();
    int line = 0;
    const auto [at, error] = std::from_chars(message.data() + name.size() + 1, end, line);
    if (error != std::errc() || line <= 0 || end - at < 2 || at[0] != ':' || at[1] != ' ') return 0;
    message.erase(0, static_cast<std::size_t>(at + 2 - message.data()));
    return line;
}

void shorten(std::string& message) {
    if (message.size() <= kLongestMessage) return;
    std::size_t end = kLongestMessage;
    while (end > 0 && (message[end] & 0xC0) == 0x80)
        --end;
    message.replace(end, message.npos, "...");
}

std::string_view lineOf(std::string_view text, std::int32_t line) {
    for (; line > 0; --line) {
        const std::size_t end = text.find('\n');
        if (end == text.npos) return {};
        text.remove_prefix(end + 1);
    }
    return text.substr(0, text.find('\n'));
}

/// The token in a message that ends in "near 'token'".
std::string_view tokenIn(std::string_view message) {
    constexpr std::string_view mark = "near '";
    const std::size_t start = message.rfind(mark);
    if (start == message.npos || !message.ends_with('\'')) return {};
    const std::size_t first = start + mark.size();
    return first < message.size() ? message.substr(first, message.size() - first - 1)
                                  : std::string_view();
}

}  // namespace

const char16_t* typeText(FaultKind kind) {
    switch (kind) {
        case FaultKind::Syntax:
            return u"Syntax error";
        case FaultKind::NotMet:
            return u"Rule not met";
        case FaultKind::Instructions:
        case FaultKind::Time:
        case FaultKind::Memory:
            return u"Limit exceeded";
        case FaultKind::Engine:
            return u"Engine error";
        case FaultKind::RunTime:
            break;
    }
    return u"Run-time error";
}

ScriptFault faultFromMessage(FaultKind kind, std::string_view source, int line,
                             std::string message) {
    ScriptFault fault;
    fault.kind = kind;
    fault.source = source;
    if (const int place = takePlace(message, source)) line = place;
    fault.line = line - 1;
    // A script may raise an empty text, which would tell its author nothing.
    if (message.empty()) message = "no message is given";
    shorten(message);
    fault.message = std::move(message);
    return fault;
}

ScriptFault limitFault(const Limits& limits) {
    const Budget& budget = limits.budget();
    ScriptFault fault;
    fault.line = limits.line() - 1;
    switch (limits.reached()) {
        case Limit::Time:
            fault.kind = FaultKind::Time;
            fault.message = "the script took more than " + std::to_string(budget.seconds) +
                            " s (CORVANE_SCRIPT_MAX_SECONDS)";
            break;
        case Limit::Memory:
            fault.kind = FaultKind::Memory;
            fault.message = "the script needs more than " + std::to_string(budget.megabytes) +
                            " MB of memory (CORVANE_SCRIPT_MAX_MEMORY_MB)";
            break;
        default:
            fault.kind = FaultKind::Instructions;
            fault.message = "the script ran more than " + std::to_string(budget.instructions) +
                            " instructions (CORVANE_SCRIPT_MAX_INSTRUCTIONS)";
    }
    return fault;
}

void placeCharacter(ScriptFault& fault, std::string_view text) {
    if (fault.line < 0) return;
    const std::string_view line = lineOf(text, fault.line);
    std::size_t at = line.find_first_not_of(" \t\r");
    if (at == line.npos) at = 0;
    if (fault.kind == FaultKind::Syntax) {
        const std::string_view token = tokenIn(fault.message);
        const std::size_t found = token.empty() ? line.npos : line.find(token);
        if (found != line.npos && line.find(token, found + 1) == line.npos) at = found;
    }
    fault.character = CStringW::FromUtf8(line.substr(0, at)).GetLength();
}

}  // namespace scripthost
