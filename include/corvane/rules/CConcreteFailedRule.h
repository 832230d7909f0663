#pragma once

#include <corvane/rules/CQorRule.h>

/// Takes the place of a rule that could not be created: it keeps the name, the severity and the
/// category and does nothing else, so that it adds nothing to a rule file.
class CORVANE_EXPORT CConcreteFailedRule : public CQorRule {
public:
    CConcreteFailedRule();
    /// A rule with these texts and this severity.
    CConcreteFailedRule(CStringW name, QorLong severity, CStringW category);
    ~CConcreteFailedRule() override;

    void InitializeParamStorage() override;  ///< Does nothing.
    QorLong Execute(QORICadSys* cadSystem, const CQorData*& data,
                    QORResultSet*& results) const override;  ///< 0.
    void PopulateParametersFromXML(QorXMLNode* node) override;
    QorXMLNode* GetXML() override;  ///< Null.
    void RunRule() override;        ///< Does nothing.
    void UpdateRule(const RuleUnitSystemStructure* first,
                    const RuleUnitSystemStructure* second) override;
    bool UpdateRule(CQorRule* target) override;  ///< True, and copies nothing.
    void EditRule() override;                    ///< Does nothing.
    /// Null does nothing; otherwise the base's assignment.
    CQorRule& operator=(CQorRule* source) override;

    void UpdateRule(QorLong first, QorLong second);               ///< Does nothing.
    void setValue(QorLong first, QorLong second, QorLong third);  ///< Does nothing.
};
