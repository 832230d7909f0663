#include <algorithm>
#include <vector>

#include "PartRules.h"
#include "meshengine/Measures.h"

namespace partrules {
namespace {

constexpr QorLong kLargestSize = 5001;
constexpr QorLong kMayBeTurned = 5002;

constexpr corvane::ParameterDefinition kParameters[] = {
    {kLargestSize, Type_Double, u"Largest size along x, y and z (mm)", QorOperator_Grouped},
    {kMayBeTurned, Type_Bool, u"The part may be turned"},
};

using Size = std::vector<double>;

CStringW sizeText(const Size& size) {
    CStringW text;
    text.Format(u"%.1f x %.1f x %.1f mm", size[0], size[1], size[2]);
    return text;
}

bool fits(Size size, Size space, bool mayBeTurned) {
    if (mayBeTurned) {
        std::ranges::sort(size);
        std::ranges::sort(space);
    }
    return std::ranges::equal(size, space, std::ranges::less_equal());
}

}  // namespace

EnvelopeRule::EnvelopeRule(const corvane::RuleEntry& entry) : PartRule(entry, kParameters) {}

void EnvelopeRule::measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const {
    const Size space = values<double>(kLargestSize);
    if (space.size() != 3) run.cannotJudge(u"the rule needs a largest size along x, y and z");
    const meshengine::Vector extent = meshengine::boundingSize(mesh);
    const Size size{extent.x, extent.y, extent.z};
    if (fits(size, space, value<bool>(kMayBeTurned))) return;
    run.fail(u"the part measures " + sizeText(size) + u", the machine takes " + sizeText(space));
}

}  // namespace partrules
