#include "rules/ParameterIndex.h"

#include <algorithm>
#include <tuple>

#include "rules/ParameterNames.h"
#include "text/Scan.h"

namespace corvane::rules {

std::optional<QorLong> parameterNumber(xml::ElementView parameter) {
    const auto text = parameter.attribute(name::kNumber);
    if (!text) return std::nullopt;
    std::int32_t number = 0;
    text::scanInt32(*text, number);
    return number;
}

xml::ElementView findParameter(xml::ElementView parent, QorLong number) {
    for (const xml::ElementView parameter : xml::ChildrenNamed(parent, name::kParameter)) {
        if (parameterNumber(parameter) == number) return parameter;
    }
    return {};
}

// Sorting, unlike hashing, stays fast for whatever numbers a hostile file holds; and rules are
// written in the order of their parameters, which is mostly that of the numbers.
ParameterIndex::ParameterIndex(xml::ElementView parent) {
    for (const xml::ElementView parameter : xml::ChildrenNamed(parent, name::kParameter)) {
        if (const auto number = parameterNumber(parameter)) {
            entries_.push_back({*number, static_cast<std::uint32_t>(entries_.size()), parameter});
        }
    }
    const auto key = [](const Entry& entry) { return std::tuple(entry.number, entry.order); };
    const auto before = [key](const Entry& a, const Entry& b) { return key(a) < key(b); };
    if (!std::is_sorted(entries_.begin(), entries_.end(), before))
        std::sort(entries_.begin(), entries_.end(), before);
}

xml::ElementView ParameterIndex::find(QorLong number) const {
    const auto entry =
        std::lower_bound(entries_.begin(), entries_.end(), number,
                         [](const Entry& e, QorLong wanted) { return e.number < wanted; });
    return entry != entries_.end() && entry->number == number ? entry->element : xml::ElementView();
}

}  // namespace corvane::rules
