#include "config/CIniFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
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
