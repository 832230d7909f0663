#include "config/CIniFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "system/Files.h"
#include "system/Paths.h"

using corvane::config::IniReader;

namespace {

std::optional<std::string> readIniFile(std::string_view file) {
    return corvane::system::readFile(corvane::system::pathOfBytes(file),
                                     corvane::config::kLargestIniFile);
}

// The first records that `wanted` picks, at most `limit`; the file is read no further than that.
template <typename Wanted>
CIniFile::Records pick(std::string_view file, Wanted wanted, std::size_t limit = SIZE_MAX) {
    CIniFile::Records picked;
    const std::optional<std::string> text = readIniFile(file);
    if (!text) return picked;
    IniReader reader(*text);
    while (picked.size() < limit) {
        std::optional<CIniFile::Record> record = reader.next();
        if (!record) break;
        if (wanted(*record)) picked.push_back(std::move(*record));
    }
    return picked;
}

}  // namespace

bool CIniFile::FileExists(std::string_view file) const {
    return readIniFile(file).has_value();
}

std::string CIniFile::Content(std::string_view file) const {
    Records content;
    return Load(file, content) ? corvane::config::iniReadableText(content) : std::string();
}

std::string CIniFile::GetValue(std::string_view key, std::string_view section,
                               std::string_view file) const {
    Records found = GetRecord(key, section, file);
    return found.empty() ? std::string() : std::move(found.front().Value);
}

bool CIniFile::RecordExists(std::string_view key, std::string_view section,
                            std::string_view file) const {
    return !GetRecord(key, section, file).empty();
}

bool CIniFile::SectionExists(std::string_view section, std::string_view file) const {
    return !pick(
                file, [&](const Record& record) { return record.Section == section; }, 1)
                .empty();
}

CIniFile::Records CIniFile::GetRecord(std::string_view key, std::string_view section,
                                      std::string_view file) const {
    return pick(
        file, [&](const Record& record) { return record.matches(key, section); }, 1);
}

CIniFile::Records CIniFile::GetSection(std::string_view section, std::string_view file) const {
    return pick(file, [&](const Record& record) {
        return record.Section == section && !record.isHeading();
    });
}

CIniFile::Records CIniFile::GetSections(std::string_view file) const {
    return pick(file, [](const Record& record) { return record.isHeading(); });
}

std::vector<std::string> CIniFile::GetSectionNames(std::string_view file) const {
    std::vector<std::string> names;
    for (Record& heading : GetSections(file))
        names.push_back(std::move(heading.Section));
    return names;
}

bool CIniFile::Load(std::string_view file, Records& content) const {
    content.clear();
    const std::optional<std::string> text = readIniFile(file);
    if (!text) return false;
    IniReader reader(*text);
    while (std::optional<Record> record = reader.next())
        content.push_back(std::move(*record));
    return true;
}

bool CIniFile::Save(std::string_view file, Records& content) const {
    corvane::config::groupBySection(content);
    const std::string text = corvane::config::iniFileText(content);
    // What could not be read back is not written.
    return text.size() <= corvane::config::kLargestIniFile &&
           corvane::system::replaceFile(corvane::system::pathOfBytes(file), text);
}

namespace {

using Record = CIniFile::Record;
using Records = CIniFile::Records;

// Applies `edit` to the first record that `wanted` picks; false when there is none.
template <typename Wanted, typename Edit>
bool editFirst(Records& content, Wanted wanted, Edit edit) {
    const auto found = std::ranges::find_if(content, wanted);
    if (found == content.end()) return false;
    edit(*found);
    return true;
}

template <typename Edit>
void editSection(Records& content, std::string_view section, Edit edit) {
    for (Record& record : content) {
        if (record.Section == section) edit(record);
    }
}

auto byKey(std::string_view key, std::string_view section) {
    return [=](const Record& record) { return record.matches(key, section); };
}

auto bySection(std::string_view section) {
    return [=](const Record& record) { return record.Section == section; };
}

auto setMark(char mark) {
    return [=](Record& record) { record.Commented = mark; };
}

auto setComments(std::string_view comments) {
    return [=](Record& record) {
        record.Comments = comments;
        if (comments.size() >= 2 && !comments.ends_with('\n')) record.Comments += '\n';
    };
}

Record heading(std::string_view section) {
    Record record;
    record.Section = section;
    return record;
}

Record keyRecord(std::string_view key, std::string_view value, std::string_view section) {
    Record record = heading(section);
    record.Key = key;
    record.Value = value;
    return record;
}

}  // namespace

