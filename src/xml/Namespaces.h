#pragma once

#include <cstddef>
#include <string_view>

#include "xml/Node.h"

namespace corvane::xml {

/// True for "xmlns" and the names with that prefix.
bool isDeclaration(std::u16string_view name);

/// How many declarations are in force or hidden by others at the element.
std::size_t prefixesInScope(const Element& element);

/// What is declared for the prefix, or for names without one, at the element; "" for nothing.
std::u16string_view namespaceOf(const Element& element, std::u16string_view prefix);

/// True when an attribute of that name, "xmlns" or one with that prefix, may have that value.
bool isDeclarationAllowed(std::u16string_view name, std::u16string_view uri);

/// True when names with this prefix may be used at the element; a null element has no scope.
bool isPrefixInScope(const Element* scope, std::u16string_view prefix);

/// True when an attribute of that name and value may be put on the element, so that what is saved
/// can be read back: a declaration says nothing that is reserved, a prefix is declared, and no two
/// attributes have one local name and one namespace.
bool isAttributeAllowed(const Element& element, std::u16string_view name,
                        std::u16string_view value);

/// Declares on the element what names in it take from the elements above, before it leaves them.
void keepNamespaces(Element& element);
/// The same for a copy, from the scope of its source.
void copyNamespaces(const Element& source, Element& copy);

}  // namespace corvane::xml
