#include <algorithm>

#include <corvane/RuleModule.h>
#include <corvane/xml/QorXMLDocument.h>

constexpr corvane::ParameterDefinition kParameters[] = {{7001, Type_Double, u"Thinnest wall"}};

struct WallRule : corvane::ModuleRule {
    explicit WallRule(const corvane::RuleEntry& entry) : ModuleRule(entry, {}, kParameters) {}
    void check(corvane::RuleCheck& run) const override {
        double limit = 1.5;
        for (CQORConstraint* constraint : m_Constraints) {
            const auto limits =
                corvane::ParameterValues<double>(constraint->FindParameterInArray(7001));
            if (constraint->m_bStatus && !limits.empty()) limit = std::min(limit, limits[0]);
        }
        if (0.8 >= limit) return;
        corvane::Finding finding;
        finding.message = u"the wall is too thin";
        finding.measured = 0.8;
        finding.limit = limit;
        finding.unit = u"mm";
        finding.places.push_back({corvane::Place::Kind::Point, u"thinnest", {{10, 0, 4}}, {}});
        run.fail(finding);
    }
};
constexpr corvane::RuleEntry kRules[] = {{u"Wall", u"", u"", corvane::MakeModuleRule<WallRule>}};
CORVANE_RULE_MODULE(kRules)

int main() {
    CStringW text =
        u"<Rule><Constraint Status='1'><Parameter Type='7001'><Value>0.5</Value></Parameter>"
        u"</Constraint></Rule>";
    QorXMLDocument file;
    const std::unique_ptr<CQorRule> rule(CreateQorRule(u"Wall"));
    rule->PopulateParametersFromXML(file.LoadFromXMLString(text));
    QORResultSet* results = nullptr;
    const CQorData* data = nullptr;
    return rule->Execute(nullptr, data, results) == 0 ? 0 : 1;
}
