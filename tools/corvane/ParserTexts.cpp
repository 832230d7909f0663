#include "ParserTexts.h"

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "language/Messages.h"

namespace {

// What the parser says comes as a whole sentence. Of several that fit, the first one counts.
constexpr language::MessageWith<1> kAboutOne[] = {"{0} is required",
                                                  "Could not convert: {0}",
                                                  "The following argument was not expected: {0}",
                                                  "The following arguments were not expected: {0}",
                                                  "File does not exist: {0}",
                                                  "File is actually a directory: {0}",
                                                  "Directory does not exist: {0}",
                                                  "Directory is actually a file: {0}"};
constexpr language::MessageWith<2> kAboutTwo[] = {"{0} excludes {1}", "{0} requires {1}",
                                                  "{0} not in {1}"};
constexpr language::MessageWith<3> kAboutThree[] = {
    "{0}: {1} required {2} missing", "Value {0} not in range {1} to {2}",
    "Expected exactly {0} arguments to {1}, got {2}"};

/// What stands for the placeholders of a pattern in a text; nothing when the text has another form.
/// The patterns have them in ascending order.
std::optional<std::vector<std::string>> argumentsIn(std::string_view text,
                                                    std::string_view pattern) {
    std::vector<std::string> arguments;
    while (true) {
        const std::size_t mark = std::min(pattern.find('{'), pattern.size());
        if (!text.starts_with(pattern.substr(0, mark))) return std::nullopt;
        text.remove_prefix(mark);
        pattern.remove_prefix(mark);
        if (pattern.empty()) break;
        pattern.remove_prefix(3);
        const std::size_t next = std::min(pattern.find('{'), pattern.size());
        const std::size_t end =
            next == 0 || pattern.empty() ? text.size() : text.find(pattern.substr(0, next));
        if (end == text.npos) return std::nullopt;
        arguments.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    if (!text.empty()) return std::nullopt;
    return arguments;
}

std::string translated(const std::string& text) {
    if (text == "A subcommand is required") return trUtf8("A subcommand is required");
    for (const auto& message : kAboutOne)
        if (const auto found = argumentsIn(text, message.english()))
            return trUtf8(message, found->at(0));
    for (const auto& message : kAboutThree)
        if (const auto found = argumentsIn(text, message.english()))
            return trUtf8(message, found->at(0), found->at(1), found->at(2));
    // The name of an option, and what is wrong with its value.
    const std::size_t colon = text.find(": ");
    if (text.starts_with('-') && colon != text.npos)
        return text.substr(0, colon + 2) + translated(text.substr(colon + 2));
    for (const auto& message : kAboutTwo)
        if (const auto found = argumentsIn(text, message.english()))
            return trUtf8(message, found->at(0), found->at(1));
    return text;
}

std::string failureText(const CLI::App* app, const CLI::Error& error) {
    const CLI::Option* help = app->get_help_ptr();
    std::string text = translated(error.what()) + '\n';
    if (help) text += trUtf8("Run with {0} for more information.", help->get_name()) + '\n';
    return text;
}

}  // namespace

void speakUsersLanguage(CLI::App& program) {
    const auto formatter = program.get_formatter();
    formatter->label("Usage", trUtf8("Usage"));
    formatter->label("OPTIONS", trUtf8("OPTIONS"));
    formatter->label("SUBCOMMAND", trUtf8("SUBCOMMAND"));
    formatter->label("SUBCOMMANDS", trUtf8("SUBCOMMAND"));
    formatter->label("Positionals", trUtf8("Positionals"));
    formatter->label("REQUIRED", trUtf8("REQUIRED"));
    formatter->label("Excludes", trUtf8("Excludes"));
    program.option_defaults()->group(trUtf8("Options"));
    program.set_help_flag("-h,--help", trUtf8("Print this help message and exit"));
    program.failure_message(failureText);
}
