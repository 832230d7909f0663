#include "xml/Tree.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "xml/Attributes.h"
#include "xml/Namespaces.h"

namespace corvane::xml {
namespace {

void freeNode(Node* node) noexcept {
    if (!isParent(*node)) {
        if (!node->pooled) ::operator delete(node);
        return;
    }
    Element* element = asElement(node);
    dropAttributes(*element);
    if (Pool* pool = element->pool()) {
        pool->release();
        return;
    }
    if (element->name) Name::drop(element->name);
    delete element;
}

bool isHeld(const Node& node) {
    return node.isElement() && asElement(&node)->holds > 0;
}

// Where a child lies, or is to lie.
const Pool* poolOf(const Node& node, const Element& parent) {
    if (isParent(node)) return asElement(&node)->pool();
    return node.pooled ? parent.pool() : nullptr;
}

// The tree of a pool is no longer what was made there.
void noteChange(const Element& element) noexcept {
    if (element.pool()) element.pool()->unseal();
}

// True when the node went with all that is below it.
bool dropWhole(Node* node) noexcept {
    if (!isParent(*node)) return false;
    Pool* pool = asElement(node)->pool();
    if (!pool || !pool->isWhole(node)) return false;
    pool->dropWhole();
    return true;
}

}  // namespace

CharacterData* CharacterData::make(Pool* pool, Kind kind, std::u16string_view text, RawEnds raw) {
    const std::size_t size = sizeof(CharacterData) + text.size() * sizeof(char16_t);
    void* place = pool ? pool->allocate(size, alignof(CharacterData)) : ::operator new(size);
    auto* made = new (place) CharacterData(kind, text, raw);
    made->pooled = pool != nullptr;
    return made;
}

Element* makeElement(Pool* pool, Kind kind, const Name* name) {
    Element* made = pool ? new (pool->allocate(sizeof(Element), alignof(Element))) Element(kind)
                         : new Element(kind);
    made->name = name;
    if (!pool) return made;
    made->pooled = true;
    pool->hold();
    return made;
}

Element* makeElement(Pool* pool, std::u16string_view name) {
    if (pool) return makeElement(pool, Kind::Element, pool->name(name));
    std::unique_ptr<const Name, NameDrop> own(Name::make(name));
    Element* made = makeElement(nullptr, Kind::Element, own.get());
    static_cast<void>(own.release());
    return made;
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
    node.next = nullptr;
    Node* first = parent.firstChild();
    if (!first) {
        parent.setFirstChild(&node);
        node.ringPrevious = &node;
        return;
    }
    node.ringPrevious = first->ringPrevious;
    node.ringPrevious->next = &node;
    first->ringPrevious = &node;
}

void expand(Element& element) {
    const Text* const text = element.onlyText();
    if (!text) return;
    CharacterData* node =
        CharacterData::make(element.pool(), Kind::Text, text->view(), text->raw());
    node->order = element.order + 1;
    element.setFirstChild(nullptr);
    attach(element, *node);
}

void link(Element& parent, Node& node) {
    expand(parent);
    if (!parent.pool() || poolOf(node, parent) != parent.pool()) noteChange(parent);
    attach(parent, node);
    // White space stays where it was in the source: after what was the last child.
    node.blankBefore = parent.blankAtEnd;
    parent.blankAtEnd = false;
    if (isHeld(node)) hold(&parent);
}

void unlink(Node& node) noexcept {
    Element* parent = node.parent;
    noteChange(*parent);
    Node* first = parent->firstChild();
    if (node.next)
        node.next->ringPrevious = node.ringPrevious;
    else
        first->ringPrevious = node.ringPrevious;
    if (&node == first)
        parent->setFirstChild(node.next);
    else
        node.ringPrevious->next = node.next;
    node.parent = nullptr;
    node.ringPrevious = nullptr;
    node.next = nullptr;
    if (isHeld(node)) release(parent);
}

void clearContent(Element& element) {
    for (Node* child = element.firstChild(); child; child = child->next) {
        if (isHeld(*child)) keepNamespaces(*asElement(child));
    }
    element.blankAtEnd = false;
    while (Node* child = element.firstChild()) {
        unlink(*child);
        if (!isHeld(*child)) destroy(child);
    }
    element.setFirstChild(nullptr);
}

void destroy(Node* top) noexcept {
    Node* at = top;
    while (true) {
        Element* parent = at->parent;
        Node* next = at->next;
        const bool last = at == top;
        if (!dropWhole(at)) {
            if (isParent(*at) && asElement(at)->firstChild()) {
                at = asElement(at)->firstChild();
                continue;
            }
            freeNode(at);
        }
        if (last) return;
        parent->setFirstChild(next);
        at = next ? next : parent;
    }
}

namespace {

Node* copyNode(Pool& pool, const Node& source) {
    if (!source.isElement()) {
        const CharacterData* data = asData(&source);
        return CharacterData::make(&pool, source.kind, data->text(), data->content().raw());
    }
    const Element* element = asElement(&source);
    Element* copy = makeElement(&pool, element->name->view());
    if (const Text* text = element->onlyText())
        copy->setOnlyText(Text::makeIn(pool, text->view(), text->raw()));
    copy->line = element->line;
    copy->blankAtEnd = element->blankAtEnd;
    const auto attributes = attributesOf(*element);
    reserveAttributes(*copy, attributes.size());
    for (const Attribute& at : attributes)
        appendAttribute(*copy, at.name->view(), at.value());
    return copy;
}

struct Destroyer {
    void operator()(Element* top) const { destroy(top); }
};

}  // namespace

Element* clone(const Element& source) {
    const PoolUse pool;
    // Goes with all that has been copied when memory ends.
    std::unique_ptr<Element, Destroyer> top(asElement(copyNode(*pool.get(), source)));
    const Node* from = &source;
    Node* copy = top.get();
    while (const Node* next = following(from, &source)) {
        if (next->parent != from) {
            for (; from->parent != next->parent; from = from->parent)
                copy = copy->parent;
            copy = copy->parent;
        }
        Element* parent = asElement(copy);
        copy = copyNode(*pool.get(), *next);
        copy->blankBefore = next->blankBefore;
        attach(*parent, *copy);
        from = next;
    }
    copyNamespaces(source, *top);
    pool.get()->seal(top.get());
    return top.release();
}

}  // namespace corvane::xml
