#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <corvane/base/Types.h>

#include "xml/ElementAccess.h"

// Names and literals of the `Parameter` and the `Constraint` element. They are part of the rule
// file's format and the same in every language.
namespace corvane::rules::name {

inline constexpr std::u16string_view kParameter = u"Parameter";
inline constexpr std::u16string_view kConstraint = u"Constraint";
inline constexpr std::u16string_view kName = u"Name";
inline constexpr std::u16string_view kNumber = u"Type";
inline constexpr std::u16string_view kStatus = u"Status";
inline constexpr std::u16string_view kOperator = u"Operator";
inline constexpr std::u16string_view kParameterType = u"ParameterType";
inline constexpr std::u16string_view kValue = u"Value";
inline constexpr std::u16string_view kRemarks = u"Remarks";
/// Followed by its number, from 1.
inline constexpr std::u16string_view kAttribute = u"Attribute";
/// How many attributes of a `Value` a reader looks at; a writer writes any number.
inline constexpr int kAttributesRead = 4;

// Flags, in parameters and constraints.
inline constexpr std::u16string_view kTrue = u"1";
inline constexpr std::u16string_view kFalse = u"0";

}  // namespace corvane::rules::name

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