bool CIniFile::Create(std::string_view file) const {
    Records content;
    return Save(file, content);
}

bool CIniFile::AddSection(std::string_view section, std::string_view file) const {
    Records content;
    if (!Load(file, content)) return false;
    content.push_back(heading(section));
    return Save(file, content);
}

bool CIniFile::AddRecord(std::string_view key, std::string_view value, std::string_view section,
                         std::string_view file) const {
    Records content;
    if (!Load(file, content)) return false;
    content.push_back(keyRecord(key, value, section));
    return Save(file, content);
}

bool CIniFile::SetValue(std::string_view key, std::string_view value, std::string_view section,
                        std::string_view file) const {
    Records content;
    if (!Load(file, content)) return false;
    const auto first = std::ranges::find_if(content, bySection(section));
    if (first == content.end()) {
        content.push_back(heading(section));
        content.push_back(keyRecord(key, value, section));
    } else if (const auto same = std::find_if(first, content.end(), byKey(key, section));
               same != content.end()) {
        same->Value = value;
    } else {
        content.insert(first + 1, keyRecord(key, value, section));
    }
    return Save(file, content);
}

bool CIniFile::DeleteRecord(std::string_view key, std::string_view section,
                            std::string_view file) const {
    Records content;
    if (!Load(file, content)) return false;
    const auto found = std::ranges::find_if(content, byKey(key, section));
    if (found == content.end()) return false;
    content.erase(found);
    return Save(file, content);
}

bool CIniFile::CommentRecord(char mark, std::string_view key, std::string_view section,
                             std::string_view file) const {
    Records content;
    return Load(file, content) && editFirst(content, byKey(key, section), setMark(mark)) &&
           Save(file, content);
}

bool CIniFile::UnCommentRecord(std::string_view key, std::string_view section,
                               std::string_view file) const {
    return CommentRecord(' ', key, section, file);
}

bool CIniFile::SetRecordComments(std::string_view comments, std::string_view key,
                                 std::string_view section, std::string_view file) const {
    Records content;
    return Load(file, content) && editFirst(content, byKey(key, section), setComments(comments)) &&
           Save(file, content);
}

bool CIniFile::SetSectionComments(std::string_view comments, std::string_view section,
                                  std::string_view file) const {
    return SetRecordComments(comments, {}, section, file);
}

bool CIniFile::DeleteSection(std::string_view section, std::string_view file) const {
    Records content;
    if (!Load(file, content)) return false;
    std::erase_if(content, bySection(section));
    return Save(file, content);
}

bool CIniFile::RenameSection(std::string_view oldSection, std::string_view newSection,
                             std::string_view file) const {
    Records content;
    if (!Load(file, content)) return false;
    editSection(content, oldSection, [=](Record& record) { record.Section = newSection; });
    return Save(file, content);
}

bool CIniFile::CommentSection(char mark, std::string_view section, std::string_view file) const {
    Records content;
    if (!Load(file, content)) return false;
    editSection(content, section, setMark(mark));
    return Save(file, content);
}

bool CIniFile::UnCommentSection(std::string_view section, std::string_view file) const {
    return CommentSection(' ', section, file);
}

namespace {

void sortBy(Records& records, std::string Record::*field, bool descending) {
    if (descending) {
        std::ranges::stable_sort(records, std::greater(), field);
    } else {
        std::ranges::stable_sort(records, std::less(), field);
    }
}

std::size_t sizeOf(const Record& record) {
    return record.Comments.size() + record.Section.size() + record.Key.size() + record.Value.size();
}

}  // namespace

bool CIniFile::Sort(std::string_view file, bool descending) const {
    Records loaded;
    if (!Load(file, loaded)) return false;
    Records headings;
    std::unordered_map<std::string, Records> keys;
    for (Record& record : loaded) {
        Records& target = record.isHeading() ? headings : keys[record.Section];
        target.push_back(std::move(record));
    }
    if (headings.empty()) return false;
    sortBy(headings, &Record::Section, descending);
    for (auto& [section, records] : keys)
        sortBy(records, &Record::Key, descending);

    // The keys of a section are written below each of its headings, so a hostile file could swell.
    Records sorted;
    std::size_t size = 0;
    for (const Record& heading : headings) {
        sorted.push_back(heading);
        for (const Record& record : keys[heading.Section]) {
            size += sizeOf(record) + 1;
            if (size > corvane::config::kLargestIniFile) return false;
            sorted.push_back(record);
        }
    }
    return Save(file, sorted);
}
