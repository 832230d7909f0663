#include "TextTokens.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace corvane::part::reading {
namespace {

/// The kernel takes words into buffers of this length.
constexpr std::size_t kLongestWord = 254;

constexpr std::string_view kSpace = " \t\n\v\f\r";

/// How much of a text is a number.
template <typename Number>
std::size_t parse(std::string_view text, Number& number) {
    const std::size_t sign = text.starts_with('+') ? 1 : 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + sign, end, number);
    return error == std::errc() ? static_cast<std::size_t>(stop - text.data()) : 0;
}

}  // namespace

void TextTokens::skipSpace() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kSpace), rest_.size()));
}

std::string_view TextTokens::word() {
    if (!good_) return {};
    skipSpace();
    const std::string_view found = rest_.substr(0, rest_.find_first_of(kSpace));
    rest_.remove_prefix(found.size());
    require(!found.empty() && found.size() <= kLongestWord);
    return good_ ? found : std::string_view();
}

std::string_view TextTokens::line() {
    if (!good_) return {};
    const std::string_view found = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(std::min(found.size() + 1, rest_.size()));
    require(found.size() <= kLongestWord);
    return good_ ? found : std::string_view();
}

long TextTokens::whole(long least, long greatest) {
    if (!good_) return 0;
    skipSpace();
    long number = 0;
    const std::size_t size = parse(rest_, number);
    rest_.remove_prefix(size);
    require(size > 0 && number >= least && number <= greatest);
    return good_ ? number : 0;
}

double TextTokens::real() {
    double number = 0.0;
    const std::string_view text = word();
    require(parse(text, number) == text.size() && std::isfinite(number));
    return good_ ? number : 0.0;
}

void TextTokens::reals(long number) {
    for (long i = 0; i < number && good_; ++i)
        real();
}

std::size_t TextTokens::lineNumber() const {
    const std::string_view taken = text_.substr(0, text_.size() - rest_.size());
    return 1 + static_cast<std::size_t>(std::count(taken.begin(), taken.end(), '\n'));
}

}  // namespace corvane::part::reading
