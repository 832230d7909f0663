#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
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
    /// Lies in a pool: an element in its own, the rest in its parent's.
    bool pooled : 1 = false;
    /// The source has white space before this node that is no text.
    bool blankBefore : 1 = false;
};

/// Where the white space at the two ends of a text is unescaped in the source: the number of units.
struct RawEnds {
    std::uint16_t leading = 0;
    std::uint16_t trailing = 0;

    friend bool operator==(RawEnds, RawEnds) = default;
};

/// The units of a text, which follow this in memory and never change.
class Text {
public:
    template <typename Unit>
    static std::size_t sizeFor(std::basic_string_view<Unit> text) {
        return sizeof(Text) + text.size() * sizeof(char16_t);
    }
    /// In a pool. Units of 8 bits are ASCII.
    template <typename Unit>
    static const Text* makeIn(Pool& pool, std::basic_string_view<Unit> text, RawEnds raw) {
        return new (pool.allocate(sizeFor(text), alignof(Text))) Text(text, raw);
    }

    std::u16string_view view() const {
        return {reinterpret_cast<const char16_t*>(this + 1), size_};
    }
    RawEnds raw() const { return raw_; }

private:
    friend class CharacterData;
    template <typename Unit>
    Text(std::basic_string_view<Unit> text, RawEnds raw)
        : size_(static_cast<std::uint32_t>(text.size())), raw_(raw) {
        std::copy(text.begin(), text.end(), reinterpret_cast<char16_t*>(this + 1));
    }

    std::uint32_t size_;
    RawEnds raw_;
};

/// A text, a section, a comment, an instruction (target, blank, data) or a document type (what
/// stands between "<!DOCTYPE " and ">").
class CharacterData : public Node {
public:
    /// Made on the heap for a null pool, and freed by `destroy` of Tree.h.
    static CharacterData* make(Pool* pool, Kind kind, std::u16string_view text, RawEnds raw = {});

    const Text& content() const { return text_; }
    std::u16string_view text() const { return text_.view(); }

private:
    CharacterData(Kind ofKind, std::u16string_view text, RawEnds raw)
        : Node(ofKind), text_(text, raw) {}

    Text text_;  // Comes last, since its units follow it.
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
    bool isLeaf_ = false;  // Comes first: there the padding of the node holds it.

public:
    explicit Element(Kind ofKind = Kind::Element) : Node(ofKind) {}

    /// Where the element lies; null for the heap.
    Pool* pool() const { return name ? name->pool() : nullptr; }

    /// The content is nodes, or one text for which no node has been made yet: `expand` of Tree.h
    /// makes it. Most elements of a rule file hold a text, and its node would take more memory than
    /// all the rest of it. Only an element in a pool has such a text, which lies there too; others
    /// may share it.
    bool hasContent() const { return isLeaf_ || content_.node; }
    Node* firstChild() const { return isLeaf_ ? nullptr : content_.node; }
    Node* lastChild() const { return firstChild() ? firstChild()->ringPrevious : nullptr; }
    const Text* onlyText() const { return isLeaf_ ? content_.text : nullptr; }
    void setFirstChild(Node* node) {
        content_.node = node;
        isLeaf_ = false;
    }
    void setOnlyText(const Text* text) {
        content_.text = text;
        isLeaf_ = true;
    }

    /// The source has white space between the last child and the end tag that is no text.
    bool blankAtEnd = false;
    /// As written, with its prefix; it lies where the element does. Empty for a document, or null
    /// for one on the heap.
    const Name* name = nullptr;
    AttributeList* attributeList = nullptr;
    std::uint32_t line = 0;
    /// The handles on this element and its children that are held themselves; see Tree.h.
    std::uint32_t holds = 0;

private:
    union {
        Node* node = nullptr;
        const Text* text;
    } content_;
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
    return parent && parent->firstChild() != this ? ringPrevious : nullptr;
}

/// True for an element or a document, which may have children.
inline bool isParent(const Node& node) {
    return node.kind <= Kind::Element;
}

inline bool isWhite(char16_t unit) {
    return unit == u' ' || unit == u'\n' || unit == u'\t' || unit == u'\r';
}

}  // namespace corvane::xml
