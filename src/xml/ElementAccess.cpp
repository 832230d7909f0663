#include "xml/ElementAccess.h"

#include "xml/Access.h"
#include "xml/Attributes.h"
#include "xml/TextContent.h"
#include "xml/Tree.h"

namespace corvane::xml {

ElementView::ElementView(const QorXMLNode& node) : element_(Access::element(node)) {}

std::u16string_view ElementView::name() const {
    return element_->name->local();
}

std::u16string_view ElementView::fullName() const {
    return element_->name->view();
}

QorLong ElementView::line() const {
    return static_cast<QorLong>(element_->line);
}

std::optional<std::u16string_view> ElementView::attribute(std::u16string_view name) const {
    const Attribute* found = findAttribute(*element_, name);
    if (!found) return std::nullopt;
    return found->value();
}

std::u16string_view ElementView::text(std::u16string& buffer) const {
    return textOf(*element_, buffer);
}

ElementView ElementView::parent() const {
    const Element* parent = element_->parent;
    return ElementView(parent && parent->isElement() ? parent : nullptr);
}

ElementView ElementView::child() const {
    return ElementView(elementFrom(element_->firstChild()));
}

ElementView ElementView::child(std::u16string_view name) const {
    return ElementView(elementFrom(element_->firstChild(), name));
}

ElementView ElementView::sibling() const {
    return ElementView(elementFrom(element_->next));
}

ElementView ElementView::sibling(std::u16string_view name) const {
    return ElementView(elementFrom(element_->next, name));
}

QorXMLNode ElementView::node() const {
    return Access::node(element_);
}

}  // namespace corvane::xml
