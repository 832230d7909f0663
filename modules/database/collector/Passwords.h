#pragma once

#include <string_view>
#include <vector>

#include <corvane/text/CStringW.h>

namespace collector {

/// The secrets of a connection string, so that no message and no description shows them: the values
/// of the keys that name a password, a secret or a token. A value may stand in braces or quotes and
/// then hold semicolons; one whose closing mark is missing reaches to the end.
class Passwords {
public:
    Passwords() = default;
    explicit Passwords(const CStringW& connectionString);

    /// The connection string with "***" in place of each secret.
    const CStringW& description() const { return description_; }

    /// A message with "***" wherever a secret stands in it.
    CStringW mask(const CStringW& text) const;

private:
    void add(std::u16string_view value);

    CStringW description_;
    std::vector<CStringW> secrets_;
};

}  // namespace collector
