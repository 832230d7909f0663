#include "MassRule.h"

#include <cmath>

#include "Texts.h"
#include "meshengine/Measures.h"

namespace partrules {
namespace {

constexpr double kCubicMillimetres = 1000.0;  // in a cubic centimetre

}  // namespace

MassRule::MassRule() : PartRule("Maximum mass", "The part is not too heavy") {
    MassRule::InitializeParamStorage();
}

void MassRule::InitializeParamStorage() {
    addParameter(Type_Double, kLargestMass);
    addParameter(Type_CStringPtr, kMaterial);
    addParameter(Type_CustomRuleData, kDensities, QorOperator_Default, QorParamType_Attributes);
    largestMass_ = GetDoubleItem(kLargestMass);
    material_ = GetCStringPtrItem(kMaterial);
    // Records have no getter of their own.
    densities_ = static_cast<const CQorParameter<QORCustomRuleData*>*>(
        FindParameterInArray(kDensities)->m_pParameter);
}

std::optional<double> MassRule::densityOf(const CStringW& material) const {
    for (int i = 0; i < densities_->m_Values.GetSize(); ++i) {
        const QORCustomRuleData* record = densities_->m_Values.GetAt(i);
        if (!record || record->GetSize() < 2 || record->GetAt(0).CompareNoCase(material) != 0)
            continue;
        double density = 0.0;
        if (CQorDataTypeConverter().TextToValue(record->GetAt(1), density)) return density;
    }
    return std::nullopt;
}

void MassRule::check(const meshengine::Mesh& mesh, QORResultSet& results) const {
    const CStringW material = firstText(*material_);
    const std::optional<double> density = densityOf(material);
    const std::optional<double> volume = meshengine::enclosedVolume(mesh);
    CStringW text;
    if (!density) {
        text.Format(u"the rule has no density of \"%s\"", material);
    } else if (!volume) {
        text = u"an open surface encloses no volume, so the part has no mass";
    } else if (const double mass = std::abs(*volume) / kCubicMillimetres * *density;
               mass > firstValue(*largestMass_, 0.0)) {
        text.Format(u"the part weighs %.1f g, %.1f g are allowed", mass,
                    firstValue(*largestMass_, 0.0));
    }
    if (!text.IsEmpty()) results.AddFinding(text);
}

}  // namespace partrules
