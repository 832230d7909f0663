#pragma once

#include <span>
#include <vector>

#include <corvane/base/Export.h>
#include <corvane/host/Finding.h>
#include <corvane/rules/CQorRule.h>
#include <corvane/rules/ParameterValues.h>

namespace corvane {

struct StringTable;

/// One parameter that a rule, or each of its constraints, has.
struct ParameterDefinition {
    QorLong number;  ///< Written to rule files: choose it once and keep it.
    Type_e kind;     ///< Kind of its values.
    /// Zero-terminated. Null means the text of that number in the string table that is current
    /// while the rule is made, which must outlive it; see StringTable.h.
    const char16_t* name = nullptr;
    QorOperator_e op = QorOperator_Default;  ///< How its values are meant.
    /// Files keep the texts of a record with QorParamType_Attributes alone.
    QorParamType_e paramType = QorParamType_Plain;
};

/// One rule of a rule module, with the texts that it has until an element is read.
struct RuleEntry {
    const char16_t* name;         ///< By which a rule file asks for it. These three are never null.
    const char16_t* description;  ///< What the rule checks.
    const char16_t* source;       ///< Where the rule comes from, such as a standard.
    /// Makes the rule, which the caller then owns.
    CQorRule* (*make)(const RuleEntry& entry);
};

/// For RuleEntry::make: a rule whose constructor takes the entry.
template <typename Rule>
CQorRule* MakeModuleRule(const RuleEntry& entry) {
    return new Rule(entry);
}

/// Makes the rule of that name, zero-terminated; null for a name of none. The caller owns it.
CORVANE_EXPORT CQorRule* MakeNamedRule(std::span<const RuleEntry> rules, const char16_t* name);

/// One run of a compiled rule: what it is given and where its findings go. Lives for the length of
/// the run.
class CORVANE_EXPORT RuleCheck {
public:
    /// Pointers stay the caller's and may be null.
    RuleCheck(QORICadSys* cadSystem, const CQorData* data, QORResultSet* results);

    QORICadSys* cadSystem() const { return cadSystem_; }  ///< The CAD system, or null.
    const CQorData* data() const { return data_; }        ///< What the host has prepared, or null.
    /// The part's file: what the CAD system has open, else CurrentPartPath. Empty without a part.
    const CStringW& partPath() const { return partPath_; }

    ///@{
    /// Says what is wrong with the part. A rule that says nothing has passed.
    void fail(const CStringW& message);
    void fail(const Finding& finding);
    ///@}
    /// Says what is worth knowing and fails nothing.
    void note(const CStringW& message);

    /// Ends the run by an exception, because the rule cannot tell whether the part is good: there
    /// is no part, it cannot be read, or a parameter is missing. A host shows the reason.
    [[noreturn]] void cannotJudge(const CStringW& reason) const;

private:
    void report(const Finding& finding);

    QORICadSys* cadSystem_;
    const CQorData* data_;
    QORResultSet* results_;
    CStringW partPath_;
};

/// The base of the rules of a module. It does what all compiled rules do alike: it makes the
/// parameters of its table, reads and writes them, and does the same with the constraints, which it
/// owns. A derived rule checks the part in check() and overrides what it does otherwise.
class CORVANE_EXPORT ModuleRule : public CQorRule {
public:
    using CQorRule::operator=;

    /// Makes the parameters. Each `Constraint` element of the rule becomes a constraint with the
    /// parameters of the second table; with an empty one the rule has no constraints. The tables
    /// outlive the rule, as static arrays do.
    ModuleRule(const RuleEntry& entry, std::span<const ParameterDefinition> parameters,
               std::span<const ParameterDefinition> constraintParameters = {});
    /// Deletes the constraints too.
    ~ModuleRule() override;

    /// Checks the part. It may be called on several threads for several rules.
    virtual void check(RuleCheck& run) const = 0;

    /// The values of the parameter with that number; see ParameterValues.
    template <typename T>
    std::vector<T> values(QorLong number) const {
        return ParameterValues<T>(storage(number));
    }
    /// The first of them, or `otherwise`.
    template <typename T>
    T value(QorLong number, T otherwise = T()) const {
        return FirstValue<T>(storage(number), std::move(otherwise));
    }
    /// The same, but first the value of the first constraint that is on and names the material,
    /// case ignored.
    template <typename T>
    T valueFor(const CStringW& material, QorLong number, T otherwise = T()) const {
        return FirstValue<T>(constrained(material, number), value<T>(number, std::move(otherwise)));
    }

    void InitializeParamStorage() override;  ///< Makes the parameters of the table.
    /// Runs check(). Always 0: findings, and the exception of RuleCheck::cannotJudge, tell the
    /// rest.
    QorLong Execute(QORICadSys* cadSystem, const CQorData*& data,
                    QORResultSet*& results) const override;
    void PopulateParametersFromXML(QorXMLNode* node) override;
    QorXMLNode* GetXML() override;
    bool UpdateRule(CQorRule* target) override;
    /// Does nothing: parameters are in the units of the rule file.
    void UpdateRule(const RuleUnitSystemStructure* first,
                    const RuleUnitSystemStructure* second) override;
    void RunRule() override;   ///< Does nothing.
    void EditRule() override;  ///< Does nothing.

private:
    const CQorParamStorage* storage(QorLong number) const;
    const CQorParamStorage* constrained(const CStringW& material, QorLong number) const;
    void addParameters(std::span<const ParameterDefinition> definitions,
                       CQorArray<CQorParamStorage*>& storages);

    std::span<const ParameterDefinition> parameters_;
    std::span<const ParameterDefinition> constraintParameters_;
    const StringTable* names_;  // For what is made after the constructor.
};

}  // namespace corvane
