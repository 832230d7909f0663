#pragma once

#include <memory>
#include <unordered_map>

#include "xml/Node.h"

struct _xmlDoc;
struct _xmlNode;

namespace corvane::xml {

/// A copy of a tree in the form that the XPath evaluator works on. Names carry no namespace but
/// their own prefix, so that they match as they are written. Making one costs about as much as
/// parsing the tree did, so that of a document is kept until the tree changes.
class Shadow {
public:
    /// Copies the whole tree below `top`, a document or a free element, and marks its elements.
    explicit Shadow(const Element& top);
    ~Shadow();
    Shadow(const Shadow&) = delete;
    Shadow& operator=(const Shadow&) = delete;

    _xmlDoc* document() const { return document_; }
    std::size_t size() const { return nodes_.size(); }  ///< Elements.
    /// The most nodes that stand beside one another without an element between them.
    std::size_t longestRun() const { return longestRun_; }
    _xmlNode* find(const Element& element) const { return nodes_.at(&element); }
    /// The element that a node of the copy stands for, or null.
    static const Element* original(const _xmlNode* node);

private:
    class Builder;

    _xmlDoc* document_;
    std::size_t longestRun_ = 0;
    std::unordered_map<const Element*, _xmlNode*> nodes_;
};

}  // namespace corvane::xml
