#include "files/RuleOverride.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <set>

#include <corvane/app/StringResources.h>
#include <corvane/config/ModuleConfiguration.h>
#include <corvane/rules/CQorDataTypeConverter.h>
#include <corvane/rules/ChildElements.h>
#include <corvane/xml/XMLFault.h>

#include "language/Messages.h"

namespace {

using namespace corvane::resource;

/// Kinds of values that are numbers: whole ones, others, and lists of them.
constexpr std::array<QorLong, 6> kNumberKinds = {1, 2, 4, 11, 12, 14};

CStringW textOf(const QorXMLNode& element, const CStringW& name) {
    CStringW text;
    element.GetAttributeValue(name, text);
    return text;
}

QorLong numberIn(const CStringW& text) {
    QorLong number = 0;
    return CQorDataTypeConverter().TextToValue(text, number) ? number : 0;
}

/// Whether a text is a number as a whole, as scripts read it: with a sign, never infinite.
template <typename Number>
bool isNumber(const CStringW& text) {
    CStringW trimmed = text;
    std::string plain = trimmed.Trim().ToUtf8();
    if (plain.starts_with('+') && !plain.starts_with("+-")) plain.erase(0, 1);
    Number value = 0;
    const auto [end, status] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    return status == std::errc() && end == plain.data() + plain.size() &&
           std::isfinite(static_cast<double>(value));
}

void takeAttribute(QorXMLNode& element, const QorXMLNode& base, const CStringW& name) {
    CStringW text;
    if (!element.GetAttributeValue(name, text) && base.GetAttributeValue(name, text))
        element.AddAttribute(name, text);
}

void append(QorXMLNode& element, const QorXMLNode& child) {
    const std::unique_ptr<QorXMLNode> copy(child.CloneNode());
    element.AppendNode(copy.get());
}

/// A child that an element has once.
void takeChild(QorXMLNode& element, const QorXMLNode& base, const CStringW& name) {
    if (!std::ranges::empty(corvane::ChildElements(element, name))) return;
    for (const QorXMLNode& child : corvane::ChildElements(base, name))
        return append(element, child);
}

void takeParameters(QorXMLNode& element, const QorXMLNode& base) {
    std::map<QorLong, QorXMLNode> own;
    for (const QorXMLNode& child : corvane::ChildElements(element, u"Parameter"))
        own.try_emplace(numberIn(textOf(child, u"Type")), child);
    for (const QorXMLNode& child : corvane::ChildElements(base, u"Parameter")) {
        const auto known = own.find(numberIn(textOf(child, u"Type")));
        if (known == own.end()) {
            append(element, child);
            continue;
        }
        takeAttribute(known->second, child, u"Name");
        takeChild(known->second, child, u"Operator");
        takeChild(known->second, child, u"ParameterType");
    }
}

void takeConstraints(QorXMLNode& element, const QorXMLNode& base) {
    std::set<CStringW, LessNoCase> own;
    for (const QorXMLNode& child : corvane::ChildElements(element, u"Constraint"))
        own.insert(textOf(child, u"Value"));
    for (const QorXMLNode& child : corvane::ChildElements(base, u"Constraint"))
        if (!own.contains(textOf(child, u"Value"))) append(element, child);
}

class Settler {
public:
    Settler(const QorXMLNode& definition, bool isWhole)
        : rule_(textOf(definition, u"Name")), isWhole_(isWhole) {
        for (const QorXMLNode& element : corvane::ChildElements(definition, u"Parameter")) {
            Known known{numberIn(textOf(element, u"Type")), textOf(element, u"Name"), false};
            for (const QorXMLNode& kind : corvane::ChildElements(element, u"ParameterType"))
                known.isNumber =
                    std::ranges::count(kNumberKinds, numberIn(kind.GetNodeValue())) > 0;
            byName_.try_emplace(known.name, known.number);
            known_.try_emplace(known.number, std::move(known));
        }
    }

    std::optional<OverrideFault> settle(const QorXMLNode& parent) const {
        for (QorXMLNode& element : corvane::ChildElements(parent, u"Parameter"))
            if (auto fault = settleOne(element)) return fault;
        return {};
    }

private:
    struct Known {
        QorLong number;
        CStringW name;
        bool isNumber;
    };

    static OverrideFault faultAt(const QorXMLNode& element, CStringW message) {
        return {corvane::XMLLine(element), std::move(message)};
    }

