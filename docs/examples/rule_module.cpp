#include <corvane/RuleModule.h>

namespace {

// Numbers of parameters are written to rule files: choose them once and keep them.
enum : QorLong { kLongest = 7001, kMaterial = 7002 };

constexpr corvane::ParameterDefinition kParameters[] = {{kLongest, Type_Int, u"Longest path"},
                                                        {kMaterial, Type_CStringPtr, u"Material"}};
constexpr corvane::ParameterDefinition kOfAMaterial[] = {kParameters[0]};

/// The path of a part must not be longer than a machine can show.
class PathRule : public corvane::ModuleRule {
public:
    explicit PathRule(const corvane::RuleEntry& entry)
        : ModuleRule(entry, kParameters, kOfAMaterial) {}

    void check(corvane::RuleCheck& run) const override {
        if (run.partPath().IsEmpty()) run.cannotJudge(u"no part is open");
        const int limit = valueFor<int>(value<CStringW>(kMaterial), kLongest, 80);
        if (run.partPath().GetLength() > limit) run.fail(u"the path is too long");
    }
};

constexpr corvane::RuleEntry kRules[] = {
    {u"Short path", u"The part's path can be shown", u"paths", corvane::MakeModuleRule<PathRule>}};

}  // namespace

CORVANE_RULE_MODULE(kRules)

int main() {
    const std::unique_ptr<CQorRule> rule(CreateQorRule(u"Short path"));
    return rule && rule->GetIntItem(kLongest) ? 0 : 1;
}
