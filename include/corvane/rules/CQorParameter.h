#pragma once

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

#include <corvane/base/Types.h>
#include <corvane/rules/CQorArray.h>
#include <corvane/rules/CQorDataTypeConverter.h>
#include <corvane/rules/ParameterKinds.h>
#include <corvane/rules/ParameterXML.h>
#include <corvane/text/CStringW.h>

class QorXMLNode;

namespace corvane {

/// True for the value types that are pointers to objects, which assignment clones.
template <typename T>
inline constexpr bool kClonedValue =
    std::is_same_v<T, CStringW*> || std::is_same_v<T, COleDateTime*> ||
    std::is_same_v<T, QORCustomRuleData*>;

/// A new object equal to `*value`, owned by the caller; null for null.
template <typename Object>
Object* cloneValue(const Object* value) {
    return value ? std::make_unique<Object>(*value).release() : nullptr;
}

/// What a parameter owns of its scalar: the clone that assignment made, if any.
template <typename T>
struct ScalarClone {};
/// That of the types that are cloned.
template <typename T>
requires(kClonedValue<T>) struct ScalarClone<T> {
    std::unique_ptr<std::remove_pointer_t<T>> object;  ///< Null before an assignment.
};

}  // namespace corvane

/// One typed setting of a rule or a constraint: a name, an operator, a list of values.
///
/// T is int, QorLong, bool, double, CStringW*, COleDateTime*, QorULong or QORCustomRuleData*, the
/// kinds of Type_e, or CQorRule*, whose pointers nothing owns. Values of the first three pointer
/// types belong to the CQorParamStorage of the parameter, are allocated with `new` and may be null;
/// the destructor does not touch them.
///
/// The fields and their order are part of the interface to rule modules.
template <typename T>
class CQorParameter {
public:
    /// No values. The constructor says nothing of the number, which starts as 0.
    CQorParameter(CStringW name, QorOperator_e op, QorParamType_e paramType, bool status)
        : m_csName(std::move(name)), m_Operator(op), m_ParamType(paramType), m_bStatus(status) {}
    virtual ~CQorParameter() = default;
    CQorParameter(const CQorParameter&) = delete;

    /// Takes over everything but the number and the mode. Pointer values are cloned, so the two
    /// parameters share none: the old values are deleted.
    ///
    /// The clone of a scalar belongs to this parameter, which deletes it at the next assignment or
    /// with itself, whatever `m_Scalar` holds by then. A scalar that a rule module stores stays the
    /// module's, except that assignment deletes the old scalar of a date.
    CQorParameter& operator=(const CQorParameter& source);

    /// Copies this parameter over `target` and says whether `target` differed: in operator, in
    /// status, in the number of values or in a value. Texts differ by case too, a NaN from
    /// everything, records by their length alone, and null from any other pointer. For bool and
    /// date nothing is copied and the result is false.
    bool UpdateTarget(CQorParameter& target) const;

    /// Builds the parameter's element on the current document; see <corvane/xml/CurrentDocument.h>.
    /// The caller owns the node, which is attached to nothing. Null when no document is set.
    ///
    /// An operator of QorOperator_Grouped with a number of values that is neither a multiple of 3
    /// nor of 2 first loses its values, here and in the element. A value that the element cannot
    /// carry raises _com_error.
    QorXMLNode* GetXMLNode();
    /// The same as the last child of `parent`; an empty node raises _com_error. When a value is
    /// refused, what was written before it stays there.
    void AppendXMLNode(const QorXMLNode& parent);

    /// Reads the first `Parameter` child of `parent` that has this parameter's number; without one,
    /// and with null, nothing changes. An empty node raises _com_error. Operator, parameter type
    /// and status are replaced, values are added after those that are there. Name and remarks are
    /// never read. `parent` stays the caller's.
    void PopulateFromXML(QorXMLNode* parent);
    /// The same from an element that is found already.
    void PopulateFromXML(corvane::ParameterReader& reader);

    CStringW m_csName;           ///< Name, as users read it.
    QorOperator_e m_Operator;    ///< How the values are meant.
    CQorArray<T> m_Values;       ///< The values; see above for who owns what they point to.
    QorParamType_e m_ParamType;  ///< How the element holds the values.
    CStringW m_csRemarks;        ///< Written to XML and never read back.
    QorLong m_lType = 0;         ///< The parameter's number, equal to `m_lId` of its storage.
    T m_Scalar{};                ///< One more value for rule modules; never written to XML.
    QorLong m_lMode = 2;         ///< For rule modules.
    bool m_bStatus;              ///< Whether the parameter is on.

private:
    void releaseValues();
    void assignScalar(const CQorParameter& source);
    static bool differ(const T& a, const T& b);
    void dropBrokenGroup();
    void writeTo(corvane::ParameterWriter& writer);

    [[no_unique_address]] corvane::ScalarClone<T> scalarClone_;
};

#include <corvane/rules/CQorParameterDefinition.h>
