#pragma once

#include <cstdint>
#include <memory>

#include <corvane/base/Types.h>
#include <corvane/platform/ComError.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorParamStorage.h>
#include <corvane/rules/ParameterKinds.h>
#include <corvane/text/CStringW.h>

#include "xml/ElementAccess.h"

class CQORConstraint;
class CQorRule;

// What the two forms of the rule element share. Attributes and elements are called by the numbers
// of their string resources; see <corvane/app/StringResources.h>.
namespace corvane::rules {

/// The element of a node that a caller hands in; an empty node raises _com_error, as it does in
/// every other operation.
inline xml::ElementView requiredElement(const QorXMLNode& node) {
    const xml::ElementView element(node);
    if (!element) throw _com_error(kErrorPointer);
    return element;
}

// Reading. The element is not empty.

/// Stores an attribute's text; without the attribute `field` is untouched and the result false.
bool readText(xml::ElementView element, std::uint32_t resource, CStringW& field);
/// An attribute's text; empty without the attribute.
CStringW readTextOrEmpty(xml::ElementView element, std::uint32_t resource);
/// An attribute's number; -1 without the attribute or without a number in it.
QorLong readNumber(xml::ElementView element, std::uint32_t resource);

/// Name, description, source, module and file into their fields, each where it is present.
void readRuleTexts(xml::ElementView element, CQorRule& rule);

/// Reads each parameter from its own `Parameter` child of `parent`. The walk over the children is
/// done once, whatever the number of parameters. Reading stops at a storage of illegal kind or of
/// a kind above `lastKind`, and the result is then false.
bool readParameters(xml::ElementView parent, const CQorArray<CQorParamStorage*>& parameters,
                    Type_e lastKind);

// Writing. Text that XML refuses raises _com_error.

/// Adds an attribute.
void writeText(QorXMLNode& element, std::uint32_t resource, CStringW text);

/// A rule element with its nine attributes, the category under the number that is given. It is
/// attached to nothing. Needs a current document.
std::unique_ptr<QorXMLNode> makeRuleElement(const CQorRule& rule, std::uint32_t categoryResource);

/// Appends a `Parameter` element for each parameter whose operator is neither
/// QorOperator_NotSaved nor QorOperator_Hidden. Calls `illegal` in place of a storage of illegal
/// kind or of a kind above `lastKind`.
void writeParameters(const QorXMLNode& parent, const CQorArray<CQorParamStorage*>& parameters,
                     Type_e lastKind, void (*illegal)());

/// Appends a `Constraint` element for each constraint. Needs a current document.
void writeConstraints(QorXMLNode& parent, const CQorArray<CQORConstraint*>& constraints);

}  // namespace corvane::rules
