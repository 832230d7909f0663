#include "Pattern.h"

#include <cctype>
#include <cstring>

#include "Run.h"

namespace scripthost {
namespace {

constexpr std::ptrdiff_t kUnfinished = -1;
constexpr std::ptrdiff_t kPosition = -2;
constexpr char kEscape = '%';
/// Steps that are collected before they are counted against the limits.
constexpr std::uint64_t kStepsAtOnce = 256;

int unitOf(char value) {
    return static_cast<unsigned char>(value);
}

bool isInClass(int unit, int name) {
    int result = 0;
    switch (std::tolower(name)) {
        case 'a':
            result = std::isalpha(unit);
            break;
        case 'c':
            result = std::iscntrl(unit);
            break;
        case 'd':
            result = std::isdigit(unit);
            break;
        case 'g':
            result = std::isgraph(unit);
            break;
        case 'l':
            result = std::islower(unit);
            break;
        case 'p':
            result = std::ispunct(unit);
            break;
        case 's':
            result = std::isspace(unit);
            break;
        case 'u':
            result = std::isupper(unit);
            break;
        case 'w':
            result = std::isalnum(unit);
            break;
        case 'x':
            result = std::isxdigit(unit);
            break;
        case 'z':
            result = unit == 0 ? 1 : 0;
            break;
        default:
            return name == unit;
    }
    return (result != 0) != (std::isupper(name) != 0);
}

}  // namespace

void Matcher::work(std::size_t steps) {
    steps_ += steps;
    if (steps_ < kStepsAtOnce) return;
    const std::uint64_t counted = steps_;
    steps_ = 0;
    spend(lua_, counted);
}

const char* Matcher::matchAt(const char* from) {
    depth_ = kMostDepth;
    captureCount_ = 0;
    work(1);  // an empty pattern has no item that counts
    return match(from, pattern_);
}

const char* Matcher::match(const char* at, const char* item) {
    if (depth_-- == 0) luaL_error(lua_, "pattern too complex");
    const char* end = matchItems(at, item);
    ++depth_;
    return end;
}

const char* Matcher::matchItems(const char* at, const char* item) {
    while (at && item != patternEnd_) {
        work(1);
        if (*item == '(') {
            const bool position = item[1] == ')';
            return openCapture(at, item + (position ? 2 : 1), position ? kPosition : kUnfinished);
        }
        if (*item == ')') return closeCapture(at, item + 1);
        if (*item == '$' && item + 1 == patternEnd_) return at == subjectEnd_ ? at : nullptr;
        if (*item == kEscape && item[1] && std::strchr("bf0123456789", item[1])) {
            at = matchEscape(at, item);
            continue;
        }
        const char* end = endOfItem(item);
        const char suffix = *end;  // a zero follows the pattern
        const bool here = matchesOne(at, item, end);
        if (suffix == '*' && here) return expandMost(at, item, end);
        if (suffix == '-' && here) return expandLeast(at, item, end);
        if (suffix == '+') return here ? expandMost(at + 1, item, end) : nullptr;
        const bool optional = suffix == '?' || suffix == '*' || suffix == '-';
        if (!here && !optional) return nullptr;
        if (here && optional) {
            if (const char* rest = match(at + 1, end + 1)) return rest;
        } else if (here) {
            ++at;
        }
        item = end + (optional ? 1 : 0);
    }
    return at;
}

/// The items that an escape begins and that take no suffix. Moves `item` past them.
const char* Matcher::matchEscape(const char* at, const char*& item) {
    const char kind = item[1];
    item += 2;
    if (kind == 'f') return matchFrontier(at, item);
    if (kind != 'b') return matchCaptured(at, kind);
    const char* end = matchBalanced(at, item);
    item += 2;
    return end;
}

const char* Matcher::matchBalanced(const char* at, const char* item) {
    if (item >= patternEnd_ - 1) luaL_error(lua_, "malformed pattern (missing arguments to '%%b')");
    if (at >= subjectEnd_ || *at != *item) return nullptr;
    int depth = 1;
    while (++at < subjectEnd_) {
        work(1);
        if (*at == item[1]) {
            if (--depth == 0) return at + 1;
        } else if (*at == *item) {
            ++depth;
        }
    }
    return nullptr;
}

const char* Matcher::matchFrontier(const char* at, const char*& item) {
    if (*item != '[') luaL_error(lua_, "missing '[' after '%%f' in pattern");
    const char* set = item;
    item = endOfItem(item);
    const int before = at == subject_ ? 0 : unitOf(at[-1]);
    return !isInSet(before, set, item - 1) && isInSet(unitOf(*at), set, item - 1) ? at : nullptr;
}

const char* Matcher::matchCaptured(const char* at, int digit) {
    const int index = digit - '1';
    if (index < 0 || index >= captureCount_ || captures_[index].length == kUnfinished)
        luaL_error(lua_, "invalid capture index %%%d", index + 1);
    if (captures_[index].length == kPosition) return nullptr;
    const auto length = static_cast<std::size_t>(captures_[index].length);
    if (static_cast<std::size_t>(subjectEnd_ - at) < length) return nullptr;
    work(length / 16);
    return std::memcmp(captures_[index].start, at, length) == 0 ? at + length : nullptr;
}

const char* Matcher::expandMost(const char* at, const char* item, const char* itemEnd) {
    std::ptrdiff_t count = 0;
    while (matchesOne(at + count, item, itemEnd))
        ++count;
    for (; count >= 0; --count)
        if (const char* end = match(at + count, itemEnd + 1)) return end;
    return nullptr;
}

const char* Matcher::expandLeast(const char* at, const char* item, const char* itemEnd) {
    for (;; ++at) {
        if (const char* end = match(at, itemEnd + 1)) return end;
        if (!matchesOne(at, item, itemEnd)) return nullptr;
    }
}

const char* Matcher::openCapture(const char* at, const char* item, std::ptrdiff_t kind) {
    if (captureCount_ >= kMostCaptures) luaL_error(lua_, "too many captures");
    captures_[captureCount_++] = {at, kind};
    const char* end = match(at, item);
    if (!end) --captureCount_;
    return end;
}

const char* Matcher::closeCapture(const char* at, const char* item) {
    int index = captureCount_ - 1;
    while (index >= 0 && captures_[index].length != kUnfinished)
        --index;
    if (index < 0) luaL_error(lua_, "invalid pattern capture");
    captures_[index].length = at - captures_[index].start;
    const char* end = match(at, item);
    if (!end) captures_[index].length = kUnfinished;
    return end;
}

const char* Matcher::endOfItem(const char* item) {
    const char* at = item;
    const char first = *at++;
    if (first == kEscape) {
        if (at == patternEnd_) luaL_error(lua_, "malformed pattern (ends with '%%')");
        return at + 1;
    }
    if (first != '[') return at;
    if (*at == '^') ++at;
    do {
        if (at == patternEnd_) luaL_error(lua_, "malformed pattern (missing ']')");
        if (*at++ == kEscape && at < patternEnd_) ++at;
    } while (*at != ']');
    work(static_cast<std::size_t>(at - item) / 4);
    return at + 1;
}

bool Matcher::matchesOne(const char* at, const char* item, const char* itemEnd) {
    work(1);
    if (at >= subjectEnd_) return false;
    switch (*item) {
        case '.':
            return true;
        case kEscape:
            return isInClass(unitOf(*at), unitOf(item[1]));
        case '[':
            return isInSet(unitOf(*at), item, itemEnd - 1);
        default:
            return *item == *at;
    }
}

bool Matcher::isInSet(int unit, const char* set, const char* setEnd) {
    work(static_cast<std::size_t>(setEnd - set) / 4);
    const bool listed = set[1] != '^';
    const char* at = set + (listed ? 1 : 2);
    for (; at < setEnd; ++at) {
        if (*at == kEscape) {
            ++at;
            if (isInClass(unit, unitOf(*at))) return listed;
        } else if (at[1] == '-' && at + 2 < setEnd) {
            at += 2;
            if (unitOf(at[-2]) <= unit && unit <= unitOf(*at)) return listed;
        } else if (unitOf(*at) == unit) {
            return listed;
        }
    }
    return !listed;
}

int Matcher::pushCaptures(const char* from, const char* to) {
    const int count = captureCount_ == 0 && from ? 1 : captureCount_;
    luaL_checkstack(lua_, count, "too many captures");
    for (int i = 0; i < count; ++i)
        pushCapture(i, from, to);
    return count;
}

void Matcher::pushCapture(int index, const char* from, const char* to) {
    if (index >= captureCount_) {
        if (index != 0) luaL_error(lua_, "invalid capture index %%%d", index + 1);
        lua_pushlstring(lua_, from, static_cast<std::size_t>(to - from));
        return;
    }
    const Capture& capture = captures_[index];
    if (capture.length == kUnfinished) luaL_error(lua_, "unfinished capture");
    if (capture.length == kPosition) {
        lua_pushinteger(lua_, capture.start - subject_ + 1);
    } else {
        lua_pushlstring(lua_, capture.start, static_cast<std::size_t>(capture.length));
    }
}

}  // namespace scripthost
