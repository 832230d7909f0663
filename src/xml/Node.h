#pragma once

#include <cstdint>
#include <new>
#include <string_view>

#include "xml/Pool.h"
#include "xml/Text.h"

namespace corvane::xml {

class Element;

enum class Kind : std::uint8_t { Document, Element, Text, CData, Comment, Instruction, DocType };

/// What every node of a tree has.
class Node {
public:
    explicit Node(Kind ofKind) : kind(ofKind) {}

    bool isElement() const { return kind == Kind::Element; }
    bool isText() const { return kind == Kind::Text || kind == Kind::CData; }

    Element* parent = nullptr;
    Node* previous = nullptr;
    Node* next = nullptr;
    Pool* pool = nullptr;  ///< Where the node lies; null for the heap.
    const Kind kind;
    /// The source has white space before this node that is no text.
    bool blankBefore = false;
};

/// A text, a section, a comment, an instruction (target, blank, data) or a document type (what
/// stands between "<!DOCTYPE " and ">").
class CharacterData : public Node {
public:
    using Node::Node;

    Text text;
    /// The number of white space units at the two ends that stand unescaped in the source.
    std::uint32_t rawLeading = 0;
    std::uint32_t rawTrailing = 0;
};

struct Attribute {
    Text name;
    Text value;
    Attribute* next = nullptr;
    bool pooled = false;  ///< Lies in the pool of its element.
};

/// An element, or the document that is the parent of a document element.
class Element : public Node {
public:
    explicit Element(Kind ofKind = Kind::Element) : Node(ofKind) {}

    Text name;  ///< As written, with its prefix.
    Attribute* firstAttribute = nullptr;
    Attribute* lastAttribute = nullptr;
    Node* firstChild = nullptr;
    Node* lastChild = nullptr;
    std::uint32_t line = 0;
    /// The handles on this element and its children that are held themselves; see Tree.h.
    std::uint32_t holds = 0;
    /// A shadow of the tree that queries use may show this element; see Shadow.h.
    mutable bool shadowed = false;
    /// The source has white space between the last child and the end tag that is no text.
    bool blankAtEnd = false;
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

/// A new node in the pool, or on the heap when that is null.
template <typename Made>
Made* makeNode(Pool* pool, Kind kind) {
    if (!pool) return new Made(kind);
    auto* made = new (pool->allocate(sizeof(Made), alignof(Made))) Made(kind);
    made->pool = pool;
    pool->hold();
    return made;
}

/// A copy of the text where nodes of the pool keep theirs.
inline Text makeText(Pool* pool, std::u16string_view text) {
    return pool ? Text::pooled(pool->copy(text)) : Text::own(text);
}

inline bool isWhite(char16_t unit) {
    return unit == u' ' || unit == u'\n' || unit == u'\t' || unit == u'\r';
}

}  // namespace corvane::xml
