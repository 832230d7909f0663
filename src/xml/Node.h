#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "xml/Pool.h"

namespace corvane::xml {

class Element;

enum class Kind : std::uint8_t { Document, Element, Text, CData, Comment, Instruction, DocType };

/// What every node of a tree has.
class Node {
public:
    explicit Node(Kind ofKind) : kind(ofKind) {}

    bool isElement() const { return kind == Kind::Element; }
    bool isText() const { return kind == Kind::Text || kind == Kind::CData; }
    inline Node* previous() const;  ///< The sibling before this one, or null.

    Element* parent = nullptr;
    Node* next = nullptr;
    /// The node before this one; for a first child it is the last one.
    Node* ringPrevious = nullptr;
    /// The place in document order, when a query has last counted.
    mutable std::uint32_t order = 0;
    const Kind kind;
    bool pooled = false;  ///< Lies in a pool: an element in its own, the rest in its parent's.
    /// The source has white space before this node that is no text.
    bool blankBefore = false;
};

/// A text, a section, a comment, an instruction (target, blank, data) or a document type (what
/// stands between "<!DOCTYPE " and ">"). The units follow it in memory, and never change.
class CharacterData : public Node {
public:
    /// Made on the heap for a null pool, and freed by `destroy` of Tree.h.
    static CharacterData* make(Pool* pool, Kind kind, std::u16string_view text);
    static CharacterData* make(Pool* pool, Kind kind, std::string_view ascii);

    std::u16string_view text() const {
        return {reinterpret_cast<const char16_t*>(this + 1), size_};
    }

    // The number of white space units at the two ends that are unescaped in the source.
    std::uint16_t rawLeading = 0;
    std::uint16_t rawTrailing = 0;

private:
    template <typename Unit>
    static CharacterData* copy(Pool* pool, Kind kind, std::basic_string_view<Unit> text);
    CharacterData(Kind ofKind, std::size_t size)
        : Node(ofKind), size_(static_cast<std::uint32_t>(size)) {}

    std::uint32_t size_;
};

/// A name and a value, each on the heap or in the pool of the element.
struct Attribute {
    const Name* name = nullptr;
    const char16_t* units = nullptr;
    std::uint32_t size = 0;
    bool ownsName = false;
    bool ownsValue = false;

    std::u16string_view value() const { return {units, size}; }
};

class AttributeList;

/// An element, or the document that is the parent of a document element.
class Element : public Node {
public:
    explicit Element(Kind ofKind = Kind::Element) : Node(ofKind) {}

    /// Where the element lies; null for the heap.
    Pool* pool() const { return name ? name->pool() : nullptr; }
    Node* lastChild() const { return firstChild ? firstChild->ringPrevious : nullptr; }

    /// The source has white space between the last child and the end tag that is no text.
    bool blankAtEnd = false;
    /// As written, with its prefix; it lies where the element does. Empty for a document, or null
    /// for one on the heap.
    const Name* name = nullptr;
    AttributeList* attributeList = nullptr;
    Node* firstChild = nullptr;
    std::uint32_t line = 0;
    /// The handles on this element and its children that are held themselves; see Tree.h.
    std::uint32_t holds = 0;
};

inline const Element* asElement(const Node* node) {
    return static_cast<const Element*>(node);
}
inline Element* asElement(Node* node) {
    return static_cast<Element*>(node);
}
inline const CharacterData* asData(const Node* node) {
    return static_cast<const CharacterData*>(node);
}

inline Node* Node::previous() const {
    return parent && parent->firstChild != this ? ringPrevious : nullptr;
}

/// True for an element or a document, which may have children.
inline bool isParent(const Node& node) {
    return node.kind <= Kind::Element;
}

inline bool isWhite(char16_t unit) {
    return unit == u' ' || unit == u'\n' || unit == u'\t' || unit == u'\r';
}

}  // namespace corvane::xml
