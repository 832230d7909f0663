// A document, and after a line "%%" what is done with it, a line each:
//   q QUERY      looks at all matches below the current element
//   s QUERY      makes the first match the current element
//   n NAME       appends a new element and makes it the current one
//   a NAME TEXT  adds an attribute
//   v TEXT       sets the text
//   m QUERY      moves the first match below the current element
//   c            appends a copy of the current element to itself
//   r            takes the current element out of its parent, which becomes the current one
// A plain document is what the general parser reads. A document is the same after it has been saved
// and loaded, before and after all that.

#include <memory>
#include <vector>

#include <corvane/platform/ComError.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Fuzz.h"
#include "support/BothParsers.h"

namespace {

using NodePtr = std::unique_ptr<QorXMLNode>;

const fuzz::Folder& folder() {
    static const fuzz::Folder folder;
    return folder;
}

void expectSameAfterSaving(QorXMLDocument& document) {
    const CStringW before = document.GetXML();
    fuzz::require(corvane::SaveXML(document, folder().wide("saved")), "a document can be saved");
    QorXMLDocument again;
    fuzz::require(again.LoadFromFile(folder().wide("saved")), "what was saved can be loaded");
    fuzz::require(again.GetXML() == before, "what was saved is what was there");
    CStringW text = before;
    QorXMLDocument fromText;
    fuzz::require(fromText.LoadFromXMLString(text), "the text of an element can be loaded");
    fuzz::require(fromText.GetXML() == before, "the text of an element is its text");
}

// Uses every match, so that one that is not there is noticed.
void lookAt(const QorXMLNode& node, const CStringW& query) {
    std::unique_ptr<QorXMLNodeList> list(node.GetNodeList(query));
    for (QorLong i = 0; i < list->GetSize(); ++i) {
        const QorXMLNode& match = *(*list)[i];
        double number = 0;
        if (match.GetNodeName().IsEmpty()) continue;
        match.GetNodeValueInDouble(number);
        const NodePtr parent(match.GetParentNode());
    }
    const NodePtr first(node.GetNodeFromXPath(query));
    fuzz::require((first != nullptr) == (list->GetSize() > 0), "both queries find the same");
}

/// How many matches each query of the commands has below the root.
std::vector<QorLong> matches(const QorXMLNode& root, std::string_view commands) {
    std::vector<QorLong> counts;
    while (!commands.empty() && counts.size() < 12) {
        std::string_view line = fuzz::take(commands, '\n');
        const std::string_view command = fuzz::take(line, ' ');
        if (command != "q" && command != "s" && command != "m") continue;
        try {
            const std::unique_ptr<QorXMLNodeList> list(root.GetNodeList(CStringW::FromUtf8(line)));
            counts.push_back(list->GetSize());
        } catch (const _com_error&) {
            counts.push_back(-1);
        }
    }
    return counts;
}

/// A document answers as it does after it has been saved and loaded.
void expectSameAnswers(QorXMLDocument& document, const QorXMLNode& root,
                       std::string_view commands) {
    CStringW text = document.GetXML();
    QorXMLDocument again;
    const QorXMLNode* const loaded = again.LoadFromXMLString(text);
    fuzz::require(loaded && matches(root, commands) == matches(*loaded, commands),
                  "queries find the same after loading");
}

void step(QorXMLDocument& document, NodePtr& current, std::string_view line) {
    const std::string_view command = fuzz::take(line, ' ');
    const auto text = [&] { return CStringW::FromUtf8(line); };
    if (command == "q") {
        lookAt(*current, text());
    } else if (command == "s") {
        if (NodePtr match(current->SelectSingleNode(text())); match) current = std::move(match);
    } else if (command == "n") {
        if (NodePtr made(current->AppendNode(text(), &document)); made) current = std::move(made);
    } else if (command == "a") {
        const CStringW name = CStringW::FromUtf8(fuzz::take(line, ' '));
        current->AddAttribute(name, text());
        CStringW value;
        fuzz::require(current->GetAttributeValue(name, value) && value == text(),
                      "an attribute has the value that it was given");
    } else if (command == "v") {
        current->SetNodeValue(text());
        fuzz::require(current->GetNodeValue() == text(),
                      "an element has the text that it was given");
    } else if (command == "m") {
        if (const NodePtr match(current->SelectSingleNode(text())); match)
            current->AppendNode(match.get());
    } else if (command == "c") {
        const NodePtr copy(current->CloneNode());
        fuzz::require(copy->GetXML() == current->GetXML(), "a copy is what it was copied from");
        current->AppendNode(copy.get());
    } else if (command == "r") {
        NodePtr parent(current->GetParentNode());
        if (parent && parent->RemoveChild(current.get())) current = std::move(parent);
    }
}

void edit(QorXMLDocument& document, QorXMLNode& root, std::string_view commands) {
    NodePtr current = std::make_unique<QorXMLNode>(root);
    // Each copy may double the document.
    for (int left = 12; left > 0 && !commands.empty(); --left) {
        try {
            step(document, current, fuzz::take(commands, '\n'));
        } catch (const _com_error&) {
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    const auto [source, commands] = fuzz::parted(fuzz::textOf(data, size));
    if (const std::string other = forGeneralParser(source); !other.empty())
        fuzz::require(treeOf(source) == treeOf(other), "both parsers read the same");
    folder().write("source", source);
    QorXMLDocument document;
    QorXMLNode* const root = document.LoadFromFile(folder().wide("source"));
    fuzz::require((root == nullptr) != corvane::LastXMLFault(document).message.IsEmpty(),
                  "a load that fails says why");
    if (!root) return 0;
    expectSameAfterSaving(document);
    edit(document, *root, commands);
    expectSameAfterSaving(document);
    expectSameAnswers(document, *root, commands);
    return 0;
}
