#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLNode.h>

namespace corvane {

/// The child elements of one name, in document order, for a loop:
/// `for (QorXMLNode& constraint : corvane::ChildElements(rule, u"Constraint"))`. The nodes go with
/// the range; a copy of a node holds its element longer. Any XPath query that selects elements
/// serves in place of a name.
class ChildElements {
public:
    /// Goes over the elements; ends with the range.
    class Iterator {
    public:
        ///@{
        /// Types that algorithms ask for.
        using iterator_category = std::forward_iterator_tag;
        using value_type = QorXMLNode;
        using difference_type = std::ptrdiff_t;
        using pointer = QorXMLNode*;
        using reference = QorXMLNode&;
        ///@}

        Iterator() = default;
        /// The entry `at` of a list, which outlives the iterator.
        Iterator(const QorXMLNodeList* list, QorLong at) : list_(list), at_(at) {}
        ///@{
        /// The element, which stays the range's.
        QorXMLNode& operator*() const { return *(*list_)[at_]; }
        QorXMLNode* operator->() const { return (*list_)[at_]; }
        ///@}
        ///@{
        /// Goes to the next element.
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        Iterator operator++(int) { return {list_, at_++}; }
        ///@}
        bool operator==(const Iterator&) const = default;

    private:
        const QorXMLNodeList* list_ = nullptr;
        QorLong at_ = 0;
    };

    /// An empty parent raises _com_error.
    ChildElements(const QorXMLNode& parent, CStringW name)
        : list_(parent.GetNodeList(std::move(name))) {}

    Iterator begin() const { return {list_.get(), 0}; }
    Iterator end() const { return {list_.get(), list_->GetSize()}; }

private:
    std::unique_ptr<QorXMLNodeList> list_;
};

}  // namespace corvane
