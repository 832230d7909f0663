#include "xml/XPathNodes.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "xml/Namespaces.h"
#include "xml/Tree.h"

namespace corvane::xml::xpath {
namespace {

// Steps that a query may take: well below a second. A large tree allows more for each of its nodes.
constexpr std::size_t kFreeSteps = 10'000'000;
constexpr std::size_t kStepsOfNode = 32;
// Units of text that cost as much as passing a node.
constexpr std::size_t kUnitsOfStep = 4;

// False for what is no node of its own: a document type, an empty text, what continues a text.
bool isItem(const Node& node) {
    if (node.kind == Kind::DocType) return false;
    if (!node.isText()) return true;
    const Node* before = node.previous();
    if (before && before->isText()) return false;
    const Node* at = &node;
    while (at && at->isText() && asData(at)->text().empty())
        at = at->next;
    return at && at->isText();
}

// The first child, with a node for each text.
const Node* firstChildOf(const Node& node) {
    if (!isParent(node)) return nullptr;
    // Only the query sees the tree as constant, and an expanded element says the same as before.
    expand(const_cast<Element&>(*asElement(&node)));
    return asElement(&node)->firstChild();
}

// What `following` gives, with a node for each text.
const Node* next(const Node* at, const Node* top) {
    static_cast<void>(firstChildOf(*at));
    return following(at, top);
}

// A comment, or what comes after the target of an instruction.
std::u16string_view contentOf(const Node& node) {
    const std::u16string_view text = asData(&node)->text();
    if (node.kind != Kind::Instruction) return text;
    return text.substr(std::min(targetOf(node).size() + 1, text.size()));
}

bool passesName(const Name& name, const Step& step) {
    switch (step.test) {
        case Test::Name:
            return name.is(step.name);
        case Test::AnyOfPrefix:
            return name.prefix() == step.name;
        default:
            return true;
    }
}

bool passes(const Item& item, const Step& step) {
    if (step.test == Test::AnyNode) return true;
    if (item.kind == Item::Kind::Attribute)
        return step.axis == Axis::Attribute && step.test <= Test::AnyOfPrefix &&
               passesName(*item.attribute->name, step);
    if (item.kind == Item::Kind::Namespace) {
        if (step.axis != Axis::Namespace) return false;
        const std::u16string_view prefix =
            item.attribute ? item.attribute->name->local() : std::u16string_view(u"xml");
        return step.test == Test::AnyName || (step.test == Test::Name && step.name == prefix);
    }
    const Node& node = *item.node;
    switch (step.test) {
        case Test::Text:
            return node.isText();
        case Test::Comment:
            return node.kind == Kind::Comment;
        case Test::Instruction:
            return node.kind == Kind::Instruction &&
                   (step.name.empty() || targetOf(node) == step.name);
        default:
            return node.isElement() && passesName(*asElement(&node)->name, step);
    }
}

}  // namespace

std::u16string_view targetOf(const Node& instruction) {
    const std::u16string_view text = asData(&instruction)->text();
    return text.substr(0, text.find(u' '));
}

Tree::Tree(const Element& context) : limit_(kFreeSteps) {
    const Element* top = &context;
    while (top->parent)
        top = top->parent;
    root_ = top;
    if (top->kind == Kind::Document) return;
    lent_ = const_cast<Element*>(top);
    attach(document_, *lent_);
    root_ = &document_;
}

Tree::~Tree() {
    if (!lent_) return;
    lent_->parent = nullptr;
    lent_->ringPrevious = nullptr;
}

void Tree::extend() {
    number();
    limit_ = kFreeSteps + kStepsOfNode * size_;
    if (steps_ > limit_) throw TooManySteps();
}

void Tree::number() {
    if (size_ > 0) return;
    for (const Node* at = root_; at; at = following(at, root_)) {
        at->order = static_cast<std::uint32_t>(++size_);
        if (isParent(*at) && asElement(at)->onlyText()) ++size_;  // For the node that it may get.
    }
    steps_ += size_;
}

void Tree::sort(Items& items) {
    if (items.size() < 2) return;
    number();
    const auto key = [](const Item& item) {
        return std::tuple(item.node->order, item.kind, item.attribute);
    };
    const auto isBefore = [&](const Item& a, const Item& b) { return key(a) < key(b); };
    count(items.size());
    if (!std::is_sorted(items.begin(), items.end(), isBefore)) {
        count(items.size() * 4);
        std::sort(items.begin(), items.end(), isBefore);
    }
    items.erase(std::unique(items.begin(), items.end()), items.end());
}

const Node* Tree::lastBelow(const Node* node) {
    for (; firstChildOf(*node); node = asElement(node)->lastChild())
        count(1);
    return node;
}

bool Tree::takeNode(const Node* node, const TakeItem& take) {
    count(1);
    return !isItem(*node) || take(Item{node});
}

void Tree::walk(const Item& from, const Step& step, const TakeItem& take) {
    walkAxis(from, step.axis, [&](const Item& item) { return !passes(item, step) || take(item); });
}

void Tree::walkAxis(const Item& from, Axis axis, const TakeItem& take) {
    count(1);
    const bool isNode = from.kind == Item::Kind::Node;
    const Element* element = isNode && isParent(*from.node) ? asElement(from.node) : nullptr;
    const Node* parent = isNode ? from.node->parent : from.node;
    switch (axis) {
        case Axis::Self:
            take(from);
            return;
        case Axis::Parent:
            if (parent) take(Item{parent});
            return;
        case Axis::AncestorOrSelf:
            if (!take(from)) return;
            [[fallthrough]];
        case Axis::Ancestor:
            while (parent && takeNode(parent, take))
                parent = parent->parent;
            return;
        case Axis::Attribute:
            if (!element) return;
            for (const Attribute& attribute : attributesOf(*element)) {
                count(1);
                if (isDeclaration(attribute.name->view())) continue;
                if (!take(Item{element, &attribute, Item::Kind::Attribute})) return;
            }
            return;
        case Axis::Namespace:
            if (element && element->isElement()) walkNamespaces(*element, take);
            return;
        case Axis::Child: {
            const Node* at = element ? firstChildOf(*element) : nullptr;
            while (at && takeNode(at, take))
                at = at->next;
            return;
        }
        case Axis::DescendantOrSelf:
            if (!take(from)) return;
            [[fallthrough]];
        case Axis::Descendant: {
            const Node* at = element ? next(element, element) : nullptr;
            while (at && takeNode(at, take))
                at = next(at, element);
            return;
        }
        case Axis::FollowingSibling: {
            const Node* at = isNode ? from.node->next : nullptr;
            while (at && takeNode(at, take))
                at = at->next;
            return;
        }
        case Axis::PrecedingSibling: {
            const Node* at = isNode ? from.node->previous() : nullptr;
            while (at && takeNode(at, take))
                at = at->previous();
            return;
        }
        case Axis::Following: {
            // That of an attribute is that of its element.
            const Node* at = next(lastBelow(from.node), root_);
            while (at && takeNode(at, take))
                at = next(at, root_);
            return;
        }
        case Axis::Preceding:
            walkPreceding(*from.node, take);
            return;
    }
}

void Tree::walkNamespaces(const Element& element, const TakeItem& take) {
    std::unordered_set<std::u16string_view> seen{u"xml"};
    for (const Element* at = &element; at; at = at->parent) {
        count(1);
        for (const Attribute& attribute : attributesOf(*at)) {
            count(1);
            const std::u16string_view name = attribute.name->view();
            if (!isDeclaration(name) || !seen.insert(name).second) continue;
            // The default namespace may be taken back.
            if (attribute.size > 0 && !take(Item{&element, &attribute, Item::Kind::Namespace}))
                return;
        }
    }
    take(Item{&element, nullptr, Item::Kind::Namespace});
}

void Tree::walkPreceding(const Node& from, const TakeItem& take) {
    const Node* above = &from;  // What holds the walk: its ancestors do not count.
    const Node* at = &from;
    while (true) {
        if (const Node* before = at->previous()) {
            at = lastBelow(before);
        } else {
            at = at->parent;
            if (!at) return;
            if (at == above->parent) {
                above = at;
                continue;
            }
        }
        if (!takeNode(at, take)) return;
    }
}

Items Tree::firstOfEachParent(const Items& contexts, bool fromTheEnd) {
    Items left;
    std::unordered_set<const Node*> parents;
    for (std::size_t i = 0; i < contexts.size(); ++i) {
        const Item& item = contexts[fromTheEnd ? contexts.size() - 1 - i : i];
        count(1);
        if (item.kind == Item::Kind::Node && parents.insert(item.node->parent).second)
            left.push_back(item);
    }
    return left;
}

Items Tree::covering(Items contexts, Axis axis) {
    if (contexts.size() < 2) return contexts;
    switch (axis) {
        case Axis::FollowingSibling:
            return firstOfEachParent(contexts, false);
        case Axis::PrecedingSibling:
            return firstOfEachParent(contexts, true);
        case Axis::Preceding:
            return {contexts.back()};
        case Axis::Following: {
            // The one that ends first. What follows in the order of the ends comes after that.
            number();
            const auto end = [this](const Item& item) {
                count(1);
                return lastBelow(item.node)->order;
            };
            return {
                *std::min_element(contexts.begin(), contexts.end(),
                                  [&](const Item& a, const Item& b) { return end(a) < end(b); })};
        }
        case Axis::Descendant:
        case Axis::DescendantOrSelf: {
            number();
            Items left;
            std::uint32_t end = 0;
            for (const Item& item : contexts) {
                count(1);
                const bool isCovered = item.kind == Item::Kind::Node && item.node->order <= end;
                if (isCovered) continue;
                left.push_back(item);
                if (item.kind == Item::Kind::Node) end = lastBelow(item.node)->order;
            }
            return left;
        }
        default:
            return contexts;
    }
}

void Tree::eachPiece(const Item& item, const TakePiece& take) {
    const auto counted = [&](std::u16string_view piece) {
        count(1 + piece.size() / kUnitsOfStep);
        return take(piece);
    };
    if (item.attribute) {
        counted(item.attribute->value());
    } else if (item.kind == Item::Kind::Namespace) {
        counted(namespaceOf(*asElement(item.node), u"xml"));
    } else if (item.node->isText()) {
        for (const Node* at = item.node; at && at->isText(); at = at->next) {
            if (!counted(asData(at)->text())) return;
        }
    } else if (!isParent(*item.node)) {
        counted(contentOf(*item.node));
    } else {
        for (const Node* at = item.node; at; at = following(at, item.node)) {
            count(1);
            if (at->isText() && !counted(asData(at)->text())) return;
            const Text* const text = isParent(*at) ? asElement(at)->onlyText() : nullptr;
            if (text && !counted(text->view())) return;
        }
    }
}

std::u16string Tree::stringOf(const Item& item) {
    std::u16string text;
    eachPiece(item, [&](std::u16string_view piece) {
        text += piece;
        return true;
    });
    return text;
}

bool Tree::hasString(const Item& item, std::u16string_view text) {
    bool same = true;
    eachPiece(item, [&](std::u16string_view piece) {
        same = text.starts_with(piece);
        if (same) text.remove_prefix(piece.size());
        return same;
    });
    return same && text.empty();
}

}  // namespace corvane::xml::xpath
