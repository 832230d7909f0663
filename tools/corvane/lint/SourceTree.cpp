#include "lint/SourceTree.h"

#include <algorithm>

namespace lint {

namespace {

bool isBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

void appendUtf8(std::string& text, std::uint32_t point) {
    const auto add = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (point < 0x80) return add(point);
    if (point < 0x800) return add(0xC0 | point >> 6), add(0x80 | (point & 0x3F));
    if (point < 0x10000)
        return add(0xE0 | point >> 12), add(0x80 | (point >> 6 & 0x3F)), add(0x80 | (point & 0x3F));
    add(0xF0 | (point >> 18 & 7));
    add(0x80 | (point >> 12 & 0x3F));
    add(0x80 | (point >> 6 & 0x3F));
    add(0x80 | (point & 0x3F));
}

std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    const auto unit = [bytes, bigEndian](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::uint32_t>(bigEndian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        std::uint32_t point = unit(at);
        if (point >= 0xD800 && point < 0xDC00 && at + 3 < bytes.size()) {
            point = 0x10000 + ((point - 0xD800) << 10) + (unit(at + 2) - 0xDC00);
            at += 2;
        }
        appendUtf8(text, point);
    }
    return text;
}

/// The encoding of an XML declaration in capitals; "" if there is none.
std::string declaredEncoding(std::string_view text) {
    if (!text.starts_with("<?xml")) return {};
    text = text.substr(0, text.find("?>"));
    std::size_t at = text.find("encoding");
    if (at == text.npos) return {};
    at = text.find_first_of("\"'", at);
    if (at == text.npos) return {};
    std::string name(text.substr(at + 1, text.find(text[at], at + 1) - at - 1));
    for (char& letter : name)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 32);
    return name;
}

/// From one of the encodings of a byte a letter. https://encoding.spec.whatwg.org/#windows-1252
std::string fromBytes(std::string_view bytes, bool isWindows) {
    constexpr std::uint16_t kWindows[32] = {
        0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};
    std::string text;
    for (const char letter : bytes) {
        const auto byte = static_cast<unsigned char>(letter);
        const bool isMapped = isWindows && byte >= 0x80 && byte < 0xA0;
        appendUtf8(text, isMapped ? kWindows[byte - 0x80] : byte);
    }
    return text;
}

/// Walks over the text once.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    Element read() {
        Element top;
        content(top, 0);
        return top;
    }