    const Known* find(const CStringW& type, const CStringW& name) const {
        const auto named = type.IsEmpty() ? byName_.find(name) : byName_.end();
        if (type.IsEmpty() && named == byName_.end()) return nullptr;
        const auto known = known_.find(type.IsEmpty() ? named->second : numberIn(type));
        return known == known_.end() ? nullptr : &known->second;
    }

    std::optional<OverrideFault> settleOne(QorXMLNode& element) const {
        const CStringW type = textOf(element, u"Type"), name = textOf(element, u"Name");
        if (!isWhole_ && !type.IsEmpty()) return {};
        const Known* const known = find(type, name);
        if (known_.empty())
            return faultAt(element, tr("the rule \"{0}\" has no parameters", rule_));
        if (!known)
            return faultAt(element, tr("the rule \"{0}\" has no parameter \"{1}\"; it has {2}",
                                       rule_, type.IsEmpty() ? name : type, names()));
        if (!name.IsEmpty() && known->name.CompareNoCase(name) != 0)
            return faultAt(element,
                           tr("parameter {0} of the rule \"{1}\" is called \"{2}\", not \"{3}\"",
                              type, rule_, known->name, name));
        if (type.IsEmpty()) {
            CStringW number;
            number.Format(u"%d", known->number);
            element.AddAttribute(u"Type", number);
        }
        // Scripts heed the case of a name.
        if (!name.IsEmpty()) element.SetAttributeValue(u"Name", known->name);
        for (const QorXMLNode& value : corvane::ChildElements(element, u"Value"))
            if (isWhole_ && known->isNumber && !isNumber<double>(value.GetNodeValue()))
                return faultAt(value, tr("the value \"{0}\" of the parameter \"{1}\" is no number",
                                         value.GetNodeValue(), known->name));
        return {};
    }

    CStringW names() const {
        CStringW text;
        for (const auto& [number, one] : known_) {
            if (!text.IsEmpty()) text += u", ";
            text += one.name;
            text.AppendFormat(u" (%d)", number);
        }
        return text;
    }

    CStringW rule_;
    bool isWhole_;
    std::map<QorLong, Known> known_;
    std::map<CStringW, QorLong, LessNoCase> byName_;
};

}  // namespace

Definitions::Index Definitions::read(const CStringW& folder) {
    Index index;
    QorXMLDocument document;
    const QorXMLNode* const root = document.LoadFromFile(folder + u"/UserDefinedFile.xml");
    if (!root) return index;
    for (const QorXMLNode& element : corvane::ChildElements(*root, u"Rule"))
        index.try_emplace(textOf(element, u"Name"), element);
    return index;
}

const QorXMLNode* Definitions::find(const CStringW& folder, const CStringW& rule) {
    auto known = indexes_.find(folder);
    if (known == indexes_.end()) {
        const CStringW place = folder.IsEmpty()
                                   ? corvane::GetModuleConfiguration().scriptFolder.value_or(u"")
                                   : folder;
        known = indexes_.emplace(folder, read(place)).first;
    }
    const auto definition = known->second.find(rule);
    return definition == known->second.end() ? nullptr : &definition->second;
}

std::optional<OverrideFault> settleOverride(QorXMLNode& element, const QorXMLNode& definition,
                                            bool isWhole) {
    CStringW severity;
    if (element.GetAttributeValue(u"Severity", severity) && !isNumber<QorLong>(severity))
        return OverrideFault{corvane::XMLLine(element),
                             tr("the severity \"{0}\" is no number", severity)};
    const Settler settler(definition, isWhole);
    if (auto fault = settler.settle(element)) return fault;
    for (const QorXMLNode& constraint : corvane::ChildElements(element, u"Constraint"))
        if (auto fault = settler.settle(constraint)) return fault;
    return {};
}

void inherit(QorXMLNode& element, const QorXMLNode& base) {
    // Rule modules heed the case of a name.
    const CStringW name = corvane::ResourceText(kRuleNameAttr);
    element.SetAttributeValue(name, textOf(base, name));
    for (const std::uint32_t attribute :
         {kRuleSeverityAttr, kRuleFileAttr, kRuleDescriptionAttr, kRuleSourceAttr, kRuleModuleAttr,
          kRuleCategoryAttr, kRuleCategoryTextAttr, kModuleFileAttr, kRuleStatusAttr,
          kRuleLifeStatusAttr})
        takeAttribute(element, base, corvane::ResourceText(attribute));
    takeParameters(element, base);
    takeConstraints(element, base);
    for (const std::uint32_t child : {kCategoriesNode, kEnginesNode})
        takeChild(element, base, corvane::ResourceText(child));
}
