#include "xml/TreeBuilder.h"

#include <utility>

#include "system/Unicode.h"
#include "xml/Attributes.h"
#include "xml/DocumentNode.h"
#include "xml/Tree.h"

namespace corvane::xml {

TreeBuilder::TreeBuilder()
    : document_(makeNode<DocumentNode>(pool_.get(), Kind::Document)), current_(document_) {}

TreeBuilder::~TreeBuilder() {
    if (document_) destroy(document_);
}

Element* TreeBuilder::take() {
    return std::exchange(document_, nullptr);
}

void TreeBuilder::startElement(std::u16string_view name, std::uint32_t line) {
    auto* element = makeNode<Element>(pool_.get(), Kind::Element);
    element->name = Text::pooled(name);
    element->line = line;
    place(*element);
    current_ = element;
    preserve_.push_back(preserves());
}

void TreeBuilder::attribute(std::u16string_view name, std::string_view utf8) {
    scratch_.clear();
    system::appendFromUtf8(scratch_, utf8);
    if (name == u"xml:space") preserve_.back() = scratch_ == u"preserve";
    appendAttribute(*current_, Text::pooled(name), makeText(pool_.get(), scratch_));
}

void TreeBuilder::endElement() {
    flushText();
    current_->blankAtEnd = std::exchange(blank_, false) && current_->lastChild;
    current_ = current_->parent;
    preserve_.pop_back();
}

void TreeBuilder::characters(std::string_view utf8, bool escaped) {
    if (escaped && escapedTo_ == 0) escapedFrom_ = pending_.size();
    system::appendFromUtf8(pending_, utf8);
    if (escaped) escapedTo_ = pending_.size();
}

void TreeBuilder::data(Kind kind, std::string_view utf8) {
    scratch_.clear();
    system::appendFromUtf8(scratch_, utf8);
    auto* node = makeNode<CharacterData>(pool_.get(), kind);
    node->text = makeText(pool_.get(), scratch_);
    place(*node);
}

void TreeBuilder::place(Node& node) {
    flushText();
    node.blankBefore = std::exchange(blank_, false);
    attach(*current_, node);
}

void TreeBuilder::flushText() {
    if (pending_.empty()) return;
    const std::size_t size = pending_.size();
    const bool anyEscaped = escapedTo_ > 0;
    std::size_t leading = 0;
    const std::size_t leadingEnd = anyEscaped ? escapedFrom_ : size;
    while (leading < leadingEnd && isWhite(pending_[leading]))
        ++leading;
    std::size_t trailing = 0;
    while (trailing < size - escapedTo_ && isWhite(pending_[size - 1 - trailing]))
        ++trailing;

    if (leading == size && !preserves()) {
        blank_ = true;
    } else {
        auto* node = makeNode<CharacterData>(pool_.get(), Kind::Text);
        node->text = makeText(pool_.get(), pending_);
        if (!preserves()) {
            node->rawLeading = static_cast<std::uint32_t>(leading);
            node->rawTrailing = static_cast<std::uint32_t>(trailing);
        }
        attach(*current_, *node);
    }
    pending_.clear();
    escapedTo_ = 0;
}

}  // namespace corvane::xml
