#pragma once

#include <corvane/base/Export.h>
#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLNode.h>

namespace corvane::xml {
class Document;
struct Access;
}  // namespace corvane::xml

/// One parsed or newly built XML document.
///
/// A load takes XML 1.0 with namespaces and refuses whatever is not well-formed. It reads no
/// external entity and no network address; a reference to an external or undeclared entity fails
/// the load. Entities and default attributes of an internal subset take effect, as long as they do
/// not make the document many times as large, and a document type is kept without its internal
/// subset. A declaration of one of the five predefined entities has no effect. There is no limit on
/// size but memory and 2 GB, and none on depth but that of the parser: from libxml2 2.13 on, 2,048
/// levels. What would take the parser the square of its size
/// is refused: more than 10,000 attributes on an element, 1,000 prefixes in scope, 100,000
/// different names, 20,000 declarations or 1,000 default attributes in a document type, or 500
/// tokens in an enumeration.
///
/// Memory that runs out raises kErrorOutOfMemory, out of a load too. Nothing is written to the
/// process's standard error.
///
/// A document whose parser cannot be made shows a message, stays alive *without parser* and raises
/// kErrorPointer from the operations that need one, as a copy-constructed document does.
///
/// Operations whose name ends in 1 take 8-bit text in the process's code page.
class CORVANE_EXPORT QorXMLDocument {
public:
    QorXMLDocument();
    /// Makes a document without parser; nothing is copied.
    QorXMLDocument(QorXMLDocument& ignored);
    /// Shares the source's parser, tree and root node from here on. What this document held before
    /// is dropped, its root node included, unless another document shares it.
    QorXMLDocument& operator=(QorXMLDocument& other);
    ~QorXMLDocument();

    /// @{
    /// Parses a file: UTF-8 with or without byte order mark, UTF-16 with one, or where it is
    /// declared US-ASCII, ISO-8859-1 or windows-1252. Gives the root node, which stays the
    /// document's and lives until the last document that shares it is gone, or null when the file
    /// is missing, unreadable or not well-formed; see XMLFault.h for the reason. A failed load
    /// leaves the document's tree empty and earlier root nodes valid.
    QorXMLNode* LoadFromFile(CStringW path);
    QorXMLNode* LoadFromFile1(const char* path);
    /// @}
    /// The same for a text, whose declared encoding is ignored unless it is unknown. A failed
    /// load gives the root node of the last successful load, if there was one.
    QorXMLNode* LoadFromXMLString(CStringW& text);

    /// @{
    /// A new element, attached to nothing. The caller deletes the node object. A name that is no
    /// XML name, or has a prefix other than "xml", raises kErrorFail.
    QorXMLNode* CreateNode(CStringW name);
    QorXMLNode* CreateNode1(const char* name);
    /// @}
    void DeleteNode(QorXMLNode*& node);  ///< Deletes it and sets the pointer to null.
    /// Makes the node's element the root of this document; null does nothing. A second root raises
    /// kErrorFail, an empty node kErrorInvalidArgument. The node object stays the caller's.
    void AppendNode(QorXMLNode* node);

    /// @{
    /// Writes the document as UTF-8, replacing the file as a whole. Always true; see
    /// corvane::SaveXML for whether it was written.
    bool Save(CStringW path);
    bool Save1(const char* path);
    /// @}

    /// The element of the root node of the last successful load serialised, without prolog,
    /// wherever it is now; before any load the root element of the tree, or "" when there is
    /// none.
    CStringW GetXML() const;

private:
    friend struct corvane::xml::Access;

    corvane::xml::Document* m_pDocument = nullptr;
    corvane::xml::Element* m_pRootElement = nullptr;
    QorXMLNode* m_pRootNode = nullptr;
};
