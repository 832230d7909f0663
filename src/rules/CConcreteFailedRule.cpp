#include <utility>

#include <corvane/rules/CConcreteFailedRule.h>

CConcreteFailedRule::CConcreteFailedRule() {
    CConcreteFailedRule::InitializeParamStorage();
}

CConcreteFailedRule::CConcreteFailedRule(CStringW name, QorLong severity, CStringW category) {
    m_csRuleName = std::move(name);
    m_lRuleSeverity = severity;
    m_csRuleCategory = std::move(category);
}

CConcreteFailedRule::~CConcreteFailedRule() = default;

void CConcreteFailedRule::InitializeParamStorage() {}

QorLong CConcreteFailedRule::Execute(QORICadSys*, const CQorData*&, QORResultSet*&) const {
    return 0;
}

void CConcreteFailedRule::PopulateParametersFromXML(QorXMLNode*) {}

QorXMLNode* CConcreteFailedRule::GetXML() {
    return nullptr;
}

void CConcreteFailedRule::RunRule() {}

void CConcreteFailedRule::UpdateRule(const RuleUnitSystemStructure*,
                                     const RuleUnitSystemStructure*) {}

bool CConcreteFailedRule::UpdateRule(CQorRule*) {
    return true;
}

void CConcreteFailedRule::EditRule() {}

CQorRule& CConcreteFailedRule::operator=(CQorRule* source) {
    return CQorRule::operator=(source);
}

void CConcreteFailedRule::UpdateRule(QorLong, QorLong) {}

void CConcreteFailedRule::setValue(QorLong, QorLong, QorLong) {}
