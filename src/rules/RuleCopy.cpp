#include <corvane/rules/CQorRule.h>

#include "rules/IllegalParameter.h"
#include "rules/ParameterVisit.h"

namespace {

using Storages = CQorArray<CQorParamStorage*>;

// Calls `use` with each parameter of `own` and the one at the same place in `other`. Two rules of
// one class agree in both lists; where they don't, the parameter has no counterpart.
template <typename Use>
void visitPairs(const Storages& own, const Storages& other, Use use) {
    for (int i = 0; i < own.GetSize(); ++i) {
        const CQorParamStorage* const counterpart = i < other.GetSize() ? other.GetAt(i) : nullptr;
        const CQorParamStorage* const storage = own.GetAt(i);
        const bool legal =
            corvane::rules::visitParameter(storage, [&]<typename T>(CQorParameter<T>& parameter) {
                if (!counterpart || counterpart->m_Type != storage->m_Type) return;
                if (counterpart->m_pParameter)
                    use(parameter, corvane::rules::parameterOf<T>(*counterpart));
            });
        if (!legal) corvane::rules::reportIllegalParameter();
    }
}

}  // namespace

CQorRule& CQorRule::operator=(CQorRule* source) {
    if (!source || source == this) return *this;
    m_csRuleName = source->m_csRuleName;
    m_csRuleDisplayName = source->m_csRuleDisplayName;
    m_lRuleSeverity = source->m_lRuleSeverity;
    m_csRuleDescription = source->m_csRuleDescription;
    m_csRuleSource = source->m_csRuleSource;
    m_csRuleBaseDescription = source->m_csRuleBaseDescription;
    m_lRuleLifeStatus = source->m_lRuleLifeStatus;
    m_lRuleKind = source->m_lRuleKind;
    m_RuleTag = source->m_RuleTag;
    m_csRuleCategory = source->m_csRuleCategory;
    m_csRuleModuleName = source->m_csRuleModuleName;
    m_csRuleFileName = source->m_csRuleFileName;
    m_csModuleFileName = source->m_csModuleFileName;
    m_lstEngines = source->m_lstEngines;
    m_lstDBModules = source->m_lstDBModules;
    m_lstCategories = source->m_lstCategories;
    visitPairs(m_Parameters, source->m_Parameters,
               [](auto& parameter, const auto& counterpart) { parameter = counterpart; });
    return *this;
}

bool CQorRule::UpdateRule(CQorRule* target) {
    if (!target) return false;
    target->m_csRuleDisplayName = m_csRuleDisplayName;
    target->m_csRuleName = m_csRuleName;
    target->m_lRuleSeverity = m_lRuleSeverity;
    target->m_csRuleDescription = m_csRuleDescription;
    target->m_csRuleSource = m_csRuleSource;
    bool differs = false;
    visitPairs(m_Parameters, target->m_Parameters, [&](const auto& parameter, auto& counterpart) {
        if (parameter.UpdateTarget(counterpart)) differs = true;
    });
    return differs;
}
