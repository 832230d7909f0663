// A rule file. Each element "Rule" is read into a compiled rule with parameters of all eight kinds
// and a constraint, and into a user-defined rule. What they write is what they have read, and read
// and written again it is the same.

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <corvane/platform/ComError.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/scriptrules/ConcreteQORRule.h>

#include "Fuzz.h"
#include "rules/AnyRule.h"

namespace {

class EightKinds : public AnyRule {
public:
    EightKinds() {
        QorLong id = 0;
        for (int kind = Type_Int; kind <= Type_CustomRuleData; ++kind)
            m_Parameters.Add(CreateParamStorageObject(Type_e(kind), ++id, QorOperator_Default,
                                                      QorParamType_Plain, true, false));
    }
};

template <typename Rule>
std::unique_ptr<QorXMLNode> written(Rule& rule, QorXMLNode& element) {
    rule.PopulateParametersFromXML(&element);
    return std::unique_ptr<QorXMLNode>(rule.GetXML());
}

// The elements that stand below a rule's own, by the numbers of their parameters.
std::map<CStringW, CStringW> parametersOf(const QorXMLNode& rule) {
    std::map<CStringW, CStringW> parameters;
    const std::unique_ptr<QorXMLNodeList> list(rule.GetNodeList(u"Parameter"));
    for (QorLong i = 0; i < list->GetSize(); ++i) {
        CStringW number;
        (*list)[i]->GetAttributeValue(u"Type", number);
        parameters.emplace(number, (*list)[i]->GetXML());
    }
    return parameters;
}

// A parameter that is not written has its start in the next rule. Each that is written is read and
// written as it was, but for a number that no text has.
template <typename Rule>
void expectSameAgain(QorXMLNode& element) {
    Rule rules[3];
    const std::unique_ptr<QorXMLNode> first = written(rules[0], element);
    const std::unique_ptr<QorXMLNode> second = written(rules[1], *first);
    const std::unique_ptr<QorXMLNode> third = written(rules[2], *second);
    const std::map<CStringW, CStringW> once = parametersOf(*first), twice = parametersOf(*second);
    for (const auto& [number, xml] : once) {
        if (xml.Find(u">inf<") >= 0 || xml.Find(u">-inf<") >= 0) continue;
        const auto found = twice.find(number);
        fuzz::require(found != twice.end() && found->second == xml, "a parameter stays as it is");
    }
    fuzz::require(second->GetXML() == third->GetXML(), "a rule writes what it has read");
}

std::vector<CStringW> texts(const QorXMLNode& rule, const CStringW& query) {
    std::vector<CStringW> found;
    const std::unique_ptr<QorXMLNodeList> list(rule.GetNodeList(query));
    for (QorLong i = 0; i < list->GetSize(); ++i)
        found.push_back((*list)[i]->GetNodeValue());
    return found;
}

// The element of a parameter, if all numbers are plain, so that nothing is to be guessed.
std::unique_ptr<QorXMLNode> parameterOf(const QorXMLNode& rule, int number) {
    const std::unique_ptr<QorXMLNodeList> list(rule.GetNodeList(u"Parameter"));
    for (QorLong i = 0; i < list->GetSize(); ++i) {
        CStringW text;
        if (!(*list)[i]->GetAttributeValue(u"Type", text)) continue;
        const std::string digits = text.ToUtf8();
        if (digits.empty() || digits.size() > 9 ||
            digits.find_first_not_of("0123456789") != digits.npos)
            return nullptr;
        if (std::stoi(digits) == number) return std::make_unique<QorXMLNode>(*(*list)[i]);
    }
    return nullptr;
}

// The parameter of texts keeps each of them, unless its operator asks for pairs or it is written as
// attributes or not at all.
void expectSameTexts(QorXMLNode& element) {
    const std::unique_ptr<QorXMLNode> before = parameterOf(element, Type_CStringPtr);
    if (!before) return;
    EightKinds rule;
    const std::unique_ptr<QorXMLNode> rewritten = written(rule, element);
    const std::unique_ptr<QorXMLNode> after = parameterOf(*rewritten, Type_CStringPtr);
    if (!after || texts(*after, u"Operator") == std::vector<CStringW>{u"1"} ||
        texts(*after, u"ParameterType") == std::vector<CStringW>{u"24"})
        return;
    fuzz::require(texts(*before, u"Value") == texts(*after, u"Value"),
                  "texts are written as they were read");
}

CQORConstraint emptyConstraint() {
    return {QORConstraintType_e(0), u"", false};
}

void expectSameConstraint(QorXMLNode& element) {
    QorXMLNode* node = &element;
    CQORConstraint constraint = emptyConstraint();
    constraint.PopulateFromXML(node);
    const std::unique_ptr<QorXMLNode> first(constraint.GetXMLNode());
    CQORConstraint copy(constraint);
    const std::unique_ptr<QorXMLNode> second(copy.GetXMLNode());
    fuzz::require(first->GetXML() == second->GetXML(), "a copy of a constraint is the same");
    CQORConstraint again = emptyConstraint();
    node = first.get();
    again.PopulateFromXML(node);
    const std::unique_ptr<QorXMLNode> third(again.GetXMLNode());
    fuzz::require(first->GetXML() == third->GetXML(), "a constraint is read as it was written");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static const fuzz::Folder folder;
    setenv("CORVANE_REGISTRY_DIR", folder.path().c_str(), 1);
    setenv("CORVANE_DATA_DIR", folder.path().c_str(), 1);
    corvane::SetMessageSink([](const corvane::Message&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    CurrentDocument document;
    QorXMLNode* const root = document.load(CStringW::FromUtf8(fuzz::textOf(data, size)));
    if (!root) return 0;
    const std::unique_ptr<QorXMLNodeList> rules(root->GetNodeList(u"Rule"));
    for (QorLong i = 0; i < rules->GetSize(); ++i) {
        try {
            expectSameAgain<EightKinds>(*(*rules)[i]);
            expectSameTexts(*(*rules)[i]);
            expectSameAgain<ConcreteQORRule>(*(*rules)[i]);
            const std::unique_ptr<QorXMLNode> constraint(
                (*rules)[i]->SelectSingleNode(u"Constraint"));
            if (constraint) expectSameConstraint(*constraint);
        } catch (const _com_error&) {
        }
    }
    return 0;
}
