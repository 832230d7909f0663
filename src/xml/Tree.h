#pragma once

#include "xml/Node.h"

namespace corvane::xml {

/// How long elements live. An element is *held* by each handle on it and by each child that is held
/// itself, so a held element holds all that are above it. When the hold of a top element ends, it
/// goes with all that is below it.
void hold(Element* element) noexcept;
void release(Element* element) noexcept;

/// A new element in the pool, or on the heap when that is null, with a name that lies there too;
/// not held. The second one copies the name.
Element* makeElement(Pool* pool, Kind kind, const Name* name);
Element* makeElement(Pool* pool, std::u16string_view name);

/// Makes the node of a text that is the only content of an element and has none yet. Nothing else
/// changes, so code that only reads may do it too. It throws nothing but std::bad_alloc.
void expand(Element& element);

/// Appends a node that has no parent to the children of `parent`. `attach` does it for a tree that
/// is being made, where nothing is held and white space is known; the node lies in its pool, and no
/// text of the parent is without node. `link` throws nothing but what `expand` does, and before it
/// changes anything.
void attach(Element& parent, Node& node) noexcept;
void link(Element& parent, Node& node);
/// Takes a node out of its parent. A node that is held lives on, and its former parent may go.
void unlink(Node& node) noexcept;

/// Drops all children; those that are held live on as tops of their own.
void clearContent(Element& element);

/// Frees a node without parent and all below it; none of them is held.
void destroy(Node* top) noexcept;

/// The node that comes after `at` in document order below `top`, its children included; null at the
/// end. Texts that have no node are passed over.
inline const Node* following(const Node* at, const Node* top) {
    if (isParent(*at) && asElement(at)->firstChild()) return asElement(at)->firstChild();
    while (at != top && !at->next)
        at = at->parent;
    return at == top ? nullptr : at->next;
}

/// The first element at or after `node` among its siblings.
inline const Element* elementFrom(const Node* node) {
    while (node && !node->isElement())
        node = node->next;
    return asElement(node);
}
/// The same for the elements of one name, prefix included.
inline const Element* elementFrom(const Node* node, std::u16string_view name) {
    while (node && !(node->isElement() && asElement(node)->name->is(name)))
        node = node->next;
    return asElement(node);
}

/// A deep copy of the element, without parent.
Element* clone(const Element& source);

}  // namespace corvane::xml
