#include <string>

#include "PartRules.h"
#include "meshengine/PartFile.h"

namespace partrules {

void PartRule::check(corvane::RuleCheck& run) const {
    if (run.partPath().IsEmpty()) run.cannotJudge(u"no part is open");
    std::string error;
    const auto mesh = meshengine::readPart(run.partPath().ToUtf8(), error);
    if (!mesh) run.cannotJudge(CStringW::FromUtf8(error));
    measure(*mesh, run);
}

}  // namespace partrules

namespace {

using namespace partrules;

constexpr corvane::RuleEntry kRules[] = {
    {u"Maximum envelope", u"The part fits into the machine", u"partrules",
     corvane::MakeModuleRule<EnvelopeRule>},
    {u"Maximum mass", u"The part is not too heavy", u"partrules",
     corvane::MakeModuleRule<MassRule>},
    {u"Minimum wall", u"No wall is thinner than its material needs", u"partrules",
     corvane::MakeModuleRule<WallRule>},
};

}  // namespace

CORVANE_RULE_MODULE(kRules)
