#pragma once

#include <string>
#include <string_view>

#include "xml/Node.h"

namespace corvane::xml {

/// The text of the element and of all below it, without the unescaped white space at its ends. It
/// stands in the tree when it is one piece, else in `buffer`.
std::u16string_view textOf(const Element& element, std::u16string& buffer);

}  // namespace corvane::xml
