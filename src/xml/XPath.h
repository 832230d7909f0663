#pragma once

#include "xml/Query.h"

namespace corvane::xml {

/// Evaluates XPath 1.0 at an element. Nothing when the query is none, selects something else than
/// nodes or takes too many steps.
std::optional<Matches> evaluateXPath(const Element& context, std::u16string_view query);

}  // namespace corvane::xml
