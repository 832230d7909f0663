#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

/// The text with nothing in it that a terminal would act on: control characters and marks that turn
/// the writing direction become visible escapes, tabs and line ends blanks. Rule files, scripts and
/// modules choose the texts that are shown.
CStringW harmless(std::u16string_view text);

/// Columns that a terminal gives the text: two for East Asian wide characters, none for marks.
std::size_t displayWidth(std::u16string_view text);

/// A text of the program's own files and formats, which is UTF-8.
inline CStringW wide(std::string_view text) {
    return CStringW::FromUtf8(text);
}

/// True of well-formed UTF-8. Names of files need not be.
bool isUtf8(std::string_view text);

/// The text, or as much of it as fits into `columns` with an ellipsis after it.
CStringW fitted(std::u16string_view text, std::size_t columns);

/// The lines of a text, without empty ones.
std::vector<CStringW> linesOf(std::u16string_view text);

/// A path with the separators of this system, as a person would type it.
CStringW shownPath(std::u16string_view path);

/// What follows the last separator of either kind.
std::u16string_view lastName(std::u16string_view path);

/// A status as it is found in references: "0x80040154".
CStringW statusText(QorLong status);
