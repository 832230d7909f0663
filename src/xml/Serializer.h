#pragma once

#include <string>

#include "system/Files.h"
#include "xml/Node.h"

namespace corvane::xml {

/// The element as 16-bit text.
std::u16string serialized(const Element& element);

/// Hands the document, as the UTF-8 bytes of a file with a prolog, to `sink` in pieces. False when
/// the sink did not take them all.
bool serializeFile(const Element& document, const system::ByteSink& sink);

}  // namespace corvane::xml
