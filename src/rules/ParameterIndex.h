#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <corvane/base/Types.h>

#include "xml/ElementAccess.h"

namespace corvane::rules {

/// The number of a `Parameter` element. Without the attribute it is no parameter; without digits in
/// it the number is 0.
std::optional<QorLong> parameterNumber(xml::ElementView parameter);

/// The first `Parameter` child with that number; empty when there is none. `parent` is not empty.
xml::ElementView findParameter(xml::ElementView parent, QorLong number);

/// The `Parameter` children of an element by their number, from one walk, for readers that look for
/// many. Valid while the tree lives and is not changed.
class ParameterIndex {
public:
    /// `parent` is not empty.
    explicit ParameterIndex(xml::ElementView parent);

    /// What findParameter gives.
    xml::ElementView find(QorLong number) const;

private:
    struct Entry {
        QorLong number;
        std::uint32_t order;
        xml::ElementView element;
    };

    std::vector<Entry> entries_;  // by number, then by order
};

}  // namespace corvane::rules
