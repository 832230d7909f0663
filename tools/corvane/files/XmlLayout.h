#pragma once

#include <string>
#include <string_view>

/// How elements are moved in below one another.
inline constexpr const char* kUsualIndent = "  ";

/// What one level is moved in by in an XML text: that of its first element that begins a line with
/// white space, else kUsualIndent.
std::string indentOf(std::string_view xml);

/// A well-formed XML text in UTF-8 with each element and comment on a line of its own, attributes
/// in the order in which rules have them, and lines of at most 120 columns where tags can be
/// broken. Elements that hold text, or say xml:space="preserve", stay as they are, and so do blank
/// lines, one for several. The text has an XML declaration and ends in a line end.
std::string laidOut(std::string_view xml, const std::string& indent);
