#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace corvane::xml {

/// Follows a parser through the content of its source, from one construct to the next, to tell what
/// stands in the source itself from what a reference stands for. The parser says how far it has
/// come; in what an entity holds it stays after the reference to that entity.
class SourceCursor {
public:
    explicit SourceCursor(std::string_view source) : source_(source) {}

    /// A piece of text that ends where the parser is or, when `ahead` is not 0, that many bytes
    /// after; true when it comes from a reference.
    bool passText(std::size_t offset, std::size_t ahead) {
        if (ahead > 0) {
            at_ = offset + ahead;
            return false;
        }
        passEmptyReferences(offset);
        const bool escaped = offset <= at_ || source_[at_] == '&';
        at_ = std::max(at_, offset);
        return escaped;
    }

    /// The start tag of the document element, in which the parser is at `offset`.
    std::size_t enterRoot(std::size_t offset) {
        at_ = source_.rfind('<', offset);
        return passMarkup(offset);
    }

    /// A tag, comment, section or instruction, at or just before whose ">" the parser is. Gives
    /// where it begins, or npos when it comes from an entity.
    std::size_t passMarkup(std::size_t offset) {
        passEmptyReferences(offset);
        if (offset <= at_ || source_[at_] != '<') {
            at_ = std::max(at_, offset);
            return source_.npos;
        }
        const std::size_t start = at_;
        at_ = source_[offset - 1] == '>' ? offset : source_.find('>', offset) + 1;
        return start;
    }

private:
    // A reference to nothing is not reported.
    void passEmptyReferences(std::size_t offset) {
        while (at_ < offset && source_[at_] == '&') {
            const std::size_t end = source_.find(';', at_);
            if (end + 1 >= offset) return;
            at_ = end + 1;
        }
    }

    std::string_view source_;
    std::size_t at_ = 0;
};

}  // namespace corvane::xml
