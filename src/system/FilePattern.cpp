#include <cstddef>

#include "system/Paths.h"
#include "system/Unicode.h"

namespace corvane::system {

bool matchesPattern(std::u16string_view name, std::u16string_view pattern) {
    // When a unit does not fit, only the last "*" needs to take one more: the ones before it have
    // found their earliest place already.
    std::size_t at = 0;
    std::size_t wanted = 0;
    std::size_t star = pattern.npos;
    std::size_t starEnd = 0;
    while (at < name.size()) {
        if (wanted < pattern.size() && pattern[wanted] == u'*') {
            star = wanted++;
            starEnd = at;
        } else if (wanted < pattern.size() &&
                   (pattern[wanted] == u'?' || toLower(pattern[wanted]) == toLower(name[at]))) {
            ++wanted;
            ++at;
        } else if (star != pattern.npos) {
            wanted = star + 1;
            at = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', wanted) == pattern.npos;
}

}  // namespace corvane::system
