#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lint {

/// Counts from 1, in characters; 0 means the file as a whole.
struct Place {
    std::int64_t line = 0;
    std::int64_t column = 0;

    friend auto operator<=>(const Place&, const Place&) = default;
};

struct Attribute {
    std::string name;
    std::string value;
    Place place;          ///< Of the name.
    Place valuePlace;     ///< Of the first character between the quotes.
    bool isKnown = true;  ///< False when the value holds an entity that the document declares.
};

struct Element {
    std::string name;
    std::vector<Attribute> attributes;
    std::vector<Element> children;
    std::string text;  ///< Its own text, without that of its children.
    Place place;       ///< Of its "<".
    Place textPlace;   ///< Of the first character of the text that is no white space.
    bool isTextKnown = true;

    const Attribute* attribute(std::string_view wanted) const;
    const Element* child(std::string_view wanted) const;
};

/// Elements below one another deeper than this are passed over; a rule file has six levels.
inline constexpr std::size_t kDeepest = 64;

/// The elements of an XML text with the place of each piece, which no parser gives for attributes.
/// The text is one that the library has loaded, so it is well-formed; of any other text the result
/// is a part of its elements. Texts are UTF-8; what
/// its mark or its declaration calls UTF-16, ISO-8859-1 or windows-1252 is converted. What an
/// entity of the document holds is not looked into: the element or attribute is marked as not
/// known.
Element readSource(std::string_view bytes);

/// UTF-8 for bytes that are UTF-8 or, with a mark, UTF-16.
std::string utf8Of(std::string_view bytes);

}  // namespace lint
