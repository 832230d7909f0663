#include "files/RuleOverride.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include <corvane/config/ModuleConfiguration.h>
#include <corvane/rules/CQorDataTypeConverter.h>
#include <corvane/rules/ChildElements.h>
#include <corvane/xml/XMLFault.h>

#include "language/Messages.h"

namespace {

/// Kinds of values that are numbers: whole ones, others, and lists of them.
constexpr std::array<QorLong, 4> kNumberKinds = {1, 2, 4, 14};

CStringW textOf(const QorXMLNode& element, const char16_t* name) {
    CStringW text;
    element.GetAttributeValue(name, text);
    return text;
}

QorLong numberIn(const CStringW& text) {
    QorLong number = 0;
    return CQorDataTypeConverter().TextToValue(text, number) ? number : 0;
}

bool isNumber(const CStringW& text) {
    CStringW trimmed = text;
    const std::string plain = trimmed.Trim().ToUtf8();
    double value = 0.0;
    const auto [end, status] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    return status == std::errc() && end == plain.data() + plain.size();
}

class Settler {
public:
    explicit Settler(const QorXMLNode& definition) : rule_(textOf(definition, u"Name")) {
        for (const QorXMLNode& element : corvane::ChildElements(definition, u"Parameter")) {
            Known known{numberIn(textOf(element, u"Type")), textOf(element, u"Name"), false};
            for (const QorXMLNode& kind : corvane::ChildElements(element, u"ParameterType"))
                known.isNumber =
                    std::ranges::count(kNumberKinds, numberIn(kind.GetNodeValue())) > 0;
            known_.push_back(std::move(known));
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
        const auto known = std::ranges::find_if(known_, [&](const Known& one) {
            return type.IsEmpty() ? one.name.CompareNoCase(name) == 0
                                  : one.number == numberIn(type);
        });
        return known == known_.end() ? nullptr : &*known;
    }

    std::optional<OverrideFault> settleOne(QorXMLNode& element) const {
        const CStringW type = textOf(element, u"Type"), name = textOf(element, u"Name");
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
        for (const QorXMLNode& value : corvane::ChildElements(element, u"Value"))
            if (known->isNumber && !isNumber(value.GetNodeValue()))
                return faultAt(value, tr("the value \"{0}\" of the parameter \"{1}\" is no number",
                                         value.GetNodeValue(), known->name));
        return {};
    }

    CStringW names() const {
        CStringW text;
        for (const Known& one : known_) {
            if (!text.IsEmpty()) text += u", ";
            text += one.name;
            text.AppendFormat(u" (%d)", one.number);
        }
        return text;
    }

    CStringW rule_;
    std::vector<Known> known_;
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

std::optional<OverrideFault> settleOverride(QorXMLNode& element, const QorXMLNode& definition) {
    CStringW severity;
    if (element.GetAttributeValue(u"Severity", severity) && !isNumber(severity))
        return OverrideFault{corvane::XMLLine(element),
                             tr("the severity \"{0}\" is no number", severity)};
    const Settler settler(definition);
    if (auto fault = settler.settle(element)) return fault;
    for (const QorXMLNode& constraint : corvane::ChildElements(element, u"Constraint"))
        if (auto fault = settler.settle(constraint)) return fault;
    return {};
}
