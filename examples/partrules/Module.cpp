#include "PartRules.h"
#include "meshengine/MeshReader.h"

namespace partrules {

void PartRule::check(corvane::RuleCheck& run) const {
    if (run.partPath().IsEmpty()) run.cannotJudge(u"no part is open");
    const meshengine::ReadResult part = meshengine::readMesh(run.partPath().ToUtf8());
    if (!part.mesh) run.cannotJudge(CStringW::FromUtf8(part.error));
    measure(*part.mesh, run);
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
