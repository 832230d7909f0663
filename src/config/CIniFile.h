#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/IniRecord.h"

namespace corvane::config {

/// Settings are far smaller; the bound keeps a file put in their place from filling the memory.
inline constexpr std::size_t kLargestIniFile = std::size_t{4} << 20;

}  // namespace corvane::config

/// Reads and edits INI text files. An object has no state: each operation reads the whole file and,
/// when it changes something, replaces the file by what it makes of it.
///
/// Everything is bytes: sections, keys and values are compared exactly, and the file's name is text
/// in the process's code page. A record that is commented out is found, read and changed like a
/// live one. What is written anew has each section in one piece, and lacks the comments
/// after the last record. Two writers of one file overwrite each other's work, never each other's
/// bytes.
///
/// What is no regular file, cannot be read or is larger than kLargestIniFile counts as unreadable.
/// An operation that changes a file gives false when the file cannot be read or written, or when
/// the section or record that it looks for is not there; the file is then as it was.
class CIniFile {
public:
    using Record = corvane::config::IniRecord;
    using Records = corvane::config::IniRecords;

    CIniFile() = default;
    CIniFile(const CIniFile&) = default;
    CIniFile& operator=(const CIniFile&) = default;
    virtual ~CIniFile() = default;

    bool FileExists(std::string_view file) const;
    /// The records of the file as text, lines parted by "\n"; empty when it cannot be read.
    std::string Content(std::string_view file) const;
    /// The value of the first record of that key and section; empty without one.
    std::string GetValue(std::string_view key, std::string_view section,
                         std::string_view file) const;
    bool RecordExists(std::string_view key, std::string_view section, std::string_view file) const;
    bool SectionExists(std::string_view section, std::string_view file) const;
    /// The first record of that key and section, or an empty vector.
    Records GetRecord(std::string_view key, std::string_view section, std::string_view file) const;
    /// All keys of a section, without its heading.
    Records GetSection(std::string_view section, std::string_view file) const;
    Records GetSections(std::string_view file) const;  ///< All headings.
    std::vector<std::string> GetSectionNames(std::string_view file) const;

    /// Makes an empty file, or empties it.
    bool Create(std::string_view file) const;
    /// These two append at the end of the file and do not look for what is there already.
    bool AddSection(std::string_view section, std::string_view file) const;
    bool AddRecord(std::string_view key, std::string_view value, std::string_view section,
                   std::string_view file) const;
    /// Changes the first record of that key and section. A new key comes first in its section, a
    /// new section last in the file.
    bool SetValue(std::string_view key, std::string_view value, std::string_view section,
                  std::string_view file) const;
    bool DeleteRecord(std::string_view key, std::string_view section, std::string_view file) const;
    bool CommentRecord(char mark, std::string_view key, std::string_view section,
                       std::string_view file) const;
    bool UnCommentRecord(std::string_view key, std::string_view section,
                         std::string_view file) const;
    /// `comments` carries its own marks. A line end is added to two characters or more that have
    /// none.
    bool SetRecordComments(std::string_view comments, std::string_view key,
                           std::string_view section, std::string_view file) const;
    bool SetSectionComments(std::string_view comments, std::string_view section,
                            std::string_view file) const;

    /// These four succeed also when there is no such section.
    bool DeleteSection(std::string_view section, std::string_view file) const;
    bool RenameSection(std::string_view oldSection, std::string_view newSection,
                       std::string_view file) const;
    bool CommentSection(char mark, std::string_view section, std::string_view file) const;
    bool UnCommentSection(std::string_view section, std::string_view file) const;

    /// Sorts headings by section and keys within their section, by bytes. Keys without a heading
    /// are lost, and the keys of a section are below each of its headings. False without a
    /// heading.
    bool Sort(std::string_view file, bool descending) const;

private:
    bool Load(std::string_view file, Records& content) const;
    bool Save(std::string_view file, Records& content) const;
};
