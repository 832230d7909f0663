#include "xml/TextContent.h"

#include "xml/Tree.h"

namespace corvane::xml {
namespace {

std::u16string_view trimmed(const CharacterData& data, bool atStart, bool atEnd) {
    std::u16string_view text = data.text();
    if (atStart) text.remove_prefix(data.rawLeading);
    if (atEnd) text.remove_suffix(data.rawTrailing);
    return text;
}

bool isElement(const Node* node) {
    return node && node->isElement();
}

// Joins the pieces below an element. White space that is no text counts as one blank where it
// is between an element and a later text.
class Collector {
public:
    explicit Collector(std::u16string& out) : out_(out) { out_.clear(); }

    void collect(const Element& top) {
        const Node* from = &top;
        while (const Node* to = following(from, &top)) {
            if (to->parent != from) leave(from, to->parent);
            if (to->blankBefore && isElement(to->previous())) ++blanks_;
            if (to->isText()) add(*asData(to));
            from = to;
        }
        out_.resize(out_.size() - trailing_);
    }

private:
    void leave(const Node* from, const Node* to) {
        if (from->isElement()) leaveElement(*asElement(from));
        for (from = from->parent; from != to; from = from->parent)
            leaveElement(*asElement(from));
    }
    void leaveElement(const Element& element) {
        if (element.blankAtEnd && isElement(element.lastChild())) ++blanks_;
    }
    void add(const CharacterData& data) {
        const std::u16string_view text = trimmed(data, !begun_, false);
        if (text.empty()) return;
        if (begun_) out_.append(blanks_, u' ');
        out_ += text;
        begun_ = true;
        blanks_ = 0;
        trailing_ = data.rawTrailing;
    }

    std::u16string& out_;
    std::size_t blanks_ = 0;
    std::size_t trailing_ = 0;
    bool begun_ = false;
};

}  // namespace

std::u16string_view textOf(const Element& element, std::u16string& buffer) {
    const Node* only = element.firstChild;
    if (!only) return {};
    if (only->isText() && !only->next) return trimmed(*asData(only), true, true);
    Collector(buffer).collect(element);
    return buffer;
}

}  // namespace corvane::xml
