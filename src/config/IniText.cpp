#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "config/IniRecord.h"

namespace corvane::config {
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
