#include <algorithm>
#include <initializer_list>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include <corvane/app/StringResources.h>
#include <corvane/rules/ParameterKinds.h>
#include <corvane/rules/WritingLoss.h>

#include "rules/NumberText.h"
#include "rules/ParameterElement.h"
#include "rules/RuleElement.h"
#include "system/Paths.h"
#include "text/Numbers.h"

namespace corvane {
namespace {

using xml::ElementView;
namespace name = rules::name;

// More attributes than a reader looks at show that it left some out.
constexpr int kAttributesCompared = 2 * name::kAttributesRead;

CStringW quoted(std::u16string_view text) {
    return u"\"" + CStringW(text) + u"\"";
}

CStringW lowered(std::u16string_view text) {
    CStringW lower(text);
    return lower.MakeLower();
}

CStringW textOf(ElementView element) {
    std::u16string buffer;
    return CStringW(element.text(buffer));
}

bool sameValue(const CStringW& a, const CStringW& b) {
    if (a == b) return true;
    const auto number = rules::wholeNumber<double>(a.View());
    return number && number == rules::wholeNumber<double>(b.View());
}

// A value as one text: its own, or those of its attributes.
CStringW valueText(ElementView value, bool inAttributes) {
    if (!inAttributes) return textOf(value);
    CStringW text;
    for (int i = 1; i <= kAttributesCompared; ++i) {
        CStringW attribute(name::kAttribute);
        attribute.AppendFormat(u"%d", i);
        if (const auto part = value.attribute(attribute))
            text += (text.IsEmpty() ? u"" : u" | ") + CStringW(*part);
    }
    return text;
}

std::vector<CStringW> valuesOf(ElementView parameter) {
    const ElementView type = parameter.child(name::kParameterType);
    std::int32_t number = 0;
    if (type) text::scanInt32(textOf(type), number);
    std::vector<CStringW> values;
    for (const ElementView value : xml::ChildrenNamed(parameter, name::kValue))
        values.push_back(valueText(value, number == QorParamType_Attributes));
    return values;
}

/// Compares one rule's two elements.
class Comparison {
public:
    std::vector<WritingLoss> losses;

    void compareRule(ElementView before, ElementView after) {
        using namespace resource;
        for (const std::uint32_t attribute :
             {kRuleNameAttr, kRuleDescriptionAttr, kRuleSeverityAttr, kRuleStatusAttr,
              kRuleLifeStatusAttr, kRuleModuleAttr, kRuleCategoryAttr, kRuleCategoryTextAttr,
              kModuleFileAttr})
            compareAttribute(before, after, ResourceText(attribute), u"");
        // Reading makes these two lower case, and writing leaves the folder out.
        comparePath(before, after, ResourceText(kRuleSourceAttr));
        comparePath(before, after, ResourceText(kRuleFileAttr));
        compareParameters(before, after, u"");
        compareConstraints(before, after);
        compareLists(before, after, kCategoriesNode, kCategoryNode, kCategoryNode, u"category ");
        compareLists(before, after, kEnginesNode, kEngineAttr, kGuidAttr, u"engine ");
        reportOthers(before, u"",
                     {name::kParameter, name::kConstraint, ResourceText(kCategoriesNode),
                      ResourceText(kEnginesNode)});
    }

private:
    void report(ElementView where, CStringW text) {
        losses.push_back({std::move(text), where.line()});
    }

    void compareAttribute(ElementView before, ElementView after, std::u16string_view attribute,
                          const CStringW& owner) {
        const auto had = before.attribute(attribute);
        const auto has = after.attribute(attribute);
        if (!had || (has && sameValue(CStringW(*had), CStringW(*has)))) return;
        report(before, owner + CStringW(attribute) + u"=" + quoted(*had) +
                           (has ? u" becomes " + quoted(*has) : CStringW(u" is left out")));
    }

    void comparePath(ElementView before, ElementView after, std::u16string_view attribute) {
        const auto had = before.attribute(attribute);
        const auto has = after.attribute(attribute);
        if (had && has && lowered(system::fileName(*had)) == lowered(system::fileName(*has)))
            return;
        compareAttribute(before, after, attribute, u"");
    }

    void compareParameters(ElementView before, ElementView after, const CStringW& owner) {
        const rules::ParameterIndex written(after);
        std::set<QorLong> seen;
        for (const ElementView parameter : xml::ChildrenNamed(before, name::kParameter)) {
            CStringW label = owner + u"parameter ";
            const auto number = rules::parameterNumber(parameter);
            if (!number) {
                report(parameter, label + u"without Type is left out");
                continue;
            }
            label.AppendFormat(u"%d: ", *number);
            if (!seen.insert(*number).second) {
                report(parameter, label + u"only the first one of a number is read");
            } else if (const ElementView counterpart = written.find(*number)) {
                compareParameter(parameter, counterpart, label);
            } else {
                report(parameter, label + whyLeftOut(parameter));
            }
        }
    }