private:
    bool atEnd() const { return at_ >= text_.size(); }
    bool sees(std::string_view wanted) const { return text_.substr(at_).starts_with(wanted); }

    void step(std::size_t count = 1) {
        for (; count > 0 && !atEnd(); --count) {
            const char letter = text_[at_++];
            if (letter == '\n')
                place_ = {place_.line + 1, 1};
            else if ((static_cast<unsigned char>(letter) & 0xC0U) != 0x80)
                ++place_.column;
        }
    }

    void skipPast(std::string_view end) {
        const std::size_t found = text_.find(end, at_);
        step(found == text_.npos ? text_.size() - at_ : found + end.size() - at_);
    }

    void skipBlanks() {
        while (!atEnd() && isBlank(text_[at_]))
            step();
    }

    /// The declarations of a document type may hold quoted texts and comments with any letters.
    void skipDoctype() {
        int depth = 0;
        while (!atEnd()) {
            const char letter = text_[at_];
            if (sees("<!--")) {
                skipPast("-->");
            } else if (letter == '"' || letter == '\'') {
                step();
                skipPast(std::string_view(&letter, 1));
            } else {
                step();
                if (letter == '<' || letter == '[') ++depth;
                if ((letter == '>' || letter == ']') && --depth == 0 && letter == '>') return;
            }
        }
    }

    std::string_view name() {
        const std::size_t from = at_;
        while (!atEnd() && !isBlank(text_[at_]) &&
               std::string_view("=/>\"'<").find(text_[at_]) == std::string_view::npos)
            step();
        return text_.substr(from, at_ - from);
    }

    /// What a reference means, at "&"; "" with `isKnown` false for the document's own entity.
    std::string reference(bool& isKnown) {
        const std::size_t end = std::min(text_.find(';', at_), text_.size());
        const std::string_view inner = text_.substr(at_ + 1, end - at_ - 1);
        step(end + 1 - at_);
        std::string result;
        if (inner == "lt") return "<";
        if (inner == "gt") return ">";
        if (inner == "amp") return "&";
        if (inner == "apos") return "'";
        if (inner == "quot") return "\"";
        if (inner.starts_with('#') && inner.size() < 12) {
            const bool isHex = inner.starts_with("#x");
            const std::string digits(inner.substr(isHex ? 2 : 1));
            appendUtf8(result, static_cast<std::uint32_t>(
                                   std::strtoul(digits.c_str(), nullptr, isHex ? 16 : 10)));
        } else {
            isKnown = false;
        }
        return result;
    }

    Attribute attribute() {
        Attribute result;
        result.place = place_;
        result.name = name();
        skipBlanks();
        if (sees("=")) step();
        skipBlanks();
        if (atEnd() || (text_[at_] != '"' && text_[at_] != '\'')) return result;
        const char quote = text_[at_];
        step();
        result.valuePlace = place_;
        while (!atEnd() && text_[at_] != quote) {
            if (text_[at_] == '&') {
                result.value += reference(result.isKnown);
            } else {
                result.value += isBlank(text_[at_]) ? ' ' : text_[at_];
                step();
            }
        }
        step();
        return result;
    }

    void addText(Element& parent, const std::string& piece, Place place) {
        if (parent.textPlace.line == 0 &&
            std::ranges::any_of(piece, [](char letter) { return !isBlank(letter); }))
            parent.textPlace = place;
        parent.text += piece;
    }

    void element(Element& parent, std::size_t depth) {
        Element child;
        child.place = place_;
        step();
        child.name = name();
        skipBlanks();
        while (!atEnd() && !sees(">") && !sees("/>")) {
            const std::size_t before = at_;
            child.attributes.push_back(attribute());
            skipBlanks();
            if (at_ == before) step();
        }
        const bool isClosed = sees("/>");
        step(isClosed ? 2 : 1);
        if (!isClosed) content(child, depth + 1);
        if (depth < kDeepest) parent.children.push_back(std::move(child));
    }

    /// Up to and over the end tag of `parent`. Recursion ends at kDeepest: what lies deeper is
    /// taken for children of that level, and dropped.
    void content(Element& parent, std::size_t depth) {
        std::size_t deeper = 0;  // open elements below the deepest level
        while (!atEnd()) {
            if (sees("<!--")) {
                skipPast("-->");
            } else if (sees("<?")) {
                skipPast("?>");
            } else if (sees("<![CDATA[")) {
                step(9);
                const Place place = place_;
                const std::size_t end = std::min(text_.find("]]>", at_), text_.size());
                addText(parent, std::string(text_.substr(at_, end - at_)), place);
                skipPast("]]>");
            } else if (sees("<!")) {
                skipDoctype();
            } else if (sees("</")) {
                skipPast(">");
                if (deeper == 0) return;
                --deeper;
            } else if (sees("<") && depth >= kDeepest) {
                const std::size_t end = std::min(text_.find('>', at_), text_.size());
                if (end > at_ && text_[end - 1] != '/') ++deeper;
                skipPast(">");
            } else if (sees("<")) {
                element(parent, depth);
            } else {
                character(parent);
            }
        }
    }

    void character(Element& parent) {
        const Place place = place_;
        if (text_[at_] == '&') {
            addText(parent, reference(parent.isTextKnown), place);
        } else {
            addText(parent, std::string(1, text_[at_]), place);
            step();
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    Place place_{1, 1};
};

}  // namespace

const Attribute* Element::attribute(std::string_view wanted) const {
    const auto found = std::ranges::find(attributes, wanted, &Attribute::name);
    return found == attributes.end() ? nullptr : &*found;
}

const Element* Element::child(std::string_view wanted) const {
    const auto found = std::ranges::find(children, wanted, &Element::name);
    return found == children.end() ? nullptr : &*found;
}

std::string utf8Of(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return fromUtf16(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF")) return fromUtf16(bytes.substr(2), true);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return std::string(bytes);
}

Element readSource(std::string_view bytes) {
    std::string text = utf8Of(bytes);
    const std::string encoding = declaredEncoding(text);
    if (encoding == "ISO-8859-1" || encoding == "WINDOWS-1252")
        text = fromBytes(text, encoding == "WINDOWS-1252");
    Element top = Scanner(text).read();
    return top.children.empty() ? Element{} : std::move(top.children.front());
}

}  // namespace lint
