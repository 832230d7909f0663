#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/rules/CQORConstraint.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorParamStorage.h>
#include <corvane/rules/CQorParameter.h>
#include <corvane/rules/ParameterKinds.h>
#include <corvane/rules/QORConstraintType.h>
#include <corvane/rules/QORRuleCategory.h>
#include <corvane/text/CStringList.h>
#include <corvane/text/CStringW.h>

class CQorData;
class QORICadSys;
class QORResultSet;
class QorXMLDocument;
class QorXMLNode;
/// A unit system, for rule modules to define; the library passes it on as a pointer.
struct RuleUnitSystemStructure;

/// The base of every rule: what a rule knows about itself, its parameters, its constraints, its
/// form in a rule file, and the copying and updating between two rules of one class.
///
/// A rule module derives from it, supplies the first eight virtual operations and creates its
/// parameters in InitializeParamStorage, which it calls from its own constructor. Derived rules
/// themselves add what they create to `m_Parameters` and `m_Constraints`.
///
/// **Interface.** The order of the virtual operations and of the fields is fixed, since rule
/// modules are built separately. Add nothing between them.
///
/// **Illegal kinds.** A null storage, one without parameter and one whose kind is outside 1 to 8
/// are of illegal kind. A walk that meets one shows a message.
///
/// **Threads.** A rule belongs to one thread at a time.
class CORVANE_EXPORT CQorRule {
public:
    CQorRule();
    /// Name and display name, description and source, as 8-bit text in the process's code page.
    CQorRule(const char* name, const char* description, const char* source);
    CQorRule(const CQorRule&) = delete;
    CQorRule& operator=(const CQorRule&) = delete;

    // The virtual operations, in the order of their slots.

    virtual void InitializeParamStorage() = 0;  ///< Creates the parameters.
    /// Runs the rule; 0 for success. The arguments stay the caller's.
    virtual QorLong Execute(QORICadSys* cadSystem, const CQorData*& data,
                            QORResultSet*& results) const = 0;
    /// Has a body that derived rules may call. It reads the rule's element, which stays the
    /// caller's: texts where their attribute is present; the severity, -1 without a number; the
    /// category, empty without an attribute; then every parameter in `m_Parameters`. Status and
    /// life status are not read. At an illegal kind reading ends after the message; otherwise
    /// `m_bPopulated` becomes true. Null does nothing, an empty node raises _com_error.
    virtual void PopulateParametersFromXML(QorXMLNode* node) = 0;
    /// Has a body that derived rules may call. It makes the rule's element on the current document;
    /// the caller owns it. Null when no document is set. Parameters of operator 0 and 12 and
    /// storages of illegal kind are left out. Text that XML cannot carry raises _com_error.
    virtual QorXMLNode* GetXML() = 0;
    virtual void RunRule() = 0;  ///< For derived rules; the library does not call it.
    /// Moves the rule from one unit system to another. The library converts nothing itself.
    virtual void UpdateRule(const RuleUnitSystemStructure* first,
                            const RuleUnitSystemStructure* second) = 0;
    /// Has a body that derived rules may call. It pushes name, texts, severity and parameter values
    /// into `target`, a rule of the same class, and says whether a parameter differed; bool and
    /// date parameters are not moved. A parameter that `target` lacks, or has in another kind, is
    /// passed over. Null does nothing and gives false.
    virtual bool UpdateRule(CQorRule* target) = 0;
    virtual void EditRule() = 0;  ///< For derived rules; the library does not call it.
    virtual QorLong Import(QorXMLDocument* document, QorXMLNode* node, const CQorData*& data,
                           QORICadSys* cadSystem, QORResultSet*& results) const;  ///< -7.
    /// Deletes the storages in `m_Parameters`. Constraints stay: see ClearConstraints.
    virtual ~CQorRule();
    /// Takes over the definition of `source`, a rule of the same class: texts, severity, life
    /// status, kind, tag, the three lists, and the parameters, whose values are cloned. Status,
    /// constraints and the fields for derived rules stay. A parameter that `source` lacks, or has
    /// in another kind, is passed over. Null does nothing.
    virtual CQorRule& operator=(CQorRule* source);
    /// The first storage with that number, which stays the rule's, or null.
    virtual CQorParamStorage* FindParameterInArray(QorLong id);
    virtual void SetRuleStatusForAssemblyModel(int status);  ///< Does nothing.
    virtual bool ValidateInputData();                        ///< True.
    virtual CStringW GetRequiredInputData() const;           ///< Empty.
    virtual void SetInputData(CStringW& data);               ///< Does nothing.
    virtual void SetPreExecutionData(CQorData*& data);       ///< Does nothing.
    virtual int GetRuleId() const;                           ///< -1.
    virtual int GetMaterialStatus() const;                   ///< 0.
    /// To be called after a rule was read: makes source and file name lower case and takes every
    /// "proe" out of them, so that one rule file serves both forms of the add-in.
    virtual void PostPopulate();
    virtual int GetCutterStatus() const;  ///< 0.
    /// Does nothing.
    virtual void Heal(QORICadSys* cadSystem, const CQorData*& data,
                      const QORResultSet*& results) const;

