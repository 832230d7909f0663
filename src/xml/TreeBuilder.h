#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "xml/Node.h"

namespace corvane::xml {

/// Makes the tree of a document from what a parser reports, and decides what becomes of white
/// space: a text of nothing but unescaped white space is dropped and leaves a mark, and the other
/// texts remember how much of it is at their ends, except where "xml:space" preserves it.
class TreeBuilder {
public:
    TreeBuilder();
    ~TreeBuilder();
    TreeBuilder(const TreeBuilder&) = delete;
    TreeBuilder& operator=(const TreeBuilder&) = delete;

    Pool& pool() { return *pool_.get(); }

    /// The name lies in the pool.
    void startElement(const Name* name, std::uint32_t line, std::size_t attributes);
    /// Adds to the element that has just been started. The name lies in the pool; the value is
    /// copied there, unless an equal one is.
    void attribute(const Name* name, std::string_view utf8);
    void endElement();
    /// A piece of text. Escaped is what a reference stands for.
    void characters(std::string_view utf8, bool escaped);
    /// A whole text in which nothing is escaped.
    void text(std::string_view utf8);
    /// A section, comment, instruction or document type.
    void data(Kind kind, std::string_view utf8);

    /// The finished document, which the caller destroys.
    Element* take();

private:
    std::u16string_view kept(std::size_t leading, std::size_t trailing) const;
    void flushText();
    template <typename Unit>
    void addText(std::basic_string_view<Unit> text, RawEnds raw);
    template <typename Unit>
    const Text* sharedText(std::basic_string_view<Unit> text, RawEnds raw);
    void place(Node& node);
    void append(Node& node);
    bool preserves() const { return preserve_.back(); }
    Pool* memory() const { return pool_.get(); }

    PoolUse pool_;
    std::vector<bool> preserve_{false};
    Element* document_;  // After what can fail to be made, since nothing would free it.
    Element* current_;
    std::size_t expected_ = 0;  // Attributes of the current element.

    std::array<const Text*, 256> recentTexts_{};  // In the pool, by a hash, for others to share.

    std::u16string scratch_;
    // Text that has been reported, but not yet been made a node, and the part of it from the first
    // to the last escaped unit.
    std::u16string pending_;
    std::size_t escapedFrom_ = 0;
    std::size_t escapedTo_ = 0;
    bool blank_ = false;  // White space has been dropped before the next node.
};

}  // namespace corvane::xml
