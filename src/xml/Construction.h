#pragma once

#include <string_view>

#include "xml/Node.h"

namespace corvane::xml {

/// A free element for a place below `scope`, which may be null. Raises kErrorFail when the name is
/// no XML name or has a prefix that is not declared there.
Element* makeElement(std::u16string_view name, const Element* scope);

/// Moves an element that is held behind the children of a parent, which may be a document. Raises,
/// with nothing changed, when that would make a cycle or a second document element.
void appendElement(Element& parent, Element& child);

/// Takes an element that is held out of its parent.
void removeElement(Element& child);

}  // namespace corvane::xml
