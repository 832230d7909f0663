#pragma once

#include <optional>

#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLDocument.h>

/// What is wrong with an element, in a user's words.
struct OverrideFault {
    QorLong line = 0;
    CStringW message;
};

/// The index of a script folder, read when a rule file first overrides one of its rules.
class Definitions {
public:
    /// The definition of a rule by its name, case ignored; nothing when the index has none. An
    /// empty folder is the configured one.
    std::optional<QorXMLNode> find(const CStringW& folder, const CStringW& rule);

private:
    CStringW folder_;
    std::optional<QorXMLNode> index_;  ///< Its document element; an empty node for no index.
};

/// Compares the severity and the parameters of an element, and those of its constraints, with those
/// of the rule that it overrides. A parameter that has a name alone is given its number. One that
/// the rule does not have would change nothing, and nobody would see that it does not: it is a
/// fault.
std::optional<OverrideFault> settleOverride(QorXMLNode& element, const QorXMLNode& definition);
