#include "xml/PlainParser.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "system/Unicode.h"

namespace corvane::xml {
namespace {

// Far below every limit of the parsing library and of Parse, so that none has to be kept here.
constexpr std::size_t kMostDepth = 200;
constexpr std::size_t kMostAttributesHere = 16;
constexpr std::size_t kMostNamesHere = 1000;
constexpr std::size_t kLargestPiece = std::size_t{1} << 20;

enum Class : std::uint8_t { kNameStart = 1, kNameRest = 2, kText = 4, kValue = 8, kBlank = 16 };

// What each byte may be. The zero after the end is nothing, so it ends every run.
constexpr std::array<std::uint8_t, 256> kClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (std::size_t byte = 0x20; byte < classes.size(); ++byte)
        classes[byte] = kText | kValue;
    for (const char letter :
         std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_"))
        classes[static_cast<std::uint8_t>(letter)] |= kNameStart | kNameRest;
    for (const char digit : std::string_view("0123456789.-"))
        classes[static_cast<std::uint8_t>(digit)] |= kNameRest;
    for (const char special : std::string_view("<&]"))
        classes[static_cast<std::uint8_t>(special)] &= static_cast<std::uint8_t>(~kText);
    for (const char special : std::string_view("<&"))
        classes[static_cast<std::uint8_t>(special)] &= static_cast<std::uint8_t>(~kValue);
    classes['\t'] = kText | kBlank;
    classes['\n'] = kBlank;
    classes[' '] |= kBlank;
    return classes;
}();

bool is(char byte, Class wanted) {
    return (kClasses[static_cast<std::uint8_t>(byte)] & wanted) != 0;
}

// True when all that is no ASCII is a character that XML admits.
bool isAdmitted(std::string_view bytes) {
    constexpr std::string_view kNoCharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};
    return system::isUtf8(bytes) &&
           std::none_of(std::begin(kNoCharacters), std::end(kNoCharacters),
                        [bytes](std::string_view no) { return bytes.find(no) != bytes.npos; });
}

class PlainParser {
public:
    PlainParser(std::string_view source, TreeBuilder& builder)
        : at_(source.data()), end_(source.data() + source.size()), builder_(builder) {}

    bool run() {
        if (!passDeclaration() || !passMisc() || !startTag()) return false;
        while (!open_.empty()) {
            if (!construct()) return false;
        }
        return passMisc() && at_ == end_;
    }

private:
    struct Attribute {
        const Name* name;
        std::string_view value;  // As it stands in the source.
        bool hasReferences;
    };
    struct Reference {
        std::string_view text;
        std::string_view character;
    };

    std::string_view rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }
    std::string_view from(const char* start) const {
        return {start, static_cast<std::size_t>(at_ - start)};
    }
    bool pass(std::string_view expected) {
        if (!rest().starts_with(expected)) return false;
        at_ += expected.size();
        return true;
    }
    bool pass(char expected) {
        if (*at_ != expected) return false;
        ++at_;
        return true;
    }
    void passBlanks() {
        for (; is(*at_, kBlank); ++at_)
            line_ += *at_ == '\n';
    }

    bool passDeclaration() {
        if (!pass("<?xml version=\"1.0\"")) return true;
        static_cast<void>(pass(" encoding=\"UTF-8\"") || pass(" encoding=\"utf-8\""));
        return pass("?>");
    }

    // White space and comments outside the document element.
    bool passMisc() {
        while (true) {
            passBlanks();
            if (!rest().starts_with("<!")) return true;
            if (!comment()) return false;
        }
    }

    // What comes next within the document element.
    bool construct() {
        if (*at_ != '<') return text();
        if (at_[1] == '/') return endTag();
        return at_[1] == '!' ? comment() : startTag();
    }

    const Name* name() {
        const char* const start = at_;
        if (!is(*at_, kNameStart)) return nullptr;
        while (is(*at_, kNameRest))
            ++at_;
        if (*at_ == ':') return nullptr;
        const std::string_view text = from(start);
        const auto key = text.size() * 31 + static_cast<std::uint8_t>(text.front()) * 7U +
                         static_cast<std::uint8_t>(text.back());
        auto& [known, found] = recent_[key % recent_.size()];
        if (known != text) {
            found = newOrKnown(text);
            known = text;
        }
        return found;
    }

    const Name* newOrKnown(std::string_view text) {
        if (text == "xmlns" || text.size() > kLargestPiece) return nullptr;
        const Name*& known = names_[text];
        if (names_.size() > kMostNamesHere) return nullptr;
        if (!known) known = Name::makeIn(builder_.pool(), system::fromUtf8(text));
        return known;
    }

