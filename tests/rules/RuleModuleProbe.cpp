#include "RuleModuleProbe.h"

#include <memory>

#include <corvane/RuleModule.h>

namespace {

int last = 0;

template <typename Result>
Result note(int operation) {
    last = operation;
    return Result();
}

class FullRule : public CQorRule {
public:
    FullRule() {
        m_csRuleName = m_csRuleModuleName = m_csModuleFileName = u"set by the module";
        m_lstEngines.AddTail(m_csRuleName);
        m_lRuleKind = m_lRuleLifeStatus = 7;
        m_RuleTag = 0x0123456789ABCDEFU;
        m_Parameters.Add(CreateParamStorageObject(Type_Double, 5, QorOperator_Default,
                                                  QorParamType_Plain, true, false));
        GetDoubleItem(5)->m_Values.Add(2.5);
    }
    void InitializeParamStorage() override { note<void>(1); }
    QorLong Execute(QORICadSys*, const CQorData*&, QORResultSet*&) const override {
        return note<QorLong>(2);
    }
    void PopulateParametersFromXML(QorXMLNode*) override { note<void>(3); }
    QorXMLNode* GetXML() override { return note<QorXMLNode*>(4); }
    void RunRule() override { note<void>(5); }
    void UpdateRule(const RuleUnitSystemStructure*, const RuleUnitSystemStructure*) override {
        note<void>(6);
    }
    bool UpdateRule(CQorRule*) override { return note<bool>(7); }
    void EditRule() override { note<void>(8); }
    QorLong Import(QorXMLDocument*, QorXMLNode*, const CQorData*&, QORICadSys*,
                   QORResultSet*&) const override {
        return note<QorLong>(9);
    }
    ~FullRule() override { note<void>(10); }
    CQorRule& operator=(CQorRule*) override {
        last = 11;
        return *this;
    }
    CQorParamStorage* FindParameterInArray(QorLong) override { return note<CQorParamStorage*>(12); }
    void SetRuleStatusForAssemblyModel(int) override { note<void>(13); }
    bool ValidateInputData() override { return note<bool>(14); }
    CStringW GetRequiredInputData() const override { return note<CStringW>(15); }
    void SetInputData(CStringW&) override { note<void>(16); }
    void SetPreExecutionData(CQorData*&) override { note<void>(17); }
    int GetRuleId() const override { return note<int>(18); }
    int GetMaterialStatus() const override { return note<int>(19); }
    void PostPopulate() override { note<void>(20); }
    int GetCutterStatus() const override { return note<int>(21); }
    void Heal(QORICadSys*, const CQorData*&, const QORResultSet*&) const override {
        note<void>(22);
    }
};

template <typename Object, typename... Fields>
std::vector<std::ptrdiff_t> offsets(const Object& object, Fields Object::*... fields) {
    const auto* const base = reinterpret_cast<const char*>(&object);
    return {reinterpret_cast<const char*>(&(object.*fields)) - base...};
}

std::vector<std::vector<std::ptrdiff_t>> fields(const CQorRule& rule) {
    using R = CQorRule;
    using P = CQorParameter<CStringW*>;
    using S = CQorParamStorage;
    using A = CQorArray<int>;
    using C = CQORConstraint;
    return {offsets(rule, &R::m_csRuleName, &R::m_csRuleDisplayName, &R::m_csRuleDescription,
                    &R::m_csRuleSource, &R::m_csRuleCategory, &R::m_lstCategories,
                    &R::m_csRuleModuleName, &R::m_csRuleFileName, &R::m_csRuleBaseDescription,
                    &R::m_lstEngines, &R::m_lstDBModules, &R::m_csRuleExtra, &R::m_lRuleKind,
                    &R::m_lRuleStatus, &R::m_lRuleSeverity, &R::m_lRuleLifeStatus, &R::m_Parameters,
                    &R::m_Constraints, &R::m_bPopulated, &R::m_RuleLinks, &R::m_RuleTag,
                    &R::m_RuleRecords, &R::m_csRuleText1, &R::m_csRuleText2, &R::m_csRuleText3,
                    &R::m_csRuleText4, &R::m_csRuleText5, &R::m_csRuleText6, &R::m_lRuleValue,
                    &R::m_csModuleFileName, &R::m_dRuleValue, &R::m_bRuleFlag),
            offsets(P(u"", QorOperator_Default, QorParamType_Plain, true), &P::m_csName,
                    &P::m_Operator, &P::m_Values, &P::m_ParamType, &P::m_csRemarks, &P::m_lType,
                    &P::m_Scalar, &P::m_lMode, &P::m_bStatus),
            offsets(S(), &S::m_Type, &S::m_lId, &S::m_bOption, &S::m_bStatus, &S::m_pParameter),
            offsets(A(), &A::m_pData, &A::m_nCount, &A::m_nCapacity, &A::m_nGrowBy),
            offsets(C(QORConstraint_Material, u"", true), &C::m_Type, &C::m_Parameters,
                    &C::m_csValue, &C::m_bStatus)};
}

}  // namespace

extern "C" __attribute__((visibility("default"))) const RuleModuleProbe* GetRuleModuleProbe() {
    static const RuleModuleProbe probe = {
        [] { return static_cast<CQorRule*>(std::make_unique<FullRule>().release()); },
        [] { return last; }, fields};
    return &probe;
}

// To a host this is a rule module that was built with another interface.
CORVANE_MODULE_EXPORT std::uint64_t CorvaneRuleInterface() {
    return corvane::kRuleInterface + 1;
}
CORVANE_MODULE_EXPORT CQorRule* CreateQorRule(const char16_t*) {
    return std::make_unique<FullRule>().release();
}
