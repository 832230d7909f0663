#pragma once

#include <span>
#include <string>
#include <vector>

#include "language/Messages.h"
#include "lint/SourceTree.h"

namespace lint {

/// One kind of problem. The number is stable: it is in files that people write, such as those
/// that turn a code off.
struct Code {
    const char* id;       ///< "L201"
    const char* name;     ///< "not-a-number"
    bool isError;         ///< What is meant cannot be what happens; otherwise it may be.
    Message consequence;  ///< What will happen, one sentence.
    Message mend;         ///< What to do about it, one sentence.
};

// By their numbers: 0 files, 1 elements and attributes, 2 values, 3 parameters and constraints,
// 4 rule modules, 5 scripts and their index, 6 settings.
extern const Code kUnreadable, kNoRule;
extern const Code kUnknownElement, kUnknownAttribute, kIgnoredText, kNoName, kRepeatedElement;
extern const Code kNotANumber, kNumberWithTail, kLocalNumber, kUnknownSeverity, kUnknownCategory,
    kFlag, kOutOfRange;
extern const Code kUnknownParameter, kRepeatedParameter, kUnknownConstraint, kDroppedGroup,
    kNotSaved, kLostAttribute, kUnreadKind;
extern const Code kNoModuleRule;
extern const Code kNoIndexEntry, kRepeatedEntry, kNoScript, kScriptSyntax, kUnknownGlobal,
    kNoEngine, kBadLibrary, kOutsideScript, kScriptEncoding, kUnknownParam, kRepeatedRule;
extern const Code kBadSetting, kNoScriptFolder;

/// All of them, by number.
std::span<const Code* const> allCodes();

/// One problem at one place.
struct Problem {
    const Code* code = nullptr;
    std::string file;
    Place place;
    std::string message;  ///< What is there, without an end mark.
    std::string mend;     ///< In place of the code's, where more is known.
};

/// Collects the problems of one file.
class Report {
public:
    explicit Report(std::string file) : file_(std::move(file)) {}

    void add(const Code& code, Place place, std::string message, std::string mend = {});
    void add(const Code& code, Place place, std::string message, std::string mend,
             const std::string& file);

    /// In the order of their places.
    std::vector<Problem> sorted() const;
    bool isEmpty() const { return problems_.empty(); }

private:
    std::string file_;
    std::vector<Problem> problems_;
};

/// The name that was probably meant, of those that are known; empty when none is near.
std::string nearest(std::string_view name, std::span<const std::string> known);

/// "did you mean "X"?" as a sentence for a mend; empty without a near name.
std::string didYouMean(std::string_view name, std::span<const std::string> known);

}  // namespace lint