    bool startTag() {
        const std::uint32_t line = line_;
        if (!pass('<')) return false;
        const char* const start = at_;
        const Name* const tag = name();
        if (!tag) return false;
        const std::string_view written = from(start);
        std::size_t count = 0;
        while (true) {
            const bool parted = is(*at_, kBlank);
            passBlanks();
            if (*at_ == '>' || *at_ == '/') break;
            if (!parted || count == attributes_.size() || !attribute(attributes_[count]))
                return false;
            const auto isSame = [&](const Attribute& other) {
                return other.name == attributes_[count].name;
            };
            if (std::any_of(attributes_.data(), attributes_.data() + count, isSame)) return false;
            ++count;
        }
        builder_.startElement(tag, line, count);
        for (std::size_t i = 0; i < count; ++i)
            builder_.attribute(attributes_[i].name, valueOf(attributes_[i]));
        open_.push_back(written);
        return pass('>') ? open_.size() <= kMostDepth : pass("/>") && close();
    }

    bool attribute(Attribute& made) {
        made.name = name();
        passBlanks();
        if (!made.name || !pass('=')) return false;
        passBlanks();
        const char quote = *at_;
        if (quote != '"' && quote != '\'') return false;
        const char* const start = ++at_;
        made.hasReferences = false;
        while (*at_ != quote) {
            if (is(*at_, kValue)) {
                ++at_;
            } else {
                if (!reference()) return false;
                made.hasReferences = true;
            }
        }
        made.value = from(start);
        ++at_;
        return made.value.size() <= kLargestPiece;
    }

    // The value of an attribute, until the next one is asked for.
    std::string_view valueOf(const Attribute& attribute) {
        if (!attribute.hasReferences) return attribute.value;
        value_.clear();
        std::string_view left = attribute.value;
        while (!left.empty()) {
            const std::size_t plain = std::min(left.find('&'), left.size());
            value_ += left.substr(0, plain);
            left.remove_prefix(plain);
            if (const Reference* const found = referenceAt(left)) {
                value_ += found->character;
                left.remove_prefix(found->text.size());
            }
        }
        return value_;
    }

    static const Reference* referenceAt(std::string_view text) {
        static constexpr Reference kReferences[] = {
            {"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}, {"&quot;", "\""}, {"&apos;", "'"}};
        const auto* const found =
            std::find_if(std::begin(kReferences), std::end(kReferences),
                         [text](const Reference& known) { return text.starts_with(known.text); });
        return found == std::end(kReferences) ? nullptr : found;
    }

    const Reference* reference() {
        const Reference* const found = referenceAt(rest());
        if (found) at_ += found->text.size();
        return found;
    }

    bool endTag() {
        at_ += 2;
        if (!pass(open_.back())) return false;
        passBlanks();
        return pass('>') && close();
    }

    bool close() {
        open_.pop_back();
        builder_.endElement();
        return true;
    }

    bool text() {
        const char* start = at_;
        passText();
        if (*at_ == '<') {
            builder_.text(from(start));
            return from(start).size() <= kLargestPiece;
        }
        while (*at_ == '&') {
            builder_.characters(from(start), false);
            const Reference* const found = reference();
            if (!found) return false;
            builder_.characters(found->character, true);
            start = at_;
            passText();
        }
        builder_.characters(from(start), false);
        return *at_ == '<' && from(start).size() <= kLargestPiece;
    }

    void passText() {
        while (true) {
            while (is(*at_, kText))
                ++at_;
            if (*at_ == '\n')
                ++line_;
            else if (*at_ != ']' || rest().starts_with("]]>"))
                return;
            ++at_;
        }
    }

    bool comment() {
        if (!pass("<!--")) return false;
        const std::size_t size = std::min(rest().find("--"), kLargestPiece);
        if (size == kLargestPiece) return false;
        const std::string_view content = rest().substr(0, size);
        const auto isOdd = [](char byte) {
            return static_cast<std::uint8_t>(byte) < 0x20 && !is(byte, kBlank);
        };
        if (std::any_of(content.begin(), content.end(), isOdd)) return false;
        line_ += static_cast<std::uint32_t>(std::count(content.begin(), content.end(), '\n'));
        at_ += size;
        builder_.data(Kind::Comment, content);
        return pass("-->");
    }

    const char* at_;
    const char* end_;
    TreeBuilder& builder_;
    std::uint32_t line_ = 1;
    std::vector<std::string_view> open_;
    std::array<Attribute, kMostAttributesHere> attributes_{};
    std::string value_;
    std::unordered_map<std::string_view, const Name*> names_;
    // The few names of most documents are found here.
    std::array<std::pair<std::string_view, const Name*>, 256> recent_{};
};

}  // namespace

bool parsePlain(std::string_view utf8, TreeBuilder& builder) {
    return (system::isAscii(utf8) || isAdmitted(utf8)) && PlainParser(utf8, builder).run();
}

}  // namespace corvane::xml
