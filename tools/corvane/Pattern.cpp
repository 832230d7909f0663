#include "Pattern.h"

#include <vector>

namespace {

char lower(char unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
}

/// Follows all ways through the pattern at once, so that no pattern costs more than its length
/// times the text's.
class Matcher {
public:
    Matcher(std::string_view pattern, bool isPath)
        : pattern_(pattern), isPath_(isPath), reached_(pattern.size() + 1) {
        reach(reached_, 0);
    }

    bool matches(std::string_view text) {
        for (const char unit : text) {
            std::vector<bool> next(pattern_.size() + 1);
            for (std::size_t at = 0; at < pattern_.size(); ++at)
                if (reached_[at]) step(next, at, unit);
            reached_ = std::move(next);
        }
        return reached_.back();
    }

private:
    /// Marks a place, and those that a star leads to for nothing.
    void reach(std::vector<bool>& places, std::size_t at) const {
        places[at] = true;
        while (at < pattern_.size() && pattern_[at] == '*')
            places[++at] = true;
    }

    void step(std::vector<bool>& next, std::size_t at, char unit) const {
        const char sign = pattern_[at];
        const bool wild = !isPath_ || unit != '/';
        if (sign == '*') {
            const bool isDouble = (at > 0 && pattern_[at - 1] == '*') ||
                                  (at + 1 < pattern_.size() && pattern_[at + 1] == '*');
            if (wild || isDouble) reach(next, at);
        } else if (sign == '?' ? wild : isPath_ ? sign == unit : lower(sign) == lower(unit)) {
            reach(next, at + 1);
        }
    }

    std::string_view pattern_;
    bool isPath_;
    std::vector<bool> reached_;
};

}  // namespace

bool fitsName(std::string_view pattern, std::string_view name) {
    return Matcher(pattern, false).matches(name);
}

bool fitsPath(std::string_view pattern, std::string_view path) {
    return Matcher(pattern, true).matches(path);
}

bool isPattern(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}
