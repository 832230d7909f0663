#pragma once

#include <corvane/RuleModule.h>

#include "meshengine/Mesh.h"

namespace partrules {

/// What the rules of this module have in common: they measure the mesh of the part that is open.
class PartRule : public corvane::ModuleRule {
public:
    using ModuleRule::ModuleRule;
    void check(corvane::RuleCheck& run) const override;

private:
    virtual void measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const = 0;
};

/// The part must fit into the working space of a machine.
class EnvelopeRule : public PartRule {
public:
    explicit EnvelopeRule(const corvane::RuleEntry& entry);

private:
    void measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const override;
};

/// The part must not be heavier than a limit. The densities of the materials are records of two
/// texts, the material and its density.
class MassRule : public PartRule {
public:
    explicit MassRule(const corvane::RuleEntry& entry);

private:
    void measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const override;
};

/// Every wall must be as thick as the part's material needs. The rule's own limit holds unless one
/// of its constraints names the material and has a limit for it.
class WallRule : public PartRule {
public:
    explicit WallRule(const corvane::RuleEntry& entry);

private:
    void measure(const meshengine::Mesh& mesh, corvane::RuleCheck& run) const override;
};

}  // namespace partrules
