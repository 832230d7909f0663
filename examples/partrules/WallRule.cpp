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

corvane::Point pointOf(const meshengine::Vector& vector) {
    return {vector.x, vector.y, vector.z};
}

}  // namespace

WallRule::WallRule(const corvane::RuleEntry& entry) : PartRule(entry, kParameters, kOfAMaterial) {}

void WallRule::measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const {
    const auto material = value<CStringW>(kMaterial);
    const auto limit = valueFor<double>(material, kThinnestWall);
    const std::optional<meshengine::Wall> wall = meshengine::thinnestWall(mesh);
    if (!wall) run.cannotJudge(u"the part has no wall to measure");
    if (wall->thickness >= limit) return;
    corvane::Finding finding;
    finding.message.Format(u"the thinnest wall is about %.2f mm, %s needs %.2f mm", wall->thickness,
                           material.IsEmpty() ? CStringW(u"the rule") : material, limit);
    finding.measured = wall->thickness;
    finding.limit = limit;
    finding.unit = u"mm";
    finding.places.push_back({corvane::Place::Kind::Polyline,
                              u"thinnest wall",
                              {pointOf(wall->from), pointOf(wall->to)},
                              {}});
    run.fail(finding);
}

}  // namespace partrules
