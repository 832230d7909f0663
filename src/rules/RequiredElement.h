#pragma once

#include <corvane/platform/ComError.h>

#include "xml/ElementAccess.h"

namespace corvane::rules {

/// The element of a node that a caller hands in; an empty node raises _com_error, as it does in
/// every other operation.
inline xml::ElementView requiredElement(const QorXMLNode& node) {
    const xml::ElementView element(node);
    if (!element) throw _com_error(kErrorPointer);
    return element;
}

}  // namespace corvane::rules
