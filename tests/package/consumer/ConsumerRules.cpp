// A rule module as a user of the installed package writes it: one rule with one parameter.

#include <memory>

#include <corvane/app/StringTable.h>
#include <corvane/base/ModuleExport.h>
#include <corvane/host/QORICadSys.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/host/RuleModule.h>
#include <corvane/rules/CQorRule.h>

namespace {

constexpr QorLong kLongestPath = 5001;

constexpr corvane::StringTableEntry kTexts[] = {{5001, u"Longest path"}};
constexpr corvane::StringTable kTable{kTexts, std::size(kTexts)};

class PathLengthRule final : public CQorRule {
public:
    PathLengthRule() { fill(); }

    void InitializeParamStorage() override { fill(); }
    QorLong Execute(QORICadSys* cadSystem, const CQorData*&,
                    QORResultSet*& results) const override {
        const int length = cadSystem ? cadSystem->GetActivePartPath().GetLength() : 0;
        const CQorParameter<int>* limit = GetIntItem(kLongestPath);
        // What no handler of std::exception catches must not end the host's run.
        if (limit->m_Values.GetSize() > 0 && limit->m_Values.GetAt(0) < 0) throw length;
        if (limit->m_Values.GetSize() > 0 && length > limit->m_Values.GetAt(0))
            results->AddFinding(limit->m_csName + u" exceeded");
        return 0;
    }
    void PopulateParametersFromXML(QorXMLNode* node) override {
        CQorRule::PopulateParametersFromXML(node);
    }
    QorXMLNode* GetXML() override { return CQorRule::GetXML(); }
    void RunRule() override {}
    void UpdateRule(const RuleUnitSystemStructure*, const RuleUnitSystemStructure*) override {}
    bool UpdateRule(CQorRule* target) override { return CQorRule::UpdateRule(target); }
    void EditRule() override {}

private:
    void fill() {
        const corvane::StringTableScope names(kTable);
        m_Parameters.Add(CreateParamStorageObject(Type_Int, kLongestPath, QorOperator_Default,
                                                  QorParamType_Plain, true, false));
    }
};

}  // namespace

CORVANE_MODULE_EXPORT CQorRule* CreateQorRule(const char16_t* ruleName) {
    if (CStringW(ruleName) != u"Path length") return nullptr;
    return std::make_unique<PathLengthRule>().release();
}
