#include "xml/Tree.h"

#include <utility>

#include "xml/Attributes.h"
#include "xml/DocumentNode.h"
#include "xml/Namespaces.h"
#include "xml/Shadow.h"

namespace corvane::xml {
namespace {

template <typename Made>
void freeAs(Node* node) noexcept {
    auto* made = static_cast<Made*>(node);
    Pool* pool = made->pool;
    if (!pool) {
        delete made;
        return;
    }
    made->~Made();
    pool->release();
}

void freeNode(Node* node) noexcept {
    switch (node->kind) {
        case Kind::Document:
            freeAs<DocumentNode>(node);
            break;
        case Kind::Element:
            dropAttributes(*asElement(node));
            freeAs<Element>(node);
            break;
        default:
            freeAs<CharacterData>(node);
            break;
    }
}

bool isHeld(const Node& node) {
    return node.isElement() && asElement(&node)->holds > 0;
}

}  // namespace

void noteChange(Element& element) noexcept {
    // While a shadow stands, every element that it shows is marked, so the first one without a mark
    // ends the way up: many changes in a deep tree clear each mark once.
    Element* at = &element;
    for (; at->kind != Kind::Document; at = at->parent) {
        if (!std::exchange(at->shadowed, false) || !at->parent) return;
    }
    static_cast<DocumentNode*>(at)->shadow.reset();
}

void hold(Element* element) noexcept {
    while (element && element->holds++ == 0)
        element = element->parent;
}

void release(Element* element) noexcept {
    while (element && --element->holds == 0) {
        if (!element->parent) {
            destroy(element);
            return;
        }
        element = element->parent;
    }
}

void attach(Element& parent, Node& node) noexcept {
    node.parent = &parent;
    node.previous = parent.lastChild;
    (parent.lastChild ? parent.lastChild->next : parent.firstChild) = &node;
    parent.lastChild = &node;
}

void link(Element& parent, Node& node) noexcept {
    noteChange(parent);
    attach(parent, node);
    // White space stays where it stood in the source: behind what was the last child.
    node.blankBefore = parent.blankAtEnd;
    parent.blankAtEnd = false;
    if (isHeld(node)) hold(&parent);
}

void unlink(Node& node) noexcept {
    Element* parent = node.parent;
    noteChange(*parent);
    (node.previous ? node.previous->next : parent->firstChild) = node.next;
    (node.next ? node.next->previous : parent->lastChild) = node.previous;
    node.parent = nullptr;
    node.previous = nullptr;
    node.next = nullptr;
    if (isHeld(node)) release(parent);
}

void clearContent(Element& element) {
    for (Node* child = element.firstChild; child; child = child->next) {
        if (isHeld(*child)) keepNamespaces(*asElement(child));
    }
    element.blankAtEnd = false;
    while (Node* child = element.firstChild) {
        unlink(*child);
        if (!isHeld(*child)) destroy(child);
    }
}

void destroy(Node* top) noexcept {
    Node* at = top;
    while (true) {
        while (at->kind <= Kind::Element && asElement(at)->firstChild)
            at = asElement(at)->firstChild;
        Element* parent = at->parent;
        Node* next = at->next;
        const bool last = at == top;
        freeNode(at);
        if (last) return;
        parent->firstChild = next;
        at = next ? next : parent;
    }
}

}  // namespace corvane::xml
