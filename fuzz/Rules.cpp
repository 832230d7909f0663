// A rule file. Each element "Rule" is read into a compiled rule with parameters of all eight kinds
// and a constraint, and into a user-defined rule. What they write, read and written again, is the
// same.

#include <memory>
#include <string>

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

// The first writing may drop a parameter, which the next rule then has from its own start.
template <typename Rule>
void expectSameAgain(QorXMLNode& element) {
    Rule rules[3];
    const std::unique_ptr<QorXMLNode> first = written(rules[0], element);
    const std::unique_ptr<QorXMLNode> second = written(rules[1], *first);
    const std::unique_ptr<QorXMLNode> third = written(rules[2], *second);
    fuzz::require(second->GetXML() == third->GetXML(), "a rule writes what it has read");
}

void expectSameConstraint(QorXMLNode& element) {
    QorXMLNode* node = &element;
    CQORConstraint constraint(QORConstraintType_e(0), u"", false);
    constraint.PopulateFromXML(node);
    const std::unique_ptr<QorXMLNode> first(constraint.GetXMLNode());
    CQORConstraint copy(constraint);
    const std::unique_ptr<QorXMLNode> second(copy.GetXMLNode());
    fuzz::require(first->GetXML() == second->GetXML(), "a copy of a constraint is the same");
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
            expectSameAgain<ConcreteQORRule>(*(*rules)[i]);
            const std::unique_ptr<QorXMLNode> constraint(
                (*rules)[i]->SelectSingleNode(u"Constraint"));
            if (constraint) expectSameConstraint(*constraint);
        } catch (const _com_error&) {
        }
    }
    return 0;
}
