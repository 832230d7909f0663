#pragma once

#include "PartRule.h"

namespace partrules {

/// Every wall must be as thick as the part's material needs. The rule's own limit holds unless one
/// of its constraints names the material and has a limit for it.
class WallRule : public PartRule {
public:
    WallRule();
    ~WallRule() override { ClearConstraints(); }
    void InitializeParamStorage() override;

    // Constraints are read and written by the rule that has them.
    void PopulateParametersFromXML(QorXMLNode* node) override;
    QorXMLNode* GetXML() override;

private:
    void check(const meshengine::Mesh& mesh, QORResultSet& results) const override;
    void readConstraint(QorXMLNode* element);
    double limitFor(const CStringW& material) const;

    const CQorParameter<double>* thinnestWall_ = nullptr;
    const CQorParameter<CStringW*>* material_ = nullptr;
};

}  // namespace partrules
