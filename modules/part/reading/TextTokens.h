#pragma once

#include <string_view>

namespace corvane::part::reading {

/// Takes words and numbers off the front of a text. What does not fit spoils it for good: from then
/// on nothing is taken, and every answer is empty or zero.
class TextTokens {
public:
    explicit TextTokens(std::string_view text) : text_(text), rest_(text) {}

    [[nodiscard]] bool good() const { return good_; }
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    [[nodiscard]] std::string_view rest() const { return rest_; }
    void require(bool holds) { good_ = good_ && holds; }

    std::string_view word();
    std::string_view line();  ///< the rest of the line
    /// A word may follow at once, without a space.
    long whole(long least, long greatest);
    long count() { return whole(0, static_cast<long>(text_.size())); }
    bool flag() { return whole(0, 1) != 0; }
    double real();  ///< finite
    void reals(long number);

    /// Of the word that was taken last, from 1.
    [[nodiscard]] std::size_t lineNumber() const;

private:
    void skipSpace();

    std::string_view text_, rest_;
    bool good_ = true;
};

}  // namespace corvane::part::reading
