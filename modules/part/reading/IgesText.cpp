#include "IgesText.h"

#include <algorithm>
#include <cctype>

#include "TextTokens.h"

namespace corvane::part::reading {
namespace {

// Columns of IGES 5.3, section 2.2.4: what a line says, the letter of its section, its number.
constexpr std::size_t kLine = 80, kSection = 72, kNumber = 73, kField = 8;
constexpr std::size_t kLongestLine = 98;  // blanks may follow
constexpr std::string_view kSections = "SGDPT";
constexpr long kHighest = 9'999'999;

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r") == text.npos;
}

bool isWhole(std::string_view field, long least) {
    TextTokens text(field);
    text.whole(least, kHighest * 10);
    return text.good() && isBlank(text.rest());
}

/// Fields of the first or second line of an entity in the directory. The second one ends with a
/// name.
bool isDirectoryLine(std::string_view line, bool second) {
    for (std::size_t field = 0; field < (second ? 5 : 9); ++field) {
        const std::string_view text = line.substr(field * kField, kField);
        if (!isBlank(text) && !isWhole(text, -kHighest)) return false;
    }
    return true;
}

class Checker {
public:
    /// Takes the next line; false for one that may not be there.
    bool take(std::string_view line) {
        const std::size_t end = std::min(line.size(), kLine);
        if (line.size() > kLongestLine || !isBlank(line.substr(end))) return false;
        if (section_ == kSections.size() - 1) return isBlank(line);
        if (line.size() < kLine) return false;
        const std::size_t section = kSections.find(line[kSection], section_);
        if (section == kSections.npos || !isWhole(line.substr(kNumber, kLine - kNumber), 1))
            return false;
        section_ = section;
        if (kSections[section] == 'D') return isDirectoryLine(line, directory_++ % 2 == 1);
        if (kSections[section] != 'P') return true;
        return directory_ % 2 == 0 && isWhole(line.substr(kSection - kField, kField), 1);
    }

    [[nodiscard]] bool atEnd() const { return section_ == kSections.size() - 1; }

private:
    std::size_t section_ = 0, directory_ = 0;
};

}  // namespace

std::string igesFault(std::string_view text) {
    Checker checker;
    std::size_t number = 0;
    while (!text.empty()) {
        ++number;
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (!checker.take(text.substr(0, end)))
            return "the IGES file is damaged at line " + std::to_string(number);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return checker.atEnd() ? std::string() : "the IGES file is cut short";
}

}  // namespace corvane::part::reading
