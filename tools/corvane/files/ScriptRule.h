#pragma once

#include <vector>

#include <corvane/scriptrules/ParametricScriptRule.h>

#include "results/Remark.h"

/// A user-defined rule that remembers what its definition asked for in vain.
class ScriptRule : public corvane::ParametricScriptRule {
public:
    using ParametricScriptRule::operator=;

    void PopulateParametersFromXML(QorXMLNode* node) override;

    /// False as long as no element was read, as without a script folder.
    bool hasDefinition() const { return hasDefinition_; }
    /// The engines that reading dropped because they are not registered, in a user's words.
    const std::vector<results::Remark>& missingEngines() const { return missingEngines_; }

private:
    bool hasDefinition_ = false;
    std::vector<results::Remark> missingEngines_;
};

/// True for a script's name that leads out of the script folder: a rule file of a stranger must not
/// have other files run, nor show a piece of them in an error.
bool leavesScriptFolder(const CStringW& script);
