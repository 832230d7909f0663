#pragma once

#include <corvane/rules/CQorRule.h>

/// A user-defined rule: data instead of code. Its check is a script that the script host runs; see
/// IScriptProcessor.h.
///
/// A rule file names the rule and gives its severity. The definition is in one place, the index
/// "UserDefinedFile.xml" of the script folder, which "directory" in section RULE_SCRIPT_LOCATION of
/// ConfigModule.ini names.
class CORVANE_EXPORT ConcreteQORRule : public CQorRule {
public:
    /// Severity 3, category 1, and the texts of a new rule in the user's language.
    ConcreteQORRule();
    ~ConcreteQORRule() override;

    /// Takes the definition from the first index entry of the element's name, case ignored, or else
    /// from the element itself, and the severity from the element in both cases. True when an index
    /// entry gave the definition. The index is read at each call; RuleIndexScope.h keeps it for
    /// many. With a null pointer or without script folder nothing changes.
    /// Categories and engines are added to those that the rule has. An empty node raises
    /// _com_error.
    bool PopulateScriptRule(QorXMLNode* ruleNode);

    void InitializeParamStorage() override;  ///< Does nothing: parameters come from the rule file.
    /// Runs the script. 0 for success, also when no script folder is configured; -6 for any
    /// failure. The arguments are not used. A script file of more than 256 MiB fails unread, one
    /// that cannot be read runs as an empty text. A script that fails is reported by message box
    /// unless batch mode is on; ScriptRunObserver.h tells more.
    QorLong Execute(QORICadSys* cadSystem, const CQorData*& data,
                    QORResultSet*& results) const override;
    /// Reads the larger form of a rule element: like CQorRule, and status and life status (-1
    /// without a number), categories, engines and the module file. Categories and engines are added
    /// to those that the rule has; comments and text among them are passed over. An engine becomes
    /// the path that the registry has for it, and is dropped when it has none; what its element
    /// leaves out is taken from the engine before it. Null does nothing. Reading ends, without a
    /// message, at a storage of another kind than 1 to 7.
    void PopulateParametersFromXML(QorXMLNode* node) override;
    /// Writes the larger form: like CQorRule, with categories and engines. An engine whose file is
    /// no type library becomes an element without attributes. A storage of another kind than 1 to 7
    /// is left out, with a message.
    QorXMLNode* GetXML() override;
    void RunRule() override;  ///< Does nothing.
    void UpdateRule(const RuleUnitSystemStructure* first,
                    const RuleUnitSystemStructure* second) override;
    bool UpdateRule(CQorRule* target) override;  ///< True, and copies nothing.
    void EditRule() override;                    ///< Does nothing.
    /// Null does nothing; otherwise the base's assignment.
    CQorRule& operator=(CQorRule* source) override;

    void UpdateRule(QorLong first, QorLong second);               ///< Does nothing.
    void setValue(QorLong first, QorLong second, QorLong third);  ///< Does nothing.

private:
    QorLong ExecuteScriptRule() const;
    /// Shows a script's failure, and sets both numbers to -1.
    void CheckForScriptError(QorLong& lineNumber, QorLong& charNumber, CStringW& message) const;
    /// Appends the text of a script file; see ScriptText.h. False, and nothing, when it cannot be
    /// read.
    bool ReadFromFile(CStringW path, CStringW& text) const;
    /// Rules of that technology are not run by the library: 0.
    QorLong ExecuteVSTARule(const CQorData*& data, QORResultSet*& results) const;
};
