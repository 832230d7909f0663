#pragma once

#include <corvane/host/QORResultSet.h>
#include <corvane/rules/CQorRule.h>

#include "meshengine/Mesh.h"

namespace partrules {

/// What the rules of this module have in common: they measure the part that is open and report what
/// they find. A derived rule creates its parameters in its constructor and measures in check().
class PartRule : public CQorRule {
public:
    using CQorRule::operator=;

    QorLong Execute(QORICadSys* cadSystem, const CQorData*& data,
                    QORResultSet*& results) const override;

    void PopulateParametersFromXML(QorXMLNode* node) override;
    QorXMLNode* GetXML() override;
    bool UpdateRule(CQorRule* target) override;

    // The parameters are in millimetres and grams, whatever units a CAD system shows.
    void UpdateRule(const RuleUnitSystemStructure*, const RuleUnitSystemStructure*) override {}
    void RunRule() override {}
    void EditRule() override {}

protected:
    PartRule(const char* name, const char* description);

    /// Adds a parameter without values: reading a rule file appends the values of the file.
    void addParameter(Type_e type, QorLong number, QorOperator_e op = QorOperator_Default,
                      QorParamType_e paramType = QorParamType_Plain);

private:
    virtual void check(const meshengine::Mesh& mesh, QORResultSet& results) const = 0;
};

/// The first value of a parameter, or `otherwise` when it has none.
template <typename T>
T firstValue(const CQorParameter<T>& parameter, T otherwise) {
    return parameter.m_Values.GetSize() > 0 ? parameter.m_Values.GetAt(0) : otherwise;
}

/// The first text, or an empty one.
CStringW firstText(const CQorParameter<CStringW*>& parameter);

}  // namespace partrules
