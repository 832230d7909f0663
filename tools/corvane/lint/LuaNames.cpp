#include "lint/LuaNames.h"

#include <algorithm>
#include <cctype>

namespace lint {

namespace {

const std::set<std::string> kKeywords{"and",   "break", "do",       "else", "elseif", "end",
                                      "false", "for",   "function", "goto", "if",     "in",
                                      "local", "nil",   "not",      "or",   "repeat", "return",
                                      "then",  "true",  "until",    "while"};

struct Token {
    std::string text;  ///< Empty for a string.
    bool isName = false;
    std::int64_t line = 0;
    std::int64_t column = 0;
};

bool isLetter(char letter) {
    return std::isalpha(static_cast<unsigned char>(letter)) != 0 || letter == '_';
}

class Lexer {
public:
    explicit Lexer(std::string_view text) : text_(text) {
        if (text_.starts_with('#')) skipLine();
    }

    std::vector<Token> read() {
        std::vector<Token> tokens;
        while (at_ < text_.size()) {
            const char letter = text_[at_];
            if (letter == '-' && next(1) == '-')
                skipComment();
            else if (isLetter(letter))
                tokens.push_back(word());
            else if (letter == '"' || letter == '\'')
                skipString(letter), tokens.push_back({});
            else if (letter == '[' && longLevel() >= 0)
                skipLong(longLevel()), tokens.push_back({});
            else if (std::isdigit(static_cast<unsigned char>(letter)) != 0)
                skipNumber(), tokens.push_back({});
            else if (std::isspace(static_cast<unsigned char>(letter)) != 0)
                step();
            else
                tokens.push_back(sign());
        }
        return tokens;
    }

private:
    char next(std::size_t offset) const {
        return at_ + offset < text_.size() ? text_[at_ + offset] : '\0';
    }

    void step() {
        const char letter = text_[at_++];
        if (letter == '\n')
            ++line_, column_ = 1;
        else if ((static_cast<unsigned char>(letter) & 0xC0U) != 0x80)
            ++column_;
    }
    void skipTo(std::size_t end) {
        while (at_ < std::min(end, text_.size()))
            step();
    }
    void skipLine() { skipTo(text_.find('\n', at_)); }

    /// The number of "=" of a long bracket here, or -1.
    int longLevel() const {
        std::size_t level = 0;
        while (next(1 + level) == '=')
            ++level;
        return next(1 + level) == '[' ? static_cast<int>(level) : -1;
    }
    void skipLong(int level) {
        const std::string end = "]" + std::string(static_cast<std::size_t>(level), '=') + "]";
        const std::size_t found = text_.find(end, at_);
        skipTo(found == text_.npos ? text_.size() : found + end.size());
    }
    void skipComment() {
        step(), step();
        if (next(0) == '[' && longLevel() >= 0)
            skipLong(longLevel());
        else
            skipLine();
    }
    void skipString(char quote) {
        step();
        while (at_ < text_.size() && text_[at_] != quote) {
            if (text_[at_] == '\\' && at_ + 1 < text_.size()) step();
            step();
        }
        if (at_ < text_.size()) step();
    }
    void skipNumber() {
        while (at_ < text_.size() &&
               (isLetter(text_[at_]) || std::isdigit(static_cast<unsigned char>(text_[at_])) != 0 ||
                (text_[at_] == '.' && next(1) != '.')))
            step();
    }
    Token word() {
        Token token{"", true, line_, column_};
        while (at_ < text_.size() && (isLetter(text_[at_]) ||
                                      std::isdigit(static_cast<unsigned char>(text_[at_])) != 0)) {
            token.text += text_[at_];
            step();
        }
        token.isName = !kKeywords.contains(token.text);
        return token;
    }
    Token sign() {
        Token token{std::string(1, text_[at_]), false, line_, column_};
        for (const char* longer : {"==", "~=", "<=", ">=", "::", ".."})
            if (text_.substr(at_).starts_with(longer)) token.text = longer;
        for (std::size_t i = token.text.size(); i > 0; --i)
            step();
        return token;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::int64_t line_ = 1;
    std::int64_t column_ = 1;
};

/// Names that a text declares or assigns, wherever that is.
std::set<std::string> declaredNames(const std::vector<Token>& tokens) {
    std::set<std::string> names;
    const auto addList = [&](std::size_t i) {
        for (; i < tokens.size() &&
               (tokens[i].isName || tokens[i].text == "," || tokens[i].text == ".");
             ++i)
            if (tokens[i].isName) names.insert(tokens[i].text);
    };
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const std::string& text = tokens[i].text;
        if (text == "local" || text == "for") {
            // Attributes such as <const> are between the names of one list.
            for (std::size_t k = i + 1;
                 k < tokens.size() && (tokens[k].isName || tokens[k].text == "," ||
                                       tokens[k].text == "<" || tokens[k].text == ">");
                 ++k)
                names.insert(tokens[k].text);
        }
        if (text == "function") {
            addList(i + 1);
            const auto open =
                std::find_if(tokens.begin() + static_cast<std::ptrdiff_t>(i), tokens.end(),
                             [](const Token& token) { return token.text == "("; });
            addList(static_cast<std::size_t>(open - tokens.begin()) + 1);
        }
        if (text == "=" && i > 0 && tokens[i - 1].isName) names.insert(tokens[i - 1].text);
        if (text == "goto" && i + 1 < tokens.size()) names.insert(tokens[i + 1].text);
        if (text == "::" && i + 1 < tokens.size()) names.insert(tokens[i + 1].text);
    }
    return names;
}

}  // namespace

LuaNames namesOf(std::string_view text) {
    const std::vector<Token> tokens = Lexer(text).read();
    const std::set<std::string> declared = declaredNames(tokens);
    const auto at = [&tokens](std::size_t i) {
        return i < tokens.size() ? tokens[i].text : std::string();
    };
    LuaNames result;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (!tokens[i].isName) continue;
        const std::string before = i > 0 ? tokens[i - 1].text : std::string();
        const LuaName name{tokens[i].text, tokens[i].line, tokens[i].column};
        if (before == "." && i >= 2 && at(i - 2) == "params" && !declared.contains("params"))
            result.parameters.push_back(name);
        if (before == "." || before == ":" || declared.contains(name.name)) continue;
        result.globals.push_back(name);
    }
    return result;
}

bool isKeyword(const std::string& word) {
    return kKeywords.contains(word);
}

const std::set<std::string>& hostNames() {
    static const std::set<std::string> names{
        "_G", "_VERSION", "_ENV", "assert", "coroutine", "error", "getmetatable", "ipairs", "load",
        "math", "next", "pairs", "pcall", "print", "rawequal", "rawget", "rawlen", "rawset",
        "select", "setmetatable", "string", "table", "tonumber", "tostring", "type", "utf8",
        "xpcall",
        // What the host adds of the run: findings, parameters, the part and the rule database.
        "result", "params", "part", "db"};
    return names;
}

}  // namespace lint
