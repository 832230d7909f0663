#include "xml/Document.h"

#include <limits>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "system/Files.h"
#include "xml/Access.h"
#include "xml/Encoding.h"
#include "xml/Parser.h"
#include "xml/Serializer.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

constexpr std::size_t kLargestDocument = std::numeric_limits<int>::max() - 1;

HResult makeSharedDocument(Document*& made) {
    try {
        made = new Document;
        made->share();
        return kOk;
    } catch (const std::bad_alloc&) {
        return kErrorOutOfMemory;
    }
}

DocumentFactory documentFactory = makeSharedDocument;

Element* emptyTree() {
    Element* tree = makeElement(nullptr, Kind::Document, nullptr);
    hold(tree);
    return tree;
}

}  // namespace

DocumentFactory setDocumentFactory(DocumentFactory factory) {
    return std::exchange(documentFactory, factory);
}

HResult makeDocument(Document*& made) {
    return documentFactory(made);
}

Document::Document() : tree_(emptyTree()) {}

Document::~Document() {
    rootNodes_.clear();
    release(tree_);
}

void Document::replaceTree(Element* tree) {
    release(std::exchange(tree_, tree));
}

Element* Document::root() const {
    return const_cast<Element*>(elementFrom(tree_->firstChild()));
}

bool Document::load(Fault fault, std::string_view utf8) {
    fault_ = std::move(fault);
    replaceTree(emptyTree());
    if (fault_) return false;
    Element* tree = nullptr;
    fault_ = parse(utf8, tree);
    if (fault_) return false;
    hold(tree);
    replaceTree(tree);
    return true;
}

bool Document::loadFile(std::u16string_view path) {
    const std::optional<std::string> bytes = system::readFile(path, kLargestDocument);
    if (!bytes) return load({0, 0, "The file cannot be read"}, {});
    Decoded decoded = decodeFile(*bytes);
    return load(std::move(decoded.fault), decoded.text());
}

bool Document::loadText(std::u16string_view text) {
    Decoded decoded = decodeText(text);
    return load(std::move(decoded.fault), decoded.text());
}

bool Document::save(std::u16string_view path) const {
    return root() && system::replaceFile(path, [this](const system::ByteSink& sink) {
               return serializeFile(*tree_, sink);
           });
}

QorXMLNode* Document::addRootNode() {
    rootNodes_.push_back(Access::node(root()));
    return &rootNodes_.back();
}

}  // namespace corvane::xml
