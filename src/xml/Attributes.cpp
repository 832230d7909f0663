#include "xml/Attributes.h"

#include "xml/Tree.h"

namespace corvane::xml {
namespace {

void linkAttribute(Element& element, Attribute* attribute) {
    Attribute*& end = element.lastAttribute ? element.lastAttribute->next : element.firstAttribute;
    end = attribute;
    element.lastAttribute = attribute;
}

}  // namespace

Attribute* findAttribute(const Element& element, std::u16string_view name) {
    Attribute* at = element.firstAttribute;
    while (at && at->name.view() != name)
        at = at->next;
    return at;
}

void appendAttribute(Element& element, Text name, Text value) {
    Pool* pool = element.pool;
    Attribute* made = pool ? new (pool->allocate(sizeof(Attribute), alignof(Attribute))) Attribute
                           : new Attribute;
    made->pooled = pool != nullptr;
    made->name = std::move(name);
    made->value = std::move(value);
    linkAttribute(element, made);
}

void setAttribute(Element& element, std::u16string_view name, std::u16string_view value) {
    noteChange(element);
    if (Attribute* present = findAttribute(element, name)) {
        present->value = Text::own(value);
        return;
    }
    // On the heap even for an element of a pool, which only grows until it goes.
    linkAttribute(element, new Attribute{Text::own(name), Text::own(value)});
}

void dropAttributes(Element& element) noexcept {
    for (Attribute* at = element.firstAttribute; at;) {
        Attribute* next = at->next;
        if (at->pooled)
            at->~Attribute();
        else
            delete at;
        at = next;
    }
}

}  // namespace corvane::xml
