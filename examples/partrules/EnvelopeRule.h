#pragma once

#include "PartRule.h"

namespace partrules {

/// The part must fit into the working space of a machine.
class EnvelopeRule : public PartRule {
public:
    EnvelopeRule();
    void InitializeParamStorage() override;

private:
    void check(const meshengine::Mesh& mesh, QORResultSet& results) const override;

    const CQorParameter<double>* largestSize_ = nullptr;  ///< Three values: x, y and z.
    const CQorParameter<bool>* mayBeTurned_ = nullptr;
};

}  // namespace partrules
