#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "config/CIniFile.h"

namespace {

using Record = CIniFile::Record;
using Records = CIniFile::Records;

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
