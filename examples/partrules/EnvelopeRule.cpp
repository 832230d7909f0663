#include "EnvelopeRule.h"

#include <algorithm>
#include <array>

#include "Texts.h"
#include "meshengine/Measures.h"

namespace partrules {
namespace {

using Size = std::array<double, 3>;

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
    return size[0] <= space[0] && size[1] <= space[1] && size[2] <= space[2];
}

}  // namespace

EnvelopeRule::EnvelopeRule() : PartRule("Maximum envelope", "The part fits into the machine") {
    EnvelopeRule::InitializeParamStorage();
}

void EnvelopeRule::InitializeParamStorage() {
    addParameter(Type_Double, kLargestSize, QorOperator_Grouped);
    addParameter(Type_Bool, kMayBeTurned);
    largestSize_ = GetDoubleItem(kLargestSize);
    mayBeTurned_ = GetBoolItem(kMayBeTurned);
}

void EnvelopeRule::check(const meshengine::Mesh& mesh, QORResultSet& results) const {
    const CQorArray<double>& values = largestSize_->m_Values;
    if (values.GetSize() != 3) {
        results.AddFinding(u"the rule needs a largest size along x, y and z");
        return;
    }
    const Size space{values.GetAt(0), values.GetAt(1), values.GetAt(2)};
    const meshengine::Vector extent = meshengine::boundingSize(mesh);
    const Size size{extent.x, extent.y, extent.z};
    if (fits(size, space, firstValue(*mayBeTurned_, false))) return;
    results.AddFinding(u"the part measures " + sizeText(size) + u", the machine takes " +
                       sizeText(space));
}

}  // namespace partrules
