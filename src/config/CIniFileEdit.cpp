#include <algorithm>
#include <utility>

#include "config/CIniFile.h"

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
