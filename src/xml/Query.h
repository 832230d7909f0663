#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "xml/Node.h"

namespace corvane::xml {

/// The matches of a query in document order; null for a match that is no element.
using Matches = std::vector<const Node*>;

/// Evaluates a query at an element. Nothing when it is no XPath 1.0, selects something else than
/// nodes or takes too many steps.
std::optional<Matches> select(const Element& context, std::u16string_view query);

/// The same, but at most the first match.
std::optional<Matches> selectFirst(const Element& context, std::u16string_view query);

}  // namespace corvane::xml
