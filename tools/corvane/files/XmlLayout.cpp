#include "files/XmlLayout.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kWidest = 120;
constexpr std::string_view kWhite = " \t\r\n";
constexpr std::string_view kNamed[] = {
    "Name",   "Type", "Status",   "LifeStatus",   "Value",        "Description", "Source",
    "Module", "File", "Severity", "RuleCategory", "CategoryText", "ModuleFile"};

enum class Kind { Text, Open, Empty, Close, Other };

struct Token {
    Kind kind;
    std::string_view text;
    std::size_t partner = 0;  ///< Of Open: the place of its Close.
    bool isVerbatim = false;  ///< Of Open: its content counts as it is.
};

bool isBlank(std::string_view text) {
    return text.find_first_not_of(kWhite) == text.npos;
}

/// The end of a tag or declaration that begins at `at`: after the ">" outside quotes and brackets.
std::size_t endOfTag(std::string_view xml, std::size_t at) {
    int brackets = 0;
    for (char quote = 0; at < xml.size(); ++at) {
        const char unit = xml[at];
        if (quote != 0)
            quote = unit == quote ? '\0' : quote;
        else if (unit == '"' || unit == '\'')
            quote = unit;
        else if (unit == '[' || unit == ']')
            brackets += unit == '[' ? 1 : -1;
        else if (unit == '>' && brackets <= 0)
            return at + 1;
    }
    return xml.size();
}

