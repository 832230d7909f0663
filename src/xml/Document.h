#pragma once

#include <deque>
#include <memory>
#include <string_view>

#include <corvane/platform/Unknown.h>
#include <corvane/xml/QorXMLNode.h>

#include "xml/Failure.h"
#include "xml/Node.h"

namespace corvane::xml {

/// What a QorXMLDocument has when it is not without parser: the tree of its last load or of what
/// was appended to it, and the root nodes that its loads have handed out. Documents that share it
/// count their shares.
class Document {
public:
    Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    void share() { ++shares_; }
    void drop() {
        if (--shares_ == 0) delete this;
    }

    /// Replaces the tree; a failure leaves an empty one and a fault.
    bool loadFile(std::u16string_view path);
    bool loadText(std::u16string_view text);
    bool save(std::u16string_view path) const;

    Element& tree() const { return *tree_; }
    Element* root() const;  ///< The document element, or null.
    const Fault& fault() const { return fault_; }

    /// A node for the document element that lives as long as this object.
    QorXMLNode* addRootNode();

private:
    ~Document();
    bool load(Fault fault, std::string_view utf8);
    void replaceTree(Element* tree);

    std::size_t shares_ = 0;
    std::deque<QorXMLNode> rootNodes_;
    Element* tree_;  // After all that can fail to be made, since nothing would free it.
    Fault fault_;
};

/// Makes a document for a QorXMLDocument, with one share. Gives a failure code when it cannot.
using DocumentFactory = HResult (*)(Document*& made);

/// Replaces what makes documents, and hands out the former factory.
DocumentFactory setDocumentFactory(DocumentFactory factory);
HResult makeDocument(Document*& made);

}  // namespace corvane::xml
