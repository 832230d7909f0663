#pragma once

#include <string_view>

#include "xml/Failure.h"
#include "xml/Node.h"

namespace corvane::xml {

/// Parses a whole document into a tree, which the caller destroys. The text is UTF-8 with a zero
/// after its end, and what it declares about its encoding means nothing. Everything that is not
/// well-formed, with namespaces too, is a fault, and so is a reference to an entity that is
/// external or that the text does not declare. Nothing is read but the text. Entities expand to a
/// small multiple of the text at most.
Fault parse(std::string_view utf8, Element*& tree);

}  // namespace corvane::xml
