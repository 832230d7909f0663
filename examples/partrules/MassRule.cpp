#include <cmath>
#include <optional>

#include "PartRules.h"
#include "meshengine/Measures.h"

namespace partrules {
namespace {

constexpr QorLong kMaterial = 5012;
constexpr QorLong kLargestMass = 5021;
constexpr QorLong kDensities = 5022;

constexpr corvane::ParameterDefinition kParameters[] = {
    {kLargestMass, Type_Double, u"Largest mass (g)"},
    {kMaterial, Type_CStringPtr, u"Material"},
    {kDensities, Type_CustomRuleData, u"Densities (g/cm3)", QorOperator_Default,
     QorParamType_Attributes},
};

constexpr double kCubicMillimetres = 1000.0;  // in a cubic centimetre

std::optional<double> densityOf(const CStringW& material,
                                const std::vector<QORCustomRuleData>& densities) {
    for (const QORCustomRuleData& record : densities) {
        if (record.GetSize() < 2 || record.GetAt(0).CompareNoCase(material) != 0) continue;
        double density = 0.0;
        if (CQorDataTypeConverter().TextToValue(record.GetAt(1), density)) return density;
    }
    return std::nullopt;
}

}  // namespace

MassRule::MassRule(const corvane::RuleEntry& entry) : PartRule(entry, kParameters) {}

void MassRule::measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const {
    const auto material = value<CStringW>(kMaterial);
    const auto density = densityOf(material, values<QORCustomRuleData>(kDensities));
    if (!density) run.cannotJudge(u"the rule has no density of \"" + material + u"\"");
    const std::optional<double> volume = meshengine::enclosedVolume(mesh);
    if (!volume) return run.fail(u"an open surface encloses no volume, so the part has no mass");
    const double mass = std::abs(*volume) / kCubicMillimetres * *density;
    const auto limit = value<double>(kLargestMass);
    if (mass <= limit) return;
    corvane::Finding finding;
    finding.message.Format(u"the part weighs %.1f g, %.1f g are allowed", mass, limit);
    finding.measured = mass;
    finding.limit = limit;
    finding.unit = u"g";
    run.fail(finding);
}

}  // namespace partrules
