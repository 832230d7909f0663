#pragma once

#include <string_view>

#include "xml/Node.h"

namespace corvane::xml {

// The edits of the interface. What would make a document that cannot be read back raises
// kErrorFail, and nothing is changed.

/// A free element for a place below `scope`, which may be null. The name has to be an XML name
/// whose prefix is declared there.
Element* makeFreeElement(std::u16string_view name, const Element* scope);

/// Moves an element that is held to the end of a parent's children; the parent may be a document.
/// It must not make a cycle or a second document element.
void appendElement(Element& parent, Element& child);

/// Takes an element that is held out of its parent.
void removeElement(Element& child);

/// Adds or changes an attribute.
void changeAttribute(Element& element, std::u16string_view name, std::u16string_view value);

/// Replaces the content of an element by a text.
void changeText(Element& element, std::u16string_view text);

}  // namespace corvane::xml
