#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane::text {

/// What a scan met at the start of its text, after any white space.
enum class ScanResult {
    Matched,     ///< A number; the output holds it.
    NoMatch,     ///< Something that is no number; the output is untouched.
    EndOfInput,  ///< Nothing at all, or white space only; the output is untouched.
};

/// White space as Unicode has it, U+00A0 and U+3000 among it.
bool isSpace(char16_t unit);

/// Reads an optional sign and decimal digits, as "%d" and "%ld" do; what follows is ignored. A
/// number beyond 32 bits wraps modulo 2^32, so that a colour written with "%u" comes back whole.
ScanResult scanInt32(std::u16string_view text, std::int32_t& value);

/// Reads a decimal floating-point number, as "%lf" does, but no words such as "inf"; what follows
/// is ignored. The decimal separator is the point in every locale. Too large a number gives
/// infinity, too small a one 0. "e" alone marks an exponent: the "d" that old run times take too
/// ends the number here, as does "#", so that "1.#INF" is 1.
ScanResult scanDouble(std::u16string_view text, double& value);

// Numbers as the system's files hold them, the same in every locale.

std::u16string printInt32(std::int32_t value);    ///< As "%d" does.
std::u16string printUInt32(std::uint32_t value);  ///< As "%u" does.
std::u16string printDouble(double value);         ///< As "%f" does.

}  // namespace corvane::text
