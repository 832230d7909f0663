#include <utility>

#include "config/IniRecord.h"

namespace corvane::config {
namespace {

constexpr std::string_view kTrimmed = " \t\n\r";
constexpr std::string_view kCommentMarks = "#;";

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kTrimmed);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kTrimmed) - first + 1);
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

}  // namespace corvane::config
