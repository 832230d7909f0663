#pragma once

#include <string_view>

#include "xml/Node.h"

namespace corvane::xml {

/// The attribute of that name, prefix included, or null.
Attribute* findAttribute(const Element& element, std::u16string_view name);

/// Adds an attribute behind the others. Both texts lie where makeText puts those of the element.
void appendAttribute(Element& element, Text name, Text value);

/// Adds or changes an attribute with texts of its own. Name and value are known to be lawful.
void setAttribute(Element& element, std::u16string_view name, std::u16string_view value);

void dropAttributes(Element& element) noexcept;

}  // namespace corvane::xml
