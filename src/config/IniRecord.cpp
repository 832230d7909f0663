#include "config/IniRecord.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <corvane/base/Text.h>

namespace corvane::config {

namespace {

constexpr std::string_view kTrimmed = " \t\n\r";
constexpr std::string_view kCommentMarks = "#;";

std::string_view trim(std::string_view text) {
    return trimmed(text, kTrimmed);
}

// The name in a line that is a heading.
std::optional<std::string_view> headingName(std::string_view text) {
    if (text.find('[') == text.npos) return std::nullopt;
    const std::string_view behindFirst = text.substr(1);
    const std::size_t end = behindFirst.find(']');
    if (end == text.npos && text.front() != '[') return std::nullopt;
    return behindFirst.substr(0, end);
}

}  // namespace

std::optional<IniRecord> IniReader::next() {
    for (std::size_t end = rest_.find('\n'); end != rest_.npos; end = rest_.find('\n')) {
        const std::string_view line = trim(rest_.substr(0, end));
        rest_.remove_prefix(end + 1);
        if (line.empty()) continue;
        IniRecord record = readLine(line);
        if (pendingComment_.empty()) return record;
    }
    return std::nullopt;
}

IniRecord IniReader::readLine(std::string_view line) {
    IniRecord record;
    if (kCommentMarks.find(line.front()) != line.npos) {
        if (line.find_first_of("[=") == line.npos) {
            pendingComment_.append(line).append(1, '\n');
            return record;
        }
        record.Commented = line.front();
        line = trim(line.substr(1));
    }
    if (const std::optional<std::string_view> name = headingName(line)) {
        record.Comments = std::exchange(pendingComment_, {});
        record.Section = currentSection_ = *name;
        line = *name;
    }
    // A heading with "=" in its name is read on as a key of that odd section.
    if (const std::size_t sign = line.find('='); sign != line.npos) {
        record.Comments = std::exchange(pendingComment_, {});
        record.Section = currentSection_;
        record.Key = line.substr(0, sign);
        record.Value = line.substr(sign + 1);
    }
    return record;
}

namespace {

void appendBody(std::string& text, const IniRecord& record) {
    if (record.isHeading()) {
        text.append(1, '[').append(record.Section).append(1, ']');
    } else {
        text.append(record.Key).append(1, '=').append(record.Value);
    }
}

}  // namespace

void groupBySection(IniRecords& records) {
    // The names stay where they are until every record has its group.
    std::unordered_map<std::string_view, std::size_t> numbers;
    std::vector<std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto [place, isNew] = numbers.try_emplace(records[i].Section, groups.size());
        if (isNew) groups.emplace_back();
        groups[place->second].push_back(i);
    }
    IniRecords grouped;
    grouped.reserve(records.size());
    for (const std::vector<std::size_t>& group : groups) {
        for (const std::size_t i : group)
            grouped.push_back(std::move(records[i]));
    }
    records = std::move(grouped);
}

std::string iniFileText(const IniRecords& records) {
    std::string text;
    for (const IniRecord& record : records) {
        text.append(record.Comments).append(1, record.Commented);
        appendBody(text, record);
        text += '\n';
    }
    return text;
}

std::string iniReadableText(const IniRecords& records) {
    std::string text;
    for (const IniRecord& record : records) {
        if (!text.empty()) text += '\n';
        text += record.Comments;
        if (record.Commented != ' ') text += record.Commented;
        appendBody(text, record);
    }
    return text;
}

}  // namespace corvane::config