    static CStringW whyLeftOut(ElementView parameter) {
        const ElementView op = parameter.child(name::kOperator);
        if (!op) return u"left out, since without an Operator it counts as 0, which is not saved";
        std::int32_t number = 0;
        text::scanInt32(textOf(op), number);
        CStringW text = u"left out, since the rule has none of that number";
        if (number == QorOperator_NotSaved || number == QorOperator_Hidden)
            text.Format(u"left out, since its Operator %d is not saved", number);
        return text;
    }

    void compareParameter(ElementView before, ElementView after, const CStringW& label) {
        compareAttribute(before, after, name::kStatus, label);
        const std::vector<CStringW> had = valuesOf(before);
        const std::vector<CStringW> has = valuesOf(after);
        if (has.size() < had.size()) {
            CStringW text;
            text.Format(u"of its %d values %d are left", static_cast<int>(had.size()),
                        static_cast<int>(has.size()));
            report(before, label + text);
        } else {
            // What a rule held before it was read comes before what was read.
            const std::size_t skipped = has.size() - had.size();
            for (std::size_t i = 0; i < had.size(); ++i) {
                if (!sameValue(had[i], has[skipped + i]))
                    report(before, label + u"value " + quoted(had[i].View()) + u" becomes " +
                                       quoted(has[skipped + i].View()));
            }
        }
        const ElementView remarks = before.child(name::kRemarks);
        const ElementView written = after.child(name::kRemarks);
        if (remarks && !(written && textOf(remarks) == textOf(written)) &&
            !textOf(remarks).IsEmpty())
            report(remarks, label + u"its remarks are left out");
        reportOthers(before, label,
                     {name::kOperator, name::kParameterType, name::kValue, name::kRemarks});
    }

    void compareConstraints(ElementView before, ElementView after) {
        std::multimap<CStringW, ElementView> written;
        for (const ElementView constraint : xml::ChildrenNamed(after, name::kConstraint))
            written.emplace(lowered(constraint.attribute(name::kValue).value_or(u"")), constraint);
        for (const ElementView constraint : xml::ChildrenNamed(before, name::kConstraint)) {
            const CStringW value(constraint.attribute(name::kValue).value_or(u""));
            const CStringW label = u"constraint " + quoted(value.View()) + u": ";
            const auto at = written.find(lowered(value.View()));
            if (at == written.end()) {
                report(constraint, label + u"left out");
                continue;
            }
            compareAttribute(constraint, at->second, name::kNumber, label);
            compareAttribute(constraint, at->second, name::kStatus, label);
            compareParameters(constraint, at->second, label);
            reportOthers(constraint, label, {name::kParameter});
            written.erase(at);
        }
    }

    void compareLists(ElementView before, ElementView after, std::uint32_t list,
                      std::uint32_t entry, std::uint32_t attribute, const CStringW& label) {
        const auto textsOf = [&](ElementView parent) {
            std::vector<std::pair<ElementView, CStringW>> texts;
            const ElementView entries = parent.child(ResourceText(list));
            for (const ElementView child : xml::ChildrenNamed(entries, ResourceText(entry)))
                texts.emplace_back(child, child.attribute(ResourceText(attribute)).value_or(u""));
            return texts;
        };
        std::set<CStringW> written;
        for (const auto& [element, text] : textsOf(after))
            written.insert(lowered(text.View()));
        for (const auto& [element, text] : textsOf(before)) {
            if (!written.contains(lowered(text.View())))
                report(element, label + quoted(text.View()) + u": left out");
        }
    }

    void reportOthers(ElementView parent, const CStringW& label,
                      std::initializer_list<std::u16string_view> known) {
        for (ElementView child = parent.child(); child; child = child.sibling()) {
            if (std::find(known.begin(), known.end(), child.fullName()) == known.end())
                report(child, label + u"the element <" + CStringW(child.fullName()) +
                                  u"> is left out, since no rule reads it");
        }
    }
};

}  // namespace

std::vector<WritingLoss> FindWritingLosses(const QorXMLNode& before, const QorXMLNode& after) {
    Comparison comparison;
    comparison.compareRule(rules::requiredElement(before), rules::requiredElement(after));
    return std::move(comparison.losses);
}

}  // namespace corvane
