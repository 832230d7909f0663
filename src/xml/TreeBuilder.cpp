#include "xml/TreeBuilder.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "system/Unicode.h"
#include "xml/Attributes.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

constexpr std::size_t kMostRaw = std::numeric_limits<std::uint16_t>::max();
// A longer text takes more time to compare than memory to repeat.
constexpr std::size_t kLongestShared = 64;

}  // namespace

TreeBuilder::TreeBuilder()
    : document_(makeElement(memory(), Kind::Document, Name::makeIn(pool(), {}))),
      current_(document_) {}

TreeBuilder::~TreeBuilder() {
    if (document_) destroy(document_);
}

Element* TreeBuilder::take() {
    pool().seal(document_);
    return std::exchange(document_, nullptr);
}

void TreeBuilder::startElement(const Name* name, std::uint32_t line, std::size_t attributes) {
    Element* element = makeElement(memory(), Kind::Element, name);
    element->line = line;
    place(*element);
    current_ = element;
    expected_ = attributes;
    preserve_.push_back(preserves());
}

void TreeBuilder::attribute(const Name* name, std::string_view utf8) {
    const std::u16string_view value =
        system::isAscii(utf8) ? sharedText(utf8, {})->view() : pool().copyUtf8(utf8);
    if (name->view() == u"xml:space") preserve_.back() = value == u"preserve";
    addAttribute(*current_, name, value, expected_);
}

void TreeBuilder::endElement() {
    flushText();
    current_->blankAtEnd = std::exchange(blank_, false) && current_->hasContent();
    current_ = current_->parent;
    preserve_.pop_back();
}

void TreeBuilder::characters(std::string_view utf8, bool escaped) {
    if (escaped && escapedTo_ == 0) escapedFrom_ = pending_.size();
    system::appendFromUtf8(pending_, utf8);
    if (escaped) escapedTo_ = pending_.size();
}

void TreeBuilder::text(std::string_view utf8) {
    const std::size_t size = utf8.size();
    if (size > kMostRaw || preserves() || !system::isAscii(utf8)) {
        characters(utf8, false);
        return;
    }
    std::size_t leading = 0;
    while (leading < size && isWhite(static_cast<unsigned char>(utf8[leading])))
        ++leading;
    if (leading == size) {
        blank_ = true;
        return;
    }
    std::size_t trailing = 0;
    while (isWhite(static_cast<unsigned char>(utf8[size - 1 - trailing])))
        ++trailing;
    addText(utf8, {static_cast<std::uint16_t>(leading), static_cast<std::uint16_t>(trailing)});
}

template <typename Unit>
void TreeBuilder::addText(std::basic_string_view<Unit> text, RawEnds raw) {
    const Text* const made = sharedText(text, raw);
    if (!current_->hasContent()) return current_->setOnlyText(made);
    append(*CharacterData::make(memory(), Kind::Text, made->view(), raw));
}

// Values come again and again in a rule file, such as flags and the names of materials.
template <typename Unit>
const Text* TreeBuilder::sharedText(std::basic_string_view<Unit> text, RawEnds raw) {
    if (text.size() > kLongestShared) return Text::makeIn(pool(), text, raw);
    std::size_t hash = text.size() * 31;
    if (!text.empty())
        hash += static_cast<char16_t>(text.front()) * 7U + static_cast<char16_t>(text.back());
    const Text*& recent = recentTexts_[hash % recentTexts_.size()];
    if (!recent || recent->raw() != raw ||
        !std::equal(text.begin(), text.end(), recent->view().begin(), recent->view().end()))
        recent = Text::makeIn(pool(), text, raw);
    return recent;
}

void TreeBuilder::append(Node& node) {
    expand(*current_);
    attach(*current_, node);
}

void TreeBuilder::data(Kind kind, std::string_view utf8) {
    scratch_.clear();
    system::appendFromUtf8(scratch_, utf8);
    place(*CharacterData::make(memory(), kind, scratch_));
}

void TreeBuilder::place(Node& node) {
    flushText();
    node.blankBefore = std::exchange(blank_, false);
    append(node);
}

// The pending text without white space at its ends that is more than a node can count. Nothing but
// a save would show it again.
std::u16string_view TreeBuilder::kept(std::size_t leading, std::size_t trailing) const {
    std::u16string_view text = pending_;
    if (preserves()) return text;
    text.remove_prefix(leading - std::min(leading, kMostRaw));
    text.remove_suffix(trailing - std::min(trailing, kMostRaw));
    return text;
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
        RawEnds raw;
        if (!preserves()) {
            raw.leading = static_cast<std::uint16_t>(std::min(leading, kMostRaw));
            raw.trailing = static_cast<std::uint16_t>(std::min(trailing, kMostRaw));
        }
        addText(kept(leading, trailing), raw);
    }
    pending_.clear();
    escapedTo_ = 0;
}

}  // namespace corvane::xml
