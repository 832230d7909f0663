#include <corvane/rules/CQorRule.h>

#include "rules/RuleCategory.h"

CQorRule::CQorRule() : m_RuleLinks(CStringW(), QorOperator_Default, QorParamType_Plain, false) {}

CQorRule::CQorRule(const char* name, const char* description, const char* source) : CQorRule() {
    m_csRuleName = CStringW(name);
    m_csRuleDisplayName = m_csRuleName;
    m_csRuleDescription = CStringW(description);
    m_csRuleSource = CStringW(source);
}

CQorRule::~CQorRule() {
    for (const CQorParamStorage* const storage : m_Parameters)
        delete storage;
}

QorLong CQorRule::Import(QorXMLDocument*, QorXMLNode*, const CQorData*&, QORICadSys*,
                         QORResultSet*&) const {
    constexpr QorLong kNotImported = -7;
    return kNotImported;
}

void CQorRule::SetRuleStatusForAssemblyModel(int) {}

bool CQorRule::ValidateInputData() {
    return true;
}

CStringW CQorRule::GetRequiredInputData() const {
    return {};
}

void CQorRule::SetInputData(CStringW&) {}

void CQorRule::SetPreExecutionData(CQorData*&) {}

int CQorRule::GetRuleId() const {
    return -1;
}

int CQorRule::GetMaterialStatus() const {
    return 0;
}

void CQorRule::PostPopulate() {
    for (CStringW* const text : {&m_csRuleSource, &m_csRuleFileName})
        text->MakeLower().Replace(u"proe", u"");
}

int CQorRule::GetCutterStatus() const {
    return 0;
}

void CQorRule::Heal(QORICadSys*, const CQorData*&, const QORResultSet*&) const {}

CStringW CQorRule::GetRuleModuleName() const {
    return m_csRuleModuleName;
}

void CQorRule::SetRuleModuleName(CStringW& name) {
    m_csRuleModuleName = name;
}

int CQorRule::GetRuleCategoryEnum() {
    return corvane::rules::categoryOf(m_csRuleCategory);
}

void CQorRule::SetRuleCategory(QORRuleCategory_e category) {
    m_csRuleCategory = corvane::rules::categoryText(category);
}

void CQorRule::SetRuleCategory(CStringW& category) {
    m_csRuleCategory = category;
}
