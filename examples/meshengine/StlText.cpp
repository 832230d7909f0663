#include <algorithm>
#include <charconv>
#include <cstddef>
#include <initializer_list>

#include "MeshReader.h"
#include "StlFormat.h"

namespace meshengine {
namespace {

bool isBlank(char unit) {
    return unit == ' ' || (unit >= '\t' && unit <= '\r');
}

/// Words of the text, with the line that each is on.
class Words {
public:
    explicit Words(std::string_view text) : text_(text) {}

    /// The next word, or an empty one at the end.
    std::string_view next() {
        while (position_ < text_.size() && isBlank(text_[position_]))
            if (text_[position_++] == '\n') ++line_;
        const std::size_t start = position_;
        while (position_ < text_.size() && !isBlank(text_[position_]))
            ++position_;
        return text_.substr(start, position_ - start);
    }
    void skipLine() { position_ = std::min(text_.find_first_of("\r\n", position_), text_.size()); }
    std::size_t line() const { return line_; }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t line_ = 1;
};

char lower(char unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
}

bool sameWord(std::string_view word, std::string_view keyword) {
    return std::equal(word.begin(), word.end(), keyword.begin(), keyword.end(),
                      [](char a, char b) { return lower(a) == b; });
}

class TextParser {
public:
    TextParser(std::string_view text, std::string& error) : words_(text), error_(error) {}

    Corners parse() {
        if (!expect({"solid"})) return std::nullopt;
        do {
            words_.skipLine();  // the name of the solid is free text
            if (!solid()) return std::nullopt;
            word_ = words_.next();
        } while (sameWord(word_, "solid"));
        if (!word_.empty()) return fail("\"solid\" or the end of the file"), std::nullopt;
        return std::move(corners_);
    }

private:
    static std::string quoted(std::string_view word) {
        return std::string(1, '"').append(word).append(1, '"');
    }

    bool fail(std::string_view expected) {
        error_ = "line " + std::to_string(words_.line()) + ": expected ";
        error_.append(expected).append(", found ");
        error_ += word_.empty() ? "the end of the file" : quoted(word_.substr(0, 40));
        return false;
    }

    bool expect(std::initializer_list<std::string_view> keywords) {
        for (const std::string_view keyword : keywords) {
            word_ = words_.next();
            if (!sameWord(word_, keyword)) return fail(quoted(keyword));
        }
        return true;
    }

    bool coordinate(double& value) {
        word_ = words_.next();
        std::string_view digits = word_;
        if (digits.starts_with('+')) digits.remove_prefix(1);
        const char* end = digits.data() + digits.size();
        const auto [stop, status] = std::from_chars(digits.data(), end, value);
        return (status == std::errc{} && stop == end) || fail("a number");
    }

    bool point(Vector& value) {
        if (!coordinate(value.x) || !coordinate(value.y) || !coordinate(value.z)) return false;
        return usableCoordinates(value) || fail("finite coordinates");
    }

    bool facet() {
        Vector value;
        if (!expect({"normal"}) || !point(value) || !expect({"outer", "loop"})) return false;
        for (int i = 0; i < 3; ++i) {
            if (!expect({"vertex"}) || !point(value)) return false;
            corners_.push_back(value);
        }
        return expect({"endloop", "endfacet"});
    }

    bool solid() {
        for (;;) {
            word_ = words_.next();
            if (sameWord(word_, "endsolid")) break;
            if (!sameWord(word_, "facet")) return fail("\"facet\" or \"endsolid\"");
            if (corners_.size() / 3 == kMaxTriangles) {
                error_ = "more than " + std::to_string(kMaxTriangles) + " triangles";
                return false;
            }
            if (!facet()) return false;
        }
        words_.skipLine();
        return true;
    }

    Words words_;
    std::string& error_;
    std::string_view word_;
    std::vector<Vector> corners_;
};

}  // namespace

Corners parseTextStl(std::string_view text, std::string& error) {
    return TextParser(text, error).parse();
}

}  // namespace meshengine
