#include "xml/Access.h"

#include "xml/Tree.h"

namespace corvane::xml {

QorXMLNode Access::node(const Node* node) {
    QorXMLNode result;
    if (node && node->isElement()) {
        // Whoever has a view of an element may hold it; the tree's constness is the view's alone.
        result.m_pElement = const_cast<Element*>(asElement(node));
        hold(result.m_pElement);
    }
    return result;
}

std::unique_ptr<QorXMLNode> Access::newNode(const Node* node) {
    return std::make_unique<QorXMLNode>(Access::node(node));
}

}  // namespace corvane::xml
