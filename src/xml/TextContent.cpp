#include "xml/TextContent.h"

#include "xml/Tree.h"

namespace corvane::xml {
namespace {

std::u16string_view trimmed(const Text& text, bool atStart, bool atEnd) {
    std::u16string_view units = text.view();
    if (atStart) units.remove_prefix(text.raw().leading);
    if (atEnd) units.remove_suffix(text.raw().trailing);
    return units;
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
            if (to->isText()) add(asData(to)->content());
            if (isElement(to) && asElement(to)->onlyText()) add(*asElement(to)->onlyText());
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
    void add(const Text& text) {
        const std::u16string_view units = trimmed(text, !begun_, false);
        if (units.empty()) return;
        if (begun_) out_.append(blanks_, u' ');
        out_ += units;
        begun_ = true;
        blanks_ = 0;
        trailing_ = text.raw().trailing;
    }

    std::u16string& out_;
    std::size_t blanks_ = 0;
    std::size_t trailing_ = 0;
    bool begun_ = false;
};

}  // namespace

std::u16string_view textOf(const Element& element, std::u16string& buffer) {
    if (const Text* text = element.onlyText()) return trimmed(*text, true, true);
    const Node* only = element.firstChild();
    if (!only) return {};
    if (only->isText() && !only->next) return trimmed(asData(only)->content(), true, true);
    Collector(buffer).collect(element);
    return buffer;
}

}  // namespace corvane::xml
