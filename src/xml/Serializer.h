#pragma once

#include <string>

#include "xml/Node.h"

namespace corvane::xml {

/// The element as 16-bit text.
std::u16string serialized(const Element& element);

/// The document as the UTF-8 bytes of a file, with a prolog.
std::string serializedFile(const Element& document);

}  // namespace corvane::xml
