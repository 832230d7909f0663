#pragma once

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include <corvane/base/Types.h>
#include <corvane/xml/QorXMLNode.h>

namespace corvane::xml {

class Element;

/// An element as the library's own readers see it: no counting, no allocation, no copies. A view
/// and all that it gives stay valid while a node object holds the tree and the tree is not changed.
class ElementView {
public:
    ElementView() = default;
    /// Empty for an empty node.
    explicit ElementView(const QorXMLNode& node);
    explicit ElementView(const Element* element) : element_(element) {}

    explicit operator bool() const { return element_ != nullptr; }
    friend bool operator==(ElementView, ElementView) = default;

    // What follows needs a view that is not empty.

    std::u16string_view name() const;      ///< Without prefix.
    std::u16string_view fullName() const;  ///< As written.
    QorLong line() const;                  ///< 0 when the element was not loaded.

    std::optional<std::u16string_view> attribute(std::u16string_view name) const;

    /// What QorXMLNode::GetNodeValue gives. It is in the tree when the element holds one piece of
    /// text, else in `buffer`.
    std::u16string_view text(std::u16string& buffer) const;

    ElementView parent() const;                           ///< Empty at the top.
    ElementView child() const;                            ///< The first child element.
    ElementView child(std::u16string_view name) const;    ///< The first of that full name.
    ElementView sibling() const;                          ///< The next element after this one.
    ElementView sibling(std::u16string_view name) const;  ///< The next of that full name.

    /// A counted node for the element.
    QorXMLNode node() const;
    /// For interfaces that know the element by its name alone.
    const Element* element() const { return element_; }

private:
    const Element* element_ = nullptr;
};

/// The child elements of one name, in order: `for (ElementView rule : ChildrenNamed(root,
/// u"Rule"))`.
class ChildrenNamed {
public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = ElementView;
        using difference_type = std::ptrdiff_t;
        using pointer = const ElementView*;
        using reference = ElementView;

        Iterator() = default;
        Iterator(ElementView at, std::u16string_view name) : at_(at), name_(name) {}
        ElementView operator*() const { return at_; }
        Iterator& operator++() {
            at_ = at_.sibling(name_);
            return *this;
        }
        bool operator==(const Iterator& other) const { return at_ == other.at_; }

    private:
        ElementView at_;
        std::u16string_view name_;
    };

    /// An empty parent has no children. The name has to live as long as the walk.
    ChildrenNamed(ElementView parent, std::u16string_view name) : parent_(parent), name_(name) {}
    Iterator begin() const { return parent_ ? Iterator(parent_.child(name_), name_) : Iterator(); }
    Iterator end() const { return {}; }

private:
    ElementView parent_;
    std::u16string_view name_;
};

}  // namespace corvane::xml
