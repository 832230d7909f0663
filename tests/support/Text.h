#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include <corvane/text/CStringW.h>

// How a failing test shows text.
inline void PrintTo(const CStringW& text, std::ostream* out) {
    *out << '"' << text.ToUtf8() << '"';
}
