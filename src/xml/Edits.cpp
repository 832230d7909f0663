#include "xml/Edits.h"

#include <memory>

#include "xml/Attributes.h"
#include "xml/Failure.h"
#include "xml/Limits.h"
#include "xml/Names.h"
#include "xml/Namespaces.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

bool wouldMakeCycle(const Element& parent, const Element& child) {
    if (&parent == &child) return true;
    // What has no child is above nothing: new elements need no walk up from a deep place.
    if (!child.firstChild()) return false;
    const Element* at = &parent;
    while (at && at != &child)
        at = at->parent;
    return at;
}

struct NodeDrop {
    void operator()(Node* node) const { destroy(node); }
};

}  // namespace

Element* makeFreeElement(std::u16string_view name, const Element* scope) {
    require(isQualifiedName(name) && isPrefixInScope(scope, prefixOf(name)));
    return makeElement(nullptr, name);
}

void appendElement(Element& parent, Element& child) {
    if (parent.kind == Kind::Document) {
        const Element* root = elementFrom(parent.firstChild());
        if (root == &child) return;
        require(!root);
    }
    require(!wouldMakeCycle(parent, child));
    expand(parent);  // Nothing has changed yet if memory runs out.
    if (child.parent) removeElement(child);
    link(parent, child);
}

void removeElement(Element& child) {
    keepNamespaces(child);
    unlink(child);
}

void changeAttribute(Element& element, std::u16string_view name, std::u16string_view value) {
    require(isCarriable(value));
    if (!findAttribute(element, name)) {
        require(isQualifiedName(name) && attributesOf(element).size() < kMostAttributes);
        require(!isDeclaration(name) || prefixesInScope(element) < kMostPrefixes);
    }
    require(isAttributeAllowed(element, name, value));
    setAttribute(element, name, value);
}

void changeText(Element& element, std::u16string_view text) {
    require(isCarriable(text));
    std::unique_ptr<CharacterData, NodeDrop> node;
    if (!text.empty()) node.reset(CharacterData::make(nullptr, Kind::Text, text));
    clearContent(element);
    if (node) link(element, *node.release());
}

}  // namespace corvane::xml
