#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::config {

/// One heading or key of an INI file, in bytes of no encoding.
struct IniRecord {
    std::string Comments;  ///< The comment lines above it, with their marks, each ending in "\n".
    char Commented = ' ';  ///< A blank for a live record, else the mark that takes it out.
    std::string Section;   ///< Empty ahead of the first heading.
    std::string Key;       ///< Empty for a heading.
    std::string Value;

    bool isHeading() const { return Key.empty(); }
    bool matches(std::string_view key, std::string_view section) const {
        return Section == section && Key == key;
    }
};

using IniRecords = std::vector<IniRecord>;

/// Takes the records out of the text of an INI file, one after the other. The text must outlive it.
///
/// Files of older installations depend on how lines are read: a line without a line end is not
/// taken, a line with "[" anywhere is a heading, nothing around "=" is trimmed, and a line that is
/// nothing at all is an empty record, unless comments are above it.
///
/// "[" without "]" is told apart by what the writer of the line meant: a line that begins with it
/// is a heading whose "]" was forgotten; in any other line it is an ordinary character.
class IniReader {
public:
    explicit IniReader(std::string_view text) : rest_(text) {}

    /// The next record, or nothing at the end.
    std::optional<IniRecord> next();

private:
    IniRecord readLine(std::string_view line);

    std::string_view rest_;
    std::string pendingComment_;
    std::string currentSection_;
};

/// Brings the records of each section together, at the place of the section's first record.
void groupBySection(IniRecords& records);

/// The text of a file with these records. Each live record begins with a blank.
std::string iniFileText(const IniRecords& records);

/// The records as a person reads them: no blanks in front, no line end after the last.
std::string iniReadableText(const IniRecords& records);

}  // namespace corvane::config
