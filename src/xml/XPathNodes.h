#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "xml/Attributes.h"
#include "xml/Node.h"
#include "xml/XPathSyntax.h"

namespace corvane::xml::xpath {

/// A node as XPath has it: an attribute and a namespace are nodes too, and texts and sections that
/// follow one another are one, for which the first of them is taken.
struct Item {
    enum class Kind : std::uint8_t { Node, Namespace, Attribute };

    const Node* node = nullptr;            ///< The node, or the element that has the attribute.
    const Attribute* attribute = nullptr;  ///< Null too for the namespace that always exists.
    Kind kind = Kind::Node;

    friend bool operator==(const Item&, const Item&) = default;
};

using Items = std::vector<Item>;

/// Thrown within an evaluation that takes too many steps.
struct TooManySteps {};

/// The tree of one evaluation: its axes, its order, its strings, and the count of what is done
/// there. A function that takes items or pieces of text ends a walk by giving false.
class Tree {
public:
    using TakeItem = std::function<bool(const Item&)>;
    using TakePiece = std::function<bool(std::u16string_view)>;

    /// An element without document gets one for as long as this lives.
    explicit Tree(const Element& context);
    ~Tree();
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    const Element& root() const { return *root_; }

    /// Counts steps, each of which costs about as much as passing a node.
    void count(std::size_t steps) {
        steps_ += steps;
        if (steps_ > limit_) extend();
    }

    /// Takes the nodes of a step's axis that pass its node test, in the order of the axis.
    void walk(const Item& from, const Step& step, const TakeItem& take);
    /// Leaves out of contexts, which are in document order, those that add nothing to the others on
    /// this axis. What is left has each node at most once, ancestors and parents excepted.
    Items covering(Items contexts, Axis axis);

    /// Puts items in document order and drops those that are there twice.
    void sort(Items& items);

    /// The string-value of an item.
    std::u16string stringOf(const Item& item);
    bool hasString(const Item& item, std::u16string_view text);

private:
    void walkAxis(const Item& from, Axis axis, const TakeItem& take);
    void walkNamespaces(const Element& element, const TakeItem& take);
    void walkPreceding(const Node& from, const TakeItem& take);
    bool takeNode(const Node* node, const TakeItem& take);
    void eachPiece(const Item& item, const TakePiece& take);
    const Node* lastBelow(const Node* node);
    Items firstOfEachParent(const Items& contexts, bool fromTheEnd);
    void number();
    void extend();

    Element document_{Kind::Document};
    Element* lent_ = nullptr;  // The top that has `document_` as its parent meanwhile.
    const Element* root_;
    std::size_t steps_ = 0;
    std::size_t limit_;
    std::size_t size_ = 0;  // Nodes, once they are numbered.
};

/// The target of an instruction.
std::u16string_view targetOf(const Node& instruction);

}  // namespace corvane::xml::xpath
