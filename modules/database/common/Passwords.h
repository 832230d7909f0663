#pragma once

#include <string_view>
#include <vector>

#include <corvane/text/CStringW.h>

namespace qor_db::driver {

/// The secrets of a connection string: the values of the keys that name a password, a secret or a
/// token. No message and no description shows them.
///
/// Drivers differ in what marks around a value mean, so each value counts in every way in which it
/// may be read, and a key also where it may be inside another value: too much is hidden rather
/// than too little.
class Passwords {
public:
    Passwords() = default;
    explicit Passwords(std::u16string_view connectionString);

    /// The connection string with "***" in place of each secret.
    const CStringW& description() const { return description_; }

    /// A message with "***" wherever a secret is in it, however it got there. A secret of
    /// up to three units is only hidden where it is by itself: without the letters of a
    /// one-letter password no message could be read, and their gaps would tell it.
    CStringW mask(std::u16string_view message) const;

private:
    void add(std::u16string_view secret);

    CStringW description_;
    std::vector<CStringW> secrets_;  ///< The longer first: one may be a part of another.
};

}  // namespace qor_db::driver
