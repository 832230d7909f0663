#pragma once

#include <map>
#include <optional>

#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLDocument.h>

/// What is wrong with an element, in a user's words.
struct OverrideFault {
    QorLong line = 0;
    CStringW message;
};

struct LessNoCase {
    bool operator()(const CStringW& a, const CStringW& b) const { return a.CompareNoCase(b) < 0; }
};

/// What the indexes of script folders define, each read when it is first asked for.
class Definitions {
public:
    /// The definition of a rule by its name, case ignored; null when the index has none. An empty
    /// folder is the configured one.
    const QorXMLNode* find(const CStringW& folder, const CStringW& rule);

private:
    using Index = std::map<CStringW, QorXMLNode, LessNoCase>;

    static Index read(const CStringW& folder);

    std::map<CStringW, Index> indexes_;  ///< by folder
};

/// Compares the severity and the parameters of an element, and those of its constraints, with those
/// of the rule that it overrides. A parameter that has a name alone is given its number. One that
/// the rule does not have would change nothing, and nobody would see that it does not: it is a
/// fault. A definition that is not whole, as that of a compiled rule in a file, tells the numbers
/// of names only.
std::optional<OverrideFault> settleOverride(QorXMLNode& element, const QorXMLNode& definition,
                                            bool isWhole);

/// Adds to an element what it does not say and the one that it overrides says.
void inherit(QorXMLNode& element, const QorXMLNode& base);
