#pragma once

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/platform/ComError.h>
#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLNodeList.h>

class QorXMLDocument;

namespace corvane::xml {
class Element;
struct Access;
}  // namespace corvane::xml

/// A counted reference to one element of an XML tree, or an *empty* node that refers to none.
///
/// **Life.** The element lives while its tree or any node object refers to it, so a node may
/// outlive its document, and so do the elements above it. Deleting a node object leaves the element
/// in its tree. A tree and all nodes of it belong to one thread at a time.
///
/// **Ownership.** The caller that gets a QorXMLNode* or a QorXMLNodeList* from an operation deletes
/// it, with DeleteNode, DeleteNodeList or a plain delete.
///
/// **Failure.** What is merely missing gives null or false. Everything else raises `_com_error`:
/// kErrorPointer for an operation on an empty node (unless it says otherwise), kErrorOutOfMemory
/// when memory runs out, kErrorFail for a query that is no XPath 1.0 or does not select nodes, for
/// a name that is no XML name, for text that XML cannot carry (control characters, lone surrogates,
/// U+FFFE, U+FFFF) and for an append that would make a cycle or a second root. A refused operation
/// changes nothing.
///
/// **Names.** A name is compared as it is written, prefix included. A prefix other than "xml" has
/// to be declared in scope by an "xmlns:" attribute before a name may use it. An element that
/// leaves its parent takes the declarations along that it needs.
///
/// **White space.** A load drops text of nothing but blanks, tabs and line ends; the text of an
/// element leaves out such characters at its two ends if they were unescaped in the source.
/// White space written as a reference, in a CDATA section or under xml:space="preserve" is kept,
/// and so is text that an operation sets, to the last character, through saving and loading too.
///
/// Operations whose name ends in 1 take 8-bit text in the process's code page; a null pointer
/// counts as the empty text.
class CORVANE_EXPORT QorXMLNode {
public:
    QorXMLNode() noexcept = default;
    QorXMLNode(const QorXMLNode& other) noexcept;             ///< Shares the element.
    QorXMLNode& operator=(const QorXMLNode& other) noexcept;  ///< Shares the element.
    ~QorXMLNode();

    ///@{
    /// One entry for each match of an XPath 1.0 query relative to this element, in document order;
    /// a match that is no element is an empty node. Never null. Unprefixed names match whatever
    /// default namespace is in force, prefixes match as they are written. A query may have 65,536
    /// characters and brackets 64 deep, and may pass 10 million nodes and 32 times as many as the
    /// tree has; one that is longer, deeper or slower raises kErrorFail. Queries that look for one
    /// node, by its name, its place or a value, stop when they have found it.
    QorXMLNodeList* GetNodeList(CStringW query) const;
    QorXMLNodeList* GetNodeList1(const char* query) const;
    ///@}
    /// One entry for each child of any kind; a child that is no element is an empty node.
    QorXMLNodeList* GetChildNodes() const;
    /// The first match, an empty node when that is no element, or null when nothing matches.
    QorXMLNode* GetNodeFromXPath(CStringW query) const;
    /// The first match when that is an element, else null.
    QorXMLNode* SelectSingleNode(CStringW query) const;
    /// The element that holds this one, or null.
    QorXMLNode* GetParentNode() const;
    /// A deep copy of the element, attached to nothing.
    QorXMLNode* CloneNode() const;

    /// The name without its prefix; "" for an empty node.
    CStringW GetNodeName() const;

    /// True and the attribute's text, or false with `value` untouched when it does not exist.
    bool GetAttributeValue(CStringW name, CStringW& value) const;
    /// The same with a new array, which the caller frees with delete[].
    bool GetAttributeValue1(const char* name, char*& value) const;
    /// Changes an attribute that exists; false, and nothing is added, when it does not.
    bool SetAttributeValue(CStringW name, CStringW value);
    ///@{
    /// Adds the attribute after the others or overwrites its value. True. An element has at most
    /// 10,000 attributes, and 1,000 declarations of prefixes in scope.
    bool AddAttribute(CStringW name, CStringW value);
    bool AddAttribute1(const char* name, const char* value);
    ///@}

    /// The text of the element and of all below it; "" for an empty node.
    CStringW GetNodeValue() const;
    bool GetNodeValueInCString(CStringW& value) const;  ///< GetNodeValue; always true.
    ///@{
    /// The number at the start of the text, after white space; what follows it is ignored. False,
    /// with `value` untouched, when there is something else; true, untouched, when there is
    /// nothing but white space and for an empty node. A number beyond 32 bits wraps.
    bool GetNodeValueInInt(int& value) const;
    bool GetNodeValueInLong(QorLong& value) const;
    ///@}
    bool GetNodeValueInDouble(double& value) const;  ///< The same for a floating-point number.
    /// False for exactly "0", true for every other text. Always true.
    bool GetNodeValueInBool(bool& value) const;
    /// Replaces all content of the element by the text.
    void SetNodeValue(CStringW text);

    /// The element serialised, without prolog; "" for an empty node. Line breaks are where the
    /// source of a loaded element had white space; nothing else is indented.
    CStringW GetXML() const;

    /// Makes an element on the current document (see CurrentDocument.h) and appends it below this
    /// one. Null, with nothing done, when there is no current document.
    QorXMLNode* AppendNode(CStringW name);
    /// The same on the given document; null when that is null.
    QorXMLNode* AppendNode(CStringW name, QorXMLDocument* document);
    /// Moves the node's element, wherever it was, below this one, after its other children.
    /// A null pointer does nothing; an empty node raises kErrorInvalidArgument. The node object
    /// stays the caller's.
    void AppendNode(QorXMLNode* node);
    /// Takes the node's element out of this one. False for a null pointer; raises
    /// kErrorInvalidArgument when it is no child of this element. The node object stays the
    /// caller's and still holds the element.
    bool RemoveChild(QorXMLNode* node);

    static void DeleteNodeList(
        QorXMLNodeList*& list);                 ///< Deletes it and sets the pointer to null.
    static void DeleteNode(QorXMLNode*& node);  ///< Deletes it and sets the pointer to null.

private:
    friend struct corvane::xml::Access;

    corvane::xml::Element* m_pElement = nullptr;
};
