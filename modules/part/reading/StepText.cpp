#include "StepText.h"

#include <algorithm>
#include <charconv>

namespace corvane::part::reading {
namespace {

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz0123456789";

/// Takes statements apart, each up to its semicolon.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    /// Whether there was another statement. One that is no instance has the number 0.
    bool next(StepRecord& record) {
        record.number = 0;
        record.keywords.clear();
        record.texts.clear();
        record.references.clear();
        depth_ = 0;
        bool first = true;
        while (!rest_.empty() && rest_.front() != ';') {
            const char c = rest_.front();
            if (c == '#' && first)
                record.number = takeNumber();
            else
                takeToken(c, record);
            if (c != ' ' && c != '\n' && c != '\r' && c != '\t' && !comment_) first = false;
        }
        if (rest_.empty()) return false;
        rest_.remove_prefix(1);
        return true;
    }

private:
    void takeToken(char c, StepRecord& record) {
        comment_ = false;
        if (c == '#') {
            if (const std::uint64_t number = takeNumber()) record.references.push_back(number);
        } else if (c == '\'') {
            record.texts.push_back(takeText());
        } else if (c == '"') {
            drop(after(rest_.find('"', 1), 1));
        } else if (rest_.starts_with("/*")) {
            comment_ = true;
            drop(after(rest_.find("*/", 2), 2));
        } else if (kLetters.find(c) != kLetters.npos) {
            const std::string_view word =
                rest_.substr(0, std::min(rest_.find_first_not_of(kLetters), rest_.size()));
            drop(word.size());
            // Deeper ones name the type of a value.
            if (depth_ <= 1 && rest_.starts_with('(')) record.keywords.push_back(word);
        } else {
            if (c == '(') ++depth_;
            if (c == ')') --depth_;
            drop(1);
        }
    }

    void drop(std::size_t size) { rest_.remove_prefix(std::min(size, rest_.size())); }
    [[nodiscard]] std::size_t after(std::size_t found, std::size_t size) const {
        return found == rest_.npos ? rest_.size() : found + size;
    }

    std::uint64_t takeNumber() {
        std::uint64_t number = 0;
        const auto [stop, error] =
            std::from_chars(rest_.data() + 1, rest_.data() + rest_.size(), number);
        drop(std::max<std::size_t>(1, static_cast<std::size_t>(stop - rest_.data())));
        return error == std::errc() ? number : 0;
    }

    /// A quote within a text is written twice.
    std::string_view takeText() {
        std::size_t end = rest_.find('\'', 1);
        while (end != rest_.npos && rest_.substr(end + 1).starts_with('\''))
            end = rest_.find('\'', end + 2);
        const std::string_view text = rest_.substr(1, end == rest_.npos ? end : end - 1);
        drop(after(end, 1));
        return text;
    }

    std::string_view rest_;
    int depth_ = 0;
    bool comment_ = false;
};

/// Characters of code points that are written with a fixed number of hexadecimal digits.
class Decoder {
public:
    explicit Decoder(std::string_view text) : rest_(text) {}

    std::string decode(std::size_t most) {
        while (!rest_.empty() && out_.size() < most) {
            if (rest_.starts_with("\\X2\\"))
                run(4);
            else if (rest_.starts_with("\\X4\\"))
                run(8);
            else if (rest_.starts_with("\\X\\"))
                rest_.remove_prefix(3), addHex(2);
            else if (rest_.starts_with("\\S\\") && rest_.size() > 3)
                add(static_cast<unsigned char>(rest_[3]) + 128U), rest_.remove_prefix(4);
            else if (rest_.starts_with("\\P") && rest_.size() > 3 && rest_[3] == '\\')
                rest_.remove_prefix(4);  // which alphabet: that of western Europe is taken
            else
                one();
        }
        cut(most);
        return out_;
    }

private:
    void one() {
        const char c = rest_.front();
        const bool twice = (c == '\'' || c == '\\') && rest_.substr(1).starts_with(c);
        const auto byte = static_cast<unsigned char>(c);
        // A control character is a line end or nothing; other bytes are UTF-8 in new files.
        if (byte >= 0x20 && byte != 0x7F)
            out_ += c;
        else if (byte != '\r' && !out_.empty() && out_.back() != ' ')
            out_ += ' ';
        rest_.remove_prefix(twice ? 2 : 1);
    }

    void run(std::size_t digits) {
        rest_.remove_prefix(4);
        while (!rest_.empty() && rest_.front() != '\\' && rest_.size() >= digits)
            addHex(digits);
        const bool ended = rest_.starts_with("\\X0\\");
        rest_.remove_prefix(ended ? 4 : std::min<std::size_t>(rest_.size(), rest_.find('\\')));
    }

    void addHex(std::size_t digits) {
        const std::string_view hex = rest_.substr(0, digits);
        rest_.remove_prefix(hex.size());
        std::uint32_t code = 0;
        const auto [stop, error] = std::from_chars(hex.data(), hex.data() + hex.size(), code, 16);
        if (error == std::errc() && stop == hex.data() + hex.size()) add(code);
    }

    void add(std::uint32_t code) {
        const auto byte = [this](std::uint32_t bits) { out_ += static_cast<char>(bits); };
        if (code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0xD800 && code < 0xE000) ||
            code > 0x10FFFF)
            return;
        if (code < 0x80) return byte(code);
        if (code < 0x800) {
            byte(0xC0 | code >> 6);
        } else {
            if (code < 0x10000) {
                byte(0xE0 | code >> 12);
            } else {
                byte(0xF0 | code >> 18);
                byte(0x80 | (code >> 12 & 0x3F));
            }
            byte(0x80 | (code >> 6 & 0x3F));
        }
        byte(0x80 | (code & 0x3F));
    }

    /// Never within a character.
    void cut(std::size_t most) {
        if (out_.size() <= most) return;
        while (most > 0 && (static_cast<unsigned char>(out_[most]) & 0xC0) == 0x80)
            --most;
        out_.resize(most);
    }

    std::string_view rest_;
    std::string out_;
};

}  // namespace

bool StepRecord::is(std::string_view keyword) const {
    return std::find(keywords.begin(), keywords.end(), keyword) != keywords.end();
}

void eachStepRecord(std::string_view text, const std::function<void(const StepRecord&)>& visit) {
    Reader reader(text);
    StepRecord record;
    while (reader.next(record))
        if (record.number > 0) visit(record);
}

std::string decodeStepText(std::string_view text, std::size_t most) {
    return Decoder(text).decode(most);
}

}  // namespace corvane::part::reading
