#include <memory>

#include "xml/Attributes.h"
#include "xml/Namespaces.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

Node* copyNode(Pool* pool, const Node& source) {
    if (!source.isElement()) {
        auto* copy = makeNode<CharacterData>(pool, source.kind);
        const CharacterData* data = asData(&source);
        copy->text = makeText(pool, data->text.view());
        copy->rawLeading = data->rawLeading;
        copy->rawTrailing = data->rawTrailing;
        return copy;
    }
    const Element* element = asElement(&source);
    auto* copy = makeNode<Element>(pool, Kind::Element);
    copy->name = makeText(pool, element->name.view());
    copy->line = element->line;
    copy->blankAtEnd = element->blankAtEnd;
    for (const Attribute* at = element->firstAttribute; at; at = at->next) {
        appendAttribute(*copy, makeText(pool, at->name.view()), makeText(pool, at->value.view()));
    }
    return copy;
}

struct Destroyer {
    void operator()(Element* top) const { destroy(top); }
};

}  // namespace

Element* clone(const Element& source) {
    const PoolUse pool;
    // Goes with all that has been copied when memory ends.
    std::unique_ptr<Element, Destroyer> top(asElement(copyNode(pool.get(), source)));
    const Node* from = &source;
    Node* copy = top.get();
    while (const Node* next = following(from, &source)) {
        if (next->parent != from) {
            for (; from->parent != next->parent; from = from->parent)
                copy = copy->parent;
            copy = copy->parent;
        }
        Element* parent = asElement(copy);
        copy = copyNode(pool.get(), *next);
        copy->blankBefore = next->blankBefore;
        attach(*parent, *copy);
        from = next;
    }
    copyNamespaces(source, *top);
    return top.release();
}

}  // namespace corvane::xml
