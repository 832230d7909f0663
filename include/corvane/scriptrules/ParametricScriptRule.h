#pragma once

#include <set>
#include <vector>

#include <corvane/host/RunContext.h>
#include <corvane/scriptrules/ConcreteQORRule.h>

namespace corvane {

/// A user-defined rule with parameters for its script, so that one script serves many limits.
///
/// The `Parameter` and `Constraint` elements of the rule's definition become parameters of the kind
/// text and constraints of the rule; those of the rule file's element come over them. They are
/// written back with the rule. A host puts what GetScriptParameters gives into
/// RunContext::parameters before it runs the rule.
///
/// The rule owns its constraints and deletes them with itself.
class CORVANE_EXPORT ParametricScriptRule : public ConcreteQORRule {
public:
    using ConcreteQORRule::operator=;
    ParametricScriptRule();
    ~ParametricScriptRule() override;

    /// The same as in the base. When the index gave the definition, what the element has itself
    /// then comes over it: a parameter takes the values and the status of the element's parameter
    /// of that number, and its operator and parameter type where the element says them, and is
    /// still a list when it was one; a constraint replaces those of the index for the same
    /// material.
    bool PopulateScriptRule(QorXMLNode* ruleNode);

    /// The same as in the base. Each `Parameter` of the element becomes a parameter, or replaces
    /// the values of the one that the rule has; the constraints of the element replace all others.
    /// The name and the remarks of a parameter are read too. A parameter that does not say its
    /// operator has QorOperator_Default, so that it is written back.
    void PopulateParametersFromXML(QorXMLNode* node) override;
    /// The same as in the base, with the constraints after the parameters.
    QorXMLNode* GetXML() override;

    /// What the script is given for a part of that material: the parameters whose status is on,
    /// each with the values that the first constraint has for it that is on and names the material,
    /// case ignored; an empty material meets no constraint. docs/rule-files.md says how the name
    /// and the kind of a value come from the file.
    std::vector<ScriptParameter> GetScriptParameters(const CStringW& material) const;

private:
    void takeConstraints(const QorXMLNode& element);

    std::set<QorLong> lists_;  // that have several values in the definition
};

}  // namespace corvane
