#pragma once

#include <string>
#include <string_view>

#include "xml/Failure.h"

namespace corvane::xml {

/// The source of a document as UTF-8 without byte order mark, with a zero after its end.
struct Decoded {
    std::string buffer;      ///< The text when it had to be converted.
    std::string_view given;  ///< The text where it stands in the bytes that were given.
    Fault fault;

    std::string_view text() const { return given.data() ? given : buffer; }
};

/// Decodes the bytes of a file: UTF-8 with or without byte order mark, UTF-16 with one, and where
/// that is declared, US-ASCII, ISO-8859-1 and windows-1252. A declaration that the bytes contradict
/// and every other encoding is a fault. UTF-8 is handed on unchecked. The bytes live
/// as long as the result.
Decoded decodeFile(const std::string& bytes);

/// The same for a text in memory. The encoding that it declares means nothing, but a name of none
/// is a fault.
Decoded decodeText(std::u16string_view text);

}  // namespace corvane::xml
