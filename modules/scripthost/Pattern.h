#pragma once

#include <cstddef>
#include <cstdint>
#include <lua.hpp>

namespace scripthost {

/// Matches text against a pattern of Lua's pattern language, with Lua's own results and error
/// messages, and counts its work: a pattern can take exponential time. Any operation may raise.
class Matcher {
public:
    Matcher(lua_State* lua, const char* subject, std::size_t subjectSize, const char* pattern,
            std::size_t patternSize)
        : lua_(lua),
          subject_(subject),
          subjectEnd_(subject + subjectSize),
          pattern_(pattern),
          patternEnd_(pattern + patternSize) {}

    /// The end of a match that begins exactly at `from`, or null.
    const char* matchAt(const char* from);

    /// Pushes the captures of the last match. When there are none and `from` is not null, the whole
    /// match from there to `to`. Gives the number of values.
    int pushCaptures(const char* from, const char* to);
    /// Pushes one capture, from 0; number 0 of a pattern without captures is the whole match.
    void pushCapture(int index, const char* from, const char* to);

private:
    struct Capture {
        const char* start;
        std::ptrdiff_t length;
    };

    void work(std::size_t steps);
    const char* match(const char* at, const char* item);
    const char* matchItems(const char* at, const char* item);
    const char* matchEscape(const char* at, const char*& item);
    const char* matchBalanced(const char* at, const char* item);
    const char* matchFrontier(const char* at, const char*& item);
    const char* matchCaptured(const char* at, int digit);
    const char* expandMost(const char* at, const char* item, const char* itemEnd);
    const char* expandLeast(const char* at, const char* item, const char* itemEnd);
    const char* openCapture(const char* at, const char* item, std::ptrdiff_t kind);
    const char* closeCapture(const char* at, const char* item);
    const char* endOfItem(const char* item);
    bool matchesOne(const char* at, const char* item, const char* itemEnd);
    bool isInSet(int unit, const char* set, const char* setEnd);

    static constexpr int kMostDepth = 200;
    static constexpr int kMostCaptures = 32;

    lua_State* lua_;
    const char* subject_;
    const char* subjectEnd_;
    const char* pattern_;
    const char* patternEnd_;
    std::uint64_t steps_ = 0;
    int depth_ = kMostDepth;
    int captureCount_ = 0;
    Capture captures_[kMostCaptures];
};

}  // namespace scripthost
