#include "xml/Construction.h"

#include <utility>

#include "xml/Failure.h"
#include "xml/Names.h"
#include "xml/Namespaces.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

bool wouldMakeCycle(const Element& parent, const Element& child) {
    if (&parent == &child) return true;
    // What has no child stands above nothing: new elements need no walk up from a deep place.
    if (!child.firstChild) return false;
    const Element* at = &parent;
    while (at && at != &child)
        at = at->parent;
    return at;
}

}  // namespace

Element* makeElement(std::u16string_view name, const Element* scope) {
    require(isQualifiedName(name) && isPrefixInScope(scope, prefixOf(name)));
    Text own = Text::own(name);
    auto* element = makeNode<Element>(nullptr, Kind::Element);
    element->name = std::move(own);
    return element;
}

void appendElement(Element& parent, Element& child) {
    if (parent.kind == Kind::Document) {
        const Element* root = elementFrom(parent.firstChild);
        if (root == &child) return;
        require(!root);
    }
    require(!wouldMakeCycle(parent, child));
    if (child.parent) removeElement(child);
    link(parent, child);
}

void removeElement(Element& child) {
    keepNamespaces(child);
    unlink(child);
}

}  // namespace corvane::xml
