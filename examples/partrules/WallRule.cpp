#include <optional>

#include "PartRules.h"
#include "meshengine/Measures.h"

namespace partrules {
namespace {

constexpr QorLong kThinnestWall = 5011;
constexpr QorLong kMaterial = 5012;

constexpr corvane::ParameterDefinition kParameters[] = {
    {kThinnestWall, Type_Double, u"Thinnest wall (mm)"},
    {kMaterial, Type_CStringPtr, u"Material"},
};
constexpr corvane::ParameterDefinition kOfAMaterial[] = {kParameters[0]};

}  // namespace

WallRule::WallRule(const corvane::RuleEntry& entry) : PartRule(entry, kParameters, kOfAMaterial) {}

void WallRule::measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const {
    const auto material = value<CStringW>(kMaterial);
    const auto limit = valueFor<double>(material, kThinnestWall);
    const std::optional<double> wall = meshengine::minimumWall(mesh);
    if (!wall) run.cannotJudge(u"the part has no wall to measure");
    if (*wall >= limit) return;
    corvane::Finding finding;
    finding.message.Format(u"the thinnest wall is about %.2f mm, %s needs %.2f mm", *wall,
                           material.IsEmpty() ? CStringW(u"the rule") : material, limit);
    finding.measured = *wall;
    finding.limit = limit;
    finding.unit = u"mm";
    run.fail(finding);
}

}  // namespace partrules
