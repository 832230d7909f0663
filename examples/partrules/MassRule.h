#pragma once

#include <optional>

#include "PartRule.h"

namespace partrules {

/// The part must not be heavier than a limit. The densities of the materials are records of two
/// texts, the material and its density.
class MassRule : public PartRule {
public:
    MassRule();
    void InitializeParamStorage() override;

private:
    void check(const meshengine::Mesh& mesh, QORResultSet& results) const override;
    std::optional<double> densityOf(const CStringW& material) const;

    const CQorParameter<double>* largestMass_ = nullptr;
    const CQorParameter<CStringW*>* material_ = nullptr;
    const CQorParameter<QORCustomRuleData*>* densities_ = nullptr;
};

}  // namespace partrules
