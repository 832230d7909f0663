#include "lint/Report.h"

#include <algorithm>
#include <tuple>

namespace lint {

const Code kUnreadable{"L001", "unreadable", true,
                       "The file is not read, and none of its rules runs.",
                       "Correct the file at this place."};
const Code kNoRule{"L002", "no-rule", true, "Nothing is checked.",
                   "Put <Rule> elements below the document element."};

const Code kUnknownElement{"L101", "unknown-element", true,
                           "The element is passed over without a word.",
                           "Correct its name, or delete it."};
const Code kUnknownAttribute{"L102", "unknown-attribute", true,
                             "The attribute is passed over without a word.",
                             "Correct its name, or delete it."};
const Code kIgnoredText{"L103", "ignored-text", false,
                        "The text is passed over, and is gone when the file is saved.",
                        "Put it into a comment or into the element that it belongs to."};
const Code kNoName{"L104", "no-name", true, "The rule cannot be found by its name.",
                   "Give it the attribute Name."};
const Code kRepeatedElement{"L105", "repeated-element", true, "Only the first one is read.",
                            "Delete the others."};

const Code kNotANumber{"L201", "not-a-number", true,
                       "It is read as another number, mostly 0 or -1.", "Write a decimal number."};
const Code kNumberWithTail{"L202", "number-with-tail", true, "What follows the number is dropped.",
                           "Write the number alone; its unit is the parameter's."};
const Code kLocalNumber{"L203", "local-number", true,
                        "Reading ends at the comma, so that another number is meant.",
                        "Write a point, and no separators between thousands."};
const Code kUnknownSeverity{"L204", "unknown-severity", false,
                            "The severity has no name and counts as the gravest.",
                            "Choose a severity that has a name, or name this one."};
const Code kUnknownCategory{"L205", "unknown-category", false,
                            "The rule has a category that no selection knows.",
                            "Choose one of the known categories."};
const Code kFlag{"L206", "flag", false, "Any text but the one for no, or yes, counts as the other.",
                 "Write 1 for yes and 0 for no."};
const Code kOutOfRange{"L207", "out-of-range", true,
                       "The number does not fit into 32 bits and is read as another one.",
                       "Write a number from -2147483648 to 2147483647."};

const Code kUnknownParameter{"L301", "unknown-parameter", true,
                             "The rule never reads the parameter.",
                             "Correct its number, or delete it."};
const Code kRepeatedParameter{"L302", "repeated-parameter", true,
                              "Only the first one of the number is read.",
                              "Delete the others, or correct their numbers."};
const Code kUnknownConstraint{"L303", "unknown-constraint", true,
                              "The type is not read, and is empty when the file is saved.",
                              "Write Material."};
const Code kDroppedGroup{"L304", "dropped-group", true,
                         "All values are dropped when the rule is saved.",
                         "Write pairs or triples of values, or another operator."};
const Code kNotSaved{"L305", "not-saved", false,
                     "The parameter is read, and is gone when the file is saved.",
                     "Give it an Operator other than 0 and 12."};
const Code kLostAttribute{"L306", "lost-attribute", true, "Only Attribute1 to Attribute4 are read.",
                          "Split the record, or leave the attribute out."};
const Code kUnreadKind{"L307", "unread-value", true, "The value does not reach the rule.",
                       "Use a kind of value that the parameter reads."};

const Code kNoModuleRule{"L401", "no-module-rule", true,
                         "The rule cannot be made, so it does not judge.",
                         "Install the module, or correct File and Name."};

const Code kNoIndexEntry{"L501", "no-definition", true,
                         "The rule has no script, so it cannot judge.",
                         "Add an entry of that name to the index, or give the rule a File."};
const Code kRepeatedEntry{"L502", "repeated-entry", true,
                          "Only the first entry of a name is ever used.",
                          "Give each entry a name of its own."};
const Code kNoScript{"L503", "no-script", true, "The rule cannot judge.",
                     "Put the script there, or correct File."};
const Code kScriptSyntax{"L504", "script-syntax", true,
                         "The script does not compile, so the rule cannot judge.",
                         "Correct the script at this line."};
const Code kUnknownGlobal{
    "L505", "unknown-global", false, "The name is nil, so using it mostly ends the script.",
    "Correct the name, declare it with local, or name the engine that brings it."};
const Code kNoEngine{"L506", "no-engine", true,
                     "The engine is left out, so its table is nil in the script.",
                     "Register its type library, or correct GUID and LCID."};
const Code kBadLibrary{"L507", "bad-type-library", true,
                       "The host refuses the engine, or saving loses it.",
                       "Install the type library anew."};
const Code kOutsideScript{"L508", "outside-script", true, "The script is refused.",
                          "Name a file of the script folder, without \"..\"."};
const Code kScriptEncoding{"L509", "script-encoding", false,
                           "Letters that are no UTF-8 become replacement marks.",
                           "Save the script as UTF-8."};
const Code kUnknownParam{"L510", "unknown-param", true, "The parameter is nil in the script.",
                         "Add the parameter to the entry, or correct the name."};
const Code kRepeatedRule{"L511", "repeated-rule", false, "The rule runs twice.",
                         "Delete one of the two."};

const Code kBadSetting{"L601", "bad-setting", true, "The setting counts as not set.",
                       "Correct it, or take it out."};
const Code kNoScriptFolder{"L602", "no-script-folder", true, "No script rule runs.",
                           "Name the folder in ConfigModule.ini."};

std::span<const Code* const> allCodes() {
    static constexpr const Code* kAll[] = {&kUnreadable,
                                           &kNoRule,
                                           &kUnknownElement,
                                           &kUnknownAttribute,
                                           &kIgnoredText,
                                           &kNoName,
                                           &kRepeatedElement,
                                           &kNotANumber,
                                           &kNumberWithTail,
                                           &kLocalNumber,
                                           &kUnknownSeverity,
                                           &kUnknownCategory,
                                           &kFlag,
                                           &kOutOfRange,
                                           &kUnknownParameter,
                                           &kRepeatedParameter,
                                           &kUnknownConstraint,
                                           &kDroppedGroup,
                                           &kNotSaved,
                                           &kLostAttribute,
                                           &kUnreadKind,
                                           &kNoModuleRule,
                                           &kNoIndexEntry,
                                           &kRepeatedEntry,
                                           &kNoScript,
                                           &kScriptSyntax,
                                           &kUnknownGlobal,
                                           &kNoEngine,
                                           &kBadLibrary,
                                           &kOutsideScript,
                                           &kScriptEncoding,
                                           &kUnknownParam,
                                           &kRepeatedRule,
                                           &kBadSetting,
                                           &kNoScriptFolder};
    return kAll;
}

void Report::add(const Code& code, Place place, std::string message, std::string mend) {
    add(code, place, std::move(message), std::move(mend), file_);
}

void Report::add(const Code& code, Place place, std::string message, std::string mend,
                 const std::string& file) {
    if (mend.empty()) mend = trUtf8(code.mend);
    problems_.push_back({&code, file, place, std::move(message), std::move(mend)});
}

std::vector<Problem> Report::sorted() const {
    std::vector<Problem> result = problems_;
    const auto key = [](const Problem& problem) {
        return std::tie(problem.file, problem.place.line, problem.place.column);
    };
    std::ranges::stable_sort(result,
                             [key](const Problem& a, const Problem& b) { return key(a) < key(b); });
    return result;
}

namespace {

/// Letters to insert, delete, exchange or swap with their neighbour.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::vector<std::size_t>> table(from.size() + 1,
                                                std::vector<std::size_t>(to.size() + 1));
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    };
    for (std::size_t i = 0; i <= from.size(); ++i) {
        for (std::size_t k = 0; k <= to.size(); ++k) {
            if (i == 0 || k == 0) {
                table[i][k] = i + k;
                continue;
            }
            const bool same = lower(from[i - 1]) == lower(to[k - 1]);
            table[i][k] = std::min(
                {table[i - 1][k] + 1, table[i][k - 1] + 1, table[i - 1][k - 1] + (same ? 0 : 1)});
            if (i > 1 && k > 1 && from[i - 1] == to[k - 2] && from[i - 2] == to[k - 1])
                table[i][k] = std::min(table[i][k], table[i - 2][k - 2] + 1);
        }
    }
    return table[from.size()][to.size()];
}

}  // namespace

std::string nearest(std::string_view name, std::span<const std::string> known) {
    constexpr std::size_t kLongest = 64;
    if (name.size() > kLongest) return {};
    std::string best;
    std::size_t least = name.size() / 3 + 1;
    for (const std::string& candidate : known) {
        if (candidate.size() > kLongest || candidate == name) continue;
        const std::size_t away = distance(name, candidate);
        if (away > least || (away == least && !best.empty())) continue;
        least = away;
        best = candidate;
    }
    return best;
}

std::string didYouMean(std::string_view name, std::span<const std::string> known) {
    const std::string meant = nearest(name, known);
    return meant.empty() ? std::string() : trUtf8("Did you mean \"{0}\"?", meant);
}

}  // namespace lint
