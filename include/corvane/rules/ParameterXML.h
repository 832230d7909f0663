#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/rules/ParameterKinds.h>
#include <corvane/rules/QORCustomRuleData.h>
#include <corvane/text/CStringW.h>

class QorXMLNode;

namespace corvane {

namespace xml {
class Element;
}

/// Builds one `Parameter` element: the part of CQorParameter that is the same for every kind. What
/// is written comes in the order of the operations here. Text that XML refuses raises _com_error.
class CORVANE_EXPORT ParameterWriter {
public:
    /// What comes before the values. It refers to the name for the length of a call.
    struct Head {
        const CStringW& name;      ///< As users read it.
        QorLong number;            ///< The parameter's number.
        bool status;               ///< Whether it is on.
        QorOperator_e op;          ///< How its values are meant.
        QorParamType_e paramType;  ///< How the element holds them.
    };

    /// False when there is no current document to make a free element on.
    static bool canWrite();

    /// Makes a free element; needs a current document.
    ParameterWriter();
    /// Appends the element to a node; an empty one raises _com_error.
    explicit ParameterWriter(const QorXMLNode& parent);
    ParameterWriter(const ParameterWriter&) = delete;
    ParameterWriter& operator=(const ParameterWriter&) = delete;
    ~ParameterWriter();

    void addHead(const Head& head);                   ///< The attributes.
    void addText(std::u16string_view text);           ///< One `Value` element with that text.
    void addRecord(const QORCustomRuleData& record);  ///< One with attributes; none when empty.
    void addRemarks(const CStringW& remarks);         ///< The `Remarks` element.

    /// Hands out the free element; the caller owns it.
    QorXMLNode* release();

private:
    std::unique_ptr<QorXMLNode> free_;
    xml::Element& element_;
};

/// Reads one `Parameter` element. It must not outlive the tree, which must not change meanwhile.
class CORVANE_EXPORT ParameterReader {
public:
    /// Finds the first `Parameter` child with that number. An empty parent raises _com_error.
    ParameterReader(const QorXMLNode& parent, QorLong number);
    /// For an element that is found already; null for none.
    explicit ParameterReader(const xml::Element* parameter) : parameter_(parameter) {}

    bool found() const { return parameter_ != nullptr; }  ///< There is such an element.

    // What follows needs an element.

    QorOperator_e readOperator() const;    ///< 0 when it is missing or no number.
    QorParamType_e readParamType() const;  ///< 0 when it is missing or no number.
    bool readStatus() const;               ///< False for "0" alone.

    /// Goes to the first or the next `Value` element; false when there is none.
    bool nextValue();
    /// The text of the current `Value`, until the next call.
    std::u16string_view text();
    /// A new record of the attributes of the current `Value`.
    std::unique_ptr<QORCustomRuleData> record() const;

private:
    const xml::Element* parameter_;
    const xml::Element* value_ = nullptr;
    std::u16string buffer_;
};

}  // namespace corvane