    ///@{
    /// The parameter of the first storage with that number, which stays the rule's; null when there
    /// is none or it is of another kind. Const, so that Execute can ask for its parameters.
    CQorParameter<int>* GetIntItem(QorLong id) const;
    CQorParameter<QorLong>* GetLongItem(QorLong id) const;
    CQorParameter<bool>* GetBoolItem(QorLong id) const;
    CQorParameter<double>* GetDoubleItem(QorLong id) const;
    CQorParameter<CStringW*>* GetCStringPtrItem(QorLong id) const;
    CQorParameter<COleDateTime*>* GetCOleDateTimePtrItem(QorLong id) const;
    CQorParameter<QorULong>* GetColorRefItem(QorLong id) const;
    ///@}

    /// A new storage with its parameter, in no list yet; the caller owns it. The parameter's name
    /// is the text numbered `id` of the current string table, which a rule module makes its own;
    /// empty when there is none. A type outside 1 to 8 shows a message and gives a storage of kind
    /// 0 without parameter.
    CQorParamStorage* CreateParamStorageObject(Type_e type, QorLong id, QorOperator_e op,
                                               QorParamType_e paramType, bool status, bool option);
    /// A new constraint, in no list yet; the caller owns it, and once it is in `m_Constraints`
    /// ClearConstraints deletes it.
    CQORConstraint* CreateConstraintObject(QORConstraintType_e type, CStringW value, bool status);
    /// Deletes and removes all constraints. The destructor does not: the owner of the rule calls
    /// this first.
    void ClearConstraints();

    ///@{
    /// The module that holds the rule, read and written.
    CStringW GetRuleModuleName() const;
    void SetRuleModuleName(CStringW& name);
    ///@}

    /// The number of the category whose text `m_csRuleCategory` is; -1 for an empty text and 6 for
    /// any other. 7, 11, 13 and 14 are never given.
    int GetRuleCategoryEnum();
    /// Stores the category's text in the user's language; empty for 11, 14 and what is outside 0 to
    /// 20.
    void SetRuleCategory(QORRuleCategory_e category);
    void SetRuleCategory(CStringW& category);  ///< Stores any text as it is.

    /// Appends an element named after the rule below `parent`; the caller owns the node. Null when
    /// a pointer is null. A rule name that makes no XML name raises _com_error.
    QorXMLNode* CreateRuleNode(QorXMLDocument* document, QorXMLNode* parent) const;

    CStringW m_csRuleName;             ///< By which rule files name it.
    CStringW m_csRuleDisplayName;      ///< As users read it.
    CStringW m_csRuleDescription;      ///< What it checks.
    CStringW m_csRuleSource;           ///< Where it comes from.
    CStringW m_csRuleCategory;         ///< Text of its category.
    CStringList m_lstCategories;       ///< Further categories.
    CStringW m_csRuleModuleName;       ///< The module that holds it.
    CStringW m_csRuleFileName;         ///< The script's file name in a script rule.
    CStringW m_csRuleBaseDescription;  ///< Description as read; not written.
    CStringList m_lstEngines;          ///< Paths of type library files in a script rule.
    CStringList m_lstDBModules;        ///< Database modules, for derived rules.
    CStringW m_csRuleExtra;            ///< For derived rules.
    QorLong m_lRuleKind = 0;           ///< For derived rules.
    QorLong m_lRuleStatus = 0;         ///< Whether it is on, as rule modules number it.
    QorLong m_lRuleSeverity = 0;       ///< How much it weighs, as rule modules number it.
    QorLong m_lRuleLifeStatus = 0;     ///< Where it is in its life, as rule modules number it.
    CQorArray<CQorParamStorage*> m_Parameters;  ///< Owned.
    CQorArray<CQORConstraint*> m_Constraints;   ///< Owned only by ClearConstraints.
    bool m_bPopulated = false;                  ///< An element was read to its end.
    CQorParameter<CQorRule*> m_RuleLinks;       ///< For derived rules; nothing in it is owned.
    std::uint64_t m_RuleTag = 0;                ///< Opaque.
    std::vector<std::shared_ptr<void>> m_RuleRecords;  ///< For derived rules.
    CStringW m_csRuleText1;                            ///< For derived rules, like the five below.
    CStringW m_csRuleText2;                            ///< For derived rules.
    CStringW m_csRuleText3;                            ///< For derived rules.
    CStringW m_csRuleText4;                            ///< For derived rules.
    CStringW m_csRuleText5;                            ///< For derived rules.
    CStringW m_csRuleText6;                            ///< For derived rules.
    QorLong m_lRuleValue = 0;                          ///< For derived rules.
    CStringW m_csModuleFileName;  ///< File name of the module that holds the rule.
    double m_dRuleValue = 0.0;    ///< For derived rules.
    bool m_bRuleFlag = false;     ///< For derived rules.
};
