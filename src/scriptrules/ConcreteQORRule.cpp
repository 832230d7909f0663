#include <corvane/app/StringResources.h>
#include <corvane/scriptrules/ConcreteQORRule.h>

namespace {

constexpr QorLong kNewRuleSeverity = 3;
constexpr const char16_t* kNewRuleSource = u"*****";
constexpr const char16_t* kNewRuleModule = u"Interactive User Defined Rule";

}  // namespace

ConcreteQORRule::ConcreteQORRule() {
    using namespace corvane;
    m_csRuleName = ResourceText(resource::kNewRuleName);
    m_csRuleDisplayName = m_csRuleName;
    m_csRuleDescription = ResourceText(resource::kNewRuleDescription);
    m_csRuleSource = kNewRuleSource;
    m_lRuleSeverity = kNewRuleSeverity;
    m_csRuleModuleName = kNewRuleModule;
    SetRuleCategory(QORRuleCategory_1);
    ConcreteQORRule::InitializeParamStorage();
}

ConcreteQORRule::~ConcreteQORRule() = default;

void ConcreteQORRule::InitializeParamStorage() {}

void ConcreteQORRule::RunRule() {}

void ConcreteQORRule::UpdateRule(const RuleUnitSystemStructure* /*first*/,
                                 const RuleUnitSystemStructure* /*second*/) {}

bool ConcreteQORRule::UpdateRule(CQorRule* /*target*/) {
    return true;
}

void ConcreteQORRule::EditRule() {}

CQorRule& ConcreteQORRule::operator=(CQorRule* source) {
    return CQorRule::operator=(source);
}

void ConcreteQORRule::UpdateRule(QorLong /*first*/, QorLong /*second*/) {}

void ConcreteQORRule::setValue(QorLong /*first*/, QorLong /*second*/, QorLong /*third*/) {}
