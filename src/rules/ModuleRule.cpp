#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include <corvane/app/StringTable.h>
#include <corvane/host/QORICadSys.h>
#include <corvane/host/QORResultSet.h>
#include <corvane/host/RunContext.h>
#include <corvane/rules/CQORConstraint.h>
#include <corvane/rules/ChildElements.h>
#include <corvane/rules/ModuleRule.h>

#include "rules/ParameterElement.h"
#include "rules/RuleElement.h"
#include "rules/Storages.h"
#include "system/Unicode.h"

namespace corvane {

namespace {

const StringTable* currentTable() {
    const StringTable* const table = SetCurrentStringTable(nullptr);
    SetCurrentStringTable(table);
    return table;
}

}  // namespace

CQorRule* MakeNamedRule(std::span<const RuleEntry> rules, const char16_t* name) {
    if (!name) return nullptr;
    for (const RuleEntry& entry : rules) {
        if (std::u16string_view(entry.name) == name) return entry.make(entry);
    }
    return nullptr;
}

RuleCheck::RuleCheck(QORICadSys* cadSystem, const CQorData* data, QORResultSet* results)
    : cadSystem_(cadSystem), data_(data), results_(results) {
    if (cadSystem) partPath_ = cadSystem->GetActivePartPath();
    if (partPath_.IsEmpty()) partPath_ = CurrentPartPath();
}

void RuleCheck::fail(const CStringW& message) {
    Finding finding;
    finding.message = message;
    report(finding);
}

void RuleCheck::fail(const Finding& finding) {
    report(finding);
}

void RuleCheck::note(const CStringW& message) {
    Finding finding;
    finding.message = message;
    finding.isNote = true;
    report(finding);
}

void RuleCheck::report(const Finding& finding) {
    if (results_) return results_->ReportFinding(finding);
    // A failure that nobody hears of would be a pass.
    if (!finding.isNote) cannotJudge(finding.message);
}

void RuleCheck::cannotJudge(const CStringW& reason) const {
    throw std::runtime_error(system::narrow(reason));
}

ModuleRule::ModuleRule(const RuleEntry& entry, std::span<const ParameterDefinition> parameters,
                       std::span<const ParameterDefinition> constraintParameters)
    : parameters_(parameters), constraintParameters_(constraintParameters), names_(currentTable()) {
    m_csRuleName = entry.name;
    m_csRuleDisplayName = entry.name;
    m_csRuleDescription = entry.description;
    m_csRuleSource = entry.source;
    ModuleRule::InitializeParamStorage();
}

ModuleRule::~ModuleRule() {
    ClearConstraints();
}

void ModuleRule::InitializeParamStorage() {
    addParameters(parameters_, m_Parameters);
}

void ModuleRule::addParameters(std::span<const ParameterDefinition> definitions,
                               CQorArray<CQorParamStorage*>& storages) {
    std::optional<StringTableScope> names;
    if (names_ && !currentTable()) names.emplace(*names_);
    for (const ParameterDefinition& definition : definitions) {
        CQorParamStorage* const storage = CreateParamStorageObject(
            definition.kind, definition.number, definition.op, definition.paramType, true, false);
        storages.Add(storage);
        if (!definition.name) continue;
        rules::visitParameter(storage,
                              [&](auto& parameter) { parameter.m_csName = definition.name; });
    }
}

QorLong ModuleRule::Execute(QORICadSys* cadSystem, const CQorData*& data,
                            QORResultSet*& results) const {
    RuleCheck run(cadSystem, data, results);
    check(run);
    return 0;
}

void ModuleRule::PopulateParametersFromXML(QorXMLNode* node) {
    CQorRule::PopulateParametersFromXML(node);
    if (!node || constraintParameters_.empty()) return;
    ClearConstraints();
    for (QorXMLNode& element : ChildElements(*node, rules::name::kConstraint)) {
        CQORConstraint* const constraint =
            CreateConstraintObject(QORConstraintType_e(0), CStringW(), true);
        m_Constraints.Add(constraint);
        addParameters(constraintParameters_, constraint->m_Parameters);
        QorXMLNode* pointer = &element;
        constraint->PopulateFromXML(pointer);
    }
}

QorXMLNode* ModuleRule::GetXML() {
    std::unique_ptr<QorXMLNode> rule(CQorRule::GetXML());
    if (!rule) return nullptr;
    rules::writeConstraints(*rule, m_Constraints);
    return rule.release();
}

bool ModuleRule::UpdateRule(CQorRule* target) {
    return CQorRule::UpdateRule(target);
}

void ModuleRule::UpdateRule(const RuleUnitSystemStructure*, const RuleUnitSystemStructure*) {}

void ModuleRule::RunRule() {}

void ModuleRule::EditRule() {}

const CQorParamStorage* ModuleRule::storage(QorLong number) const {
    return rules::findIndexed(m_Parameters, number);
}

const CQorParamStorage* ModuleRule::constrained(const CStringW& material, QorLong number) const {
    for (CQORConstraint* const constraint : m_Constraints) {
        if (!rules::meets(constraint, material)) continue;
        if (const CQorParamStorage* const storage = constraint->FindParameterInArray(number))
            return storage;
    }
    return nullptr;
}

}  // namespace corvane
