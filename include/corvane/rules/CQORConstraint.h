#pragma once

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorParamStorage.h>
#include <corvane/rules/QORConstraintType.h>
#include <corvane/text/CStringW.h>

class QorXMLNode;

/// A condition that a rule carries: a type, a value text, a status and parameters of its own.
///
/// A rule module creates it with CQorRule::CreateConstraintObject, adds its parameters to
/// `m_Parameters` and reads and writes it itself: the rule's own reading and writing leave
/// constraints alone. A parameter's number is looked up in the constraint only, so the rule may use
/// the same number.
///
/// The constraint owns its storages. **Copies** own clones of them, with everything that they hold,
/// so that a copy and its source can be destroyed in any order. The fields and their order are part
/// of the interface to rule modules.
class CORVANE_EXPORT CQORConstraint {
public:
    /// Without parameters.
    CQORConstraint(QORConstraintType_e type, const CStringW& value, bool status);
    CQORConstraint(CQORConstraint& source);
    virtual ~CQORConstraint();
    /// The storages that this constraint held before are deleted.
    CQORConstraint& operator=(const CQORConstraint& source);

    /// Reads type, value, status and the parameters in `m_Parameters` from the constraint's
    /// element, which stays the caller's. A missing attribute, or a type without a number, leaves
    /// its field alone; a status is true for "1" only. A null pointer does nothing; an empty node
    /// raises _com_error. At a storage of illegal kind a message is shown and reading ends.
    void PopulateFromXML(QorXMLNode*& node);

    /// A new element on the current document, attached to nothing; the caller owns it. Null when no
    /// document is set. Parameters of operator 0 and 12 are left out, and so are storages of
    /// illegal kind, each with a message. Text that XML cannot carry raises _com_error.
    QorXMLNode* GetXMLNode();

    /// The first storage with that number, which stays the constraint's, or null.
    CQorParamStorage* FindParameterInArray(QorLong id);

    QORConstraintType_e m_Type;                 ///< What the condition is about.
    CQorArray<CQorParamStorage*> m_Parameters;  ///< Owned.
    CStringW m_csValue;  ///< What it asks for, such as the name of a material.
    bool m_bStatus;      ///< Whether it is on.

private:
    void SetType(QorXMLNode*& node);
    void SetValue(QorXMLNode*& node);
    void SetStatus(QorXMLNode*& node);
    void PopulateParameters(QorXMLNode*& node);
};