std::size_t endOfMarkup(std::string_view xml, std::size_t at) {
    constexpr std::pair<std::string_view, std::string_view> kEnclosed[] = {
        {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (const auto& [start, end] : kEnclosed) {
        if (!xml.substr(at).starts_with(start)) continue;
        const std::size_t found = xml.find(end, at + start.size());
        return found == xml.npos ? xml.size() : found + end.size();
    }
    return endOfTag(xml, at);
}

Kind kindOf(std::string_view markup) {
    if (markup.starts_with("<![CDATA[")) return Kind::Text;
    if (markup.starts_with("<!") || markup.starts_with("<?")) return Kind::Other;
    if (markup.starts_with("</")) return Kind::Close;
    return markup.ends_with("/>") ? Kind::Empty : Kind::Open;
}

bool preserves(std::string_view tag) {
    return tag.find("xml:space=\"preserve\"") != tag.npos ||
           tag.find("xml:space='preserve'") != tag.npos;
}

std::vector<Token> tokensOf(std::string_view xml) {
    std::vector<Token> tokens;
    std::vector<std::size_t> open;
    for (std::size_t at = 0; at < xml.size();) {
        const bool isMarkup = xml[at] == '<';
        const std::size_t end =
            isMarkup ? endOfMarkup(xml, at) : std::min(xml.find('<', at), xml.size());
        const std::string_view text = xml.substr(at, end - at);
        const Kind kind = isMarkup ? kindOf(text) : Kind::Text;
        tokens.push_back({kind, text, 0, kind == Kind::Open && preserves(text)});
        if (kind == Kind::Open) {
            open.push_back(tokens.size() - 1);
        } else if (kind == Kind::Close && !open.empty()) {
            tokens[open.back()].partner = tokens.size() - 1;
            open.pop_back();
        } else if (kind == Kind::Text && !isBlank(text) && !open.empty()) {
            tokens[open.back()].isVerbatim = true;
        }
        at = end;
    }
    return tokens;
}

/// The name of a tag and its attributes, each with its value in quotes.
struct Tag {
    explicit Tag(std::string_view text) : isEmpty(text.ends_with("/>")) {
        text.remove_prefix(1);
        text.remove_suffix(isEmpty ? 2 : 1);
        name = text.substr(0, text.find_first_of(kWhite));
        text.remove_prefix(name.size());
        while (!isBlank(text)) {
            text.remove_prefix(text.find_first_not_of(kWhite));
            const std::size_t quote = text.find_first_of("\"'");
            const std::size_t end = quote == text.npos ? quote : text.find(text[quote], quote + 1);
            if (end == text.npos) break;
            const std::string_view key = text.substr(0, text.find_first_of(" \t\r\n="));
            attributes.push_back(std::string(key) + "=" +
                                 std::string(text.substr(quote, end - quote + 1)));
            text.remove_prefix(end + 1);
        }
        std::ranges::stable_sort(attributes, {}, placeOf);
    }

    static std::size_t placeOf(const std::string& attribute) {
        const std::string_view key = std::string_view(attribute).substr(0, attribute.find('='));
        return static_cast<std::size_t>(std::ranges::find(kNamed, key) - std::begin(kNamed));
    }

    std::string printed(const std::string& margin) const {
        std::string text = margin + "<" + std::string(name);
        const std::string next = "\n" + std::string(margin.size() + name.size() + 1, ' ');
        std::size_t column = text.size();
        for (const std::string& attribute : attributes) {
            const bool breaks = column + attribute.size() + 3 > kWidest && column > next.size();
            if (breaks) text += next, column = next.size() - 1;
            text += " " + attribute;
            column += attribute.size() + 1;
        }
        return text + (isEmpty ? "/>" : ">");
    }

    bool isEmpty;
    std::string_view name;
    std::vector<std::string> attributes;
};

class Layout {
public:
    Layout(std::vector<Token> tokens, const std::string& indent)
        : tokens_(std::move(tokens)), indent_(indent) {}

    std::string print() {
        for (std::size_t i = 0; i < tokens_.size(); ++i)
            i = put(i);
        return std::move(text_);
    }

private:
    /// Prints a token, or an element as a whole; the place of the last token that it took.
    std::size_t put(std::size_t i) {
        const Token& token = tokens_[i];
        switch (token.kind) {
            case Kind::Text:
                isApart_ = std::ranges::count(token.text, '\n') > 1;
                return i;
            case Kind::Open:
                return putElement(i);
            case Kind::Close:
                if (!margin_.empty()) margin_.resize(margin_.size() - indent_.size());
                isApart_ = false;
                line(margin_ + std::string(token.text));
                return i;
            case Kind::Empty:
                line(Tag(token.text).printed(margin_));
                return i;
            case Kind::Other:
                break;
        }
        line(margin_ + std::string(token.text));
        return i;
    }

    std::size_t putElement(std::size_t i) {
        const Token& token = tokens_[i];
        Tag tag(token.text);
        const bool isVerbatim = token.isVerbatim;
        const bool hasNothing = std::all_of(
            tokens_.begin() + static_cast<std::ptrdiff_t>(i) + 1,
            tokens_.begin() + static_cast<std::ptrdiff_t>(std::max(token.partner, i + 1)),
            [](const Token& inside) { return inside.kind == Kind::Text; });
        if (!isVerbatim && !hasNothing) {
            line(tag.printed(margin_));
            margin_ += indent_;
            isApart_ = false;
            return i;
        }
        tag.isEmpty = !isVerbatim;
        std::string text = tag.printed(margin_);
        for (std::size_t k = i + 1; isVerbatim && k <= token.partner; ++k)
            text += tokens_[k].text;
        line(text);
        return std::max(token.partner, i);
    }

    void line(const std::string& text) {
        if (isApart_ && !text_.empty()) text_ += '\n';
        isApart_ = false;
        text_ += text + '\n';
    }

    std::vector<Token> tokens_;
    const std::string& indent_;
    std::string margin_;
    std::string text_;
    bool isApart_ = false;  ///< A blank line comes next.
};

}  // namespace

std::string indentOf(std::string_view xml) {
    for (std::size_t at = xml.find('\n'); at != xml.npos; at = xml.find('\n', at + 1)) {
        const std::size_t end = xml.find_first_not_of(" \t", at + 1);
        if (end == xml.npos || end == at + 1) continue;
        if (xml[end] == '<') return std::string(xml.substr(at + 1, end - at - 1));
    }
    return kUsualIndent;
}

std::string laidOut(std::string_view xml, const std::string& indent) {
    if (xml.starts_with("\xEF\xBB\xBF")) xml.remove_prefix(3);
    if (xml.starts_with("<?xml")) xml.remove_prefix(std::min(xml.find("?>"), xml.size() - 2) + 2);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + Layout(tokensOf(xml), indent).print();
}
