#include "xml/Serializer.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "system/Unicode.h"
#include "xml/Attributes.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

struct Utf16Output {
    std::u16string text;
    void put(std::string_view ascii) { text.append(ascii.begin(), ascii.end()); }
    void put(std::u16string_view units) { text += units; }
    std::u16string take() { return std::move(text); }
};

// Gathers pieces, most of which are a few units of ASCII, before they are handed on.
class Utf8Output {
public:
    explicit Utf8Output(const system::ByteSink& sink) : sink_(sink) {}

    void put(std::string_view ascii) {
        if (!fits(ascii.size())) flush();
        std::copy(ascii.begin(), ascii.end(), buffer_.get() + used_);
        used_ += ascii.size();
    }
    void put(std::u16string_view units) {
        if (!fits(units.size())) flush();
        if (fits(units.size())) {
            char16_t bits = 0;
            for (std::size_t i = 0; i < units.size(); ++i) {
                bits |= units[i];
                buffer_[used_ + i] = static_cast<char>(units[i]);
            }
            if (bits < 0x80) {
                used_ += units.size();
                return;
            }
            flush();
        }
        hand(system::toUtf8(units));
    }
    // True when the sink has taken all that was put.
    bool finish() {
        flush();
        return taken_;
    }

private:
    static constexpr std::size_t kSize = std::size_t{1} << 16;

    bool fits(std::size_t size) const { return size <= kSize - used_; }
    void flush() { hand({buffer_.get(), std::exchange(used_, 0)}); }
    void hand(std::string_view bytes) { taken_ = taken_ && (bytes.empty() || sink_(bytes)); }

    const system::ByteSink& sink_;
    std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>(kSize);
    std::size_t used_ = 0;
    bool taken_ = true;
};

// A bit for each unit that is escaped somewhere; none of them is above '>'.
constexpr std::uint64_t kEscaped = [] {
    std::uint64_t bits = 0;
    for (const char16_t unit : std::u16string_view(u"&<>\r\"\n\t"))
        bits |= std::uint64_t{1} << unit;
    return bits;
}();

// What stands for a unit, or nothing when it stands for itself. White space that a load would
// change is written as a reference: all but blanks in an attribute, a carriage return in a text.
std::string_view escapeOf(char16_t unit, bool inAttribute) {
    switch (unit) {
        case u'&':
            return "&amp;";
        case u'<':
            return "&lt;";
        case u'>':
            return "&gt;";
        case u'\r':
            return "&#13;";
        case u'"':
            return inAttribute ? "&quot;" : "";
        case u'\n':
            return inAttribute ? "&#10;" : "";
        case u'\t':
            return inAttribute ? "&#9;" : "";
        default:
            return "";
    }
}

std::string_view referenceTo(char16_t white) {
    switch (white) {
        case u' ':
            return "&#32;";
        case u'\t':
            return "&#9;";
        case u'\n':
            return "&#10;";
        default:
            return "&#13;";
    }
}

template <typename Output>
class Serializer {
public:
    template <typename... Arguments>
    explicit Serializer(const Arguments&... arguments) : out_(arguments...) {}

    Output& output() { return out_; }

    void write(const Node& top) {
        const Node* at = &top;
        while (true) {
            if (open(*at)) {
                at = asElement(at)->firstChild();
                continue;
            }
            while (at != &top && !at->next) {
                at = at->parent;
                close(*asElement(at));
            }
            if (at == &top) return;
            at = at->next;
        }
    }

private:
    // True when the node has children, which come next.
    bool open(const Node& node) {
        if (node.blankBefore) lineBreak(node.previous(), node);
        switch (node.kind) {
            case Kind::Element:
                return openElement(*asElement(&node));
            case Kind::Text:
                writeText(asData(&node)->content());
                break;
            case Kind::CData:
                enclose("<![CDATA[", node, "]]>");
                break;
            case Kind::Comment:
                enclose("<!--", node, "-->");
                break;
            case Kind::Instruction:
                enclose("<?", node, "?>");
                break;
            case Kind::DocType:
                enclose("<!DOCTYPE ", node, ">");
                break;
            case Kind::Document:
                break;
        }
        return false;
    }

    bool openElement(const Element& element) {
        out_.put("<");
        out_.put(element.name->view());
        bool preserve = !preserve_.empty() && preserve_.back();
        for (const Attribute& at : attributesOf(element)) {
            out_.put(" ");
            out_.put(at.name->view());
            out_.put("=\"");
            escape(at.value(), true);
            out_.put("\"");
            if (at.name->view() == u"xml:space") preserve = at.value() == u"preserve";
        }
        if (!element.hasContent()) {
            out_.put("/>");
            return false;
        }
        out_.put(">");
        if (const Text* text = element.onlyText()) {
            writeText(*text);
            endTag(element);
            return false;
        }
        preserve_.push_back(preserve);
        return true;
    }

    void close(const Element& element) {
        if (element.blankAtEnd) lineBreak(element.lastChild(), element);
        preserve_.pop_back();
        endTag(element);
    }

    void endTag(const Element& element) {
        out_.put("</");
        out_.put(element.name->view());
        out_.put(">");
    }

    // White space that a load takes for nothing: not beside a text, and not where all counts.
    void lineBreak(const Node* before, const Node& behind) {
        if (preserve_.empty() || preserve_.back()) return;
        if ((before && before->kind == Kind::Text) || behind.kind == Kind::Text) return;
        out_.put("\n");
    }

    void enclose(std::string_view start, const Node& node, std::string_view end) {
        out_.put(start);
        out_.put(asData(&node)->text());
        out_.put(end);
    }

    void writeText(const Text& written) {
        std::u16string_view text = written.view();
        const RawEnds raw = written.raw();
        const std::u16string_view trailing = text.substr(text.size() - raw.trailing);
        text.remove_suffix(raw.trailing);
        escape(text.substr(0, raw.leading), false);
        text.remove_prefix(raw.leading);
        // A reference at an end keeps a load from taking the white space there for nothing.
        if (!text.empty() && isWhite(text.front())) {
            out_.put(referenceTo(text.front()));
            text.remove_prefix(1);
        }
        const bool keepEnd = !text.empty() && isWhite(text.back());
        escape(text.substr(0, text.size() - (keepEnd ? 1 : 0)), false);
        if (keepEnd) out_.put(referenceTo(text.back()));
        escape(trailing, false);
    }

    void escape(std::u16string_view text, bool inAttribute) {
        std::size_t start = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] > u'>' || (kEscaped >> text[i] & 1) == 0) continue;
            const std::string_view escaped = escapeOf(text[i], inAttribute);
            if (escaped.empty()) continue;
            out_.put(text.substr(start, i - start));
            out_.put(escaped);
            start = i + 1;
        }
        out_.put(text.substr(start));
    }

    Output out_;
    // For each open element whether all white space in it counts.
    std::vector<bool> preserve_;
};

}  // namespace

std::u16string serialized(const Element& element) {
    Serializer<Utf16Output> serializer;
    serializer.write(element);
    return serializer.output().take();
}

bool serializeFile(const Element& document, const system::ByteSink& sink) {
    Serializer<Utf8Output> serializer(sink);
    serializer.output().put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    for (const Node* at = document.firstChild(); at; at = at->next) {
        serializer.write(*at);
        serializer.output().put("\n");
    }
    return serializer.output().finish();
}

}  // namespace corvane::xml
