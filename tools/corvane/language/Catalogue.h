#pragma once

#include <cstddef>
#include <span>
#include <string_view>

// The texts that people read, in the four languages that the library has texts in. The English text
// is the key: code says what it means, and the compiler looks the text up. "{0}" is the first
// argument, and each language has them in an order of its own.
namespace language {

/// A text that is counted, so that looking it up in a constant takes few steps.
struct Literal {
    template <std::size_t Size>
    consteval Literal(const char (&text)[Size]) : view(text, Size - 1) {}

    std::string_view view;
};

/// One text. All four have the same placeholders.
struct Translation {
    consteval Translation(Literal english, Literal french, Literal japanese, Literal korean)
        : texts{english.view, french.view, japanese.view, korean.view} {}

    std::string_view texts[4];  ///< In the order of `Language`.
};

/// A text that counts something, for one and for several.
struct CountedTranslation {
    consteval CountedTranslation(Literal englishOne, Literal englishMany, Literal frenchOne,
                                 Literal frenchMany, Literal japanese, Literal korean)
        : one{englishOne, frenchOne, japanese, korean},
          many{englishMany, frenchMany, japanese, korean} {}

    Translation one;
    Translation many;
};

/// The placeholders of a text, a bit for each number. Only "{", one digit and "}" is one.
constexpr unsigned placeholdersOf(std::string_view text) {
    unsigned bits = 0;
    for (std::size_t at = text.find('{'); at != text.npos; at = text.find('{', at + 1))
        if (at + 2 < text.size() && text[at + 2] == '}' && text[at + 1] >= '0' &&
            text[at + 1] <= '9')
            bits |= 1U << (text[at + 1] - '0');
    return bits;
}

/// True for a table without an empty text, whose languages agree in their placeholders.
consteval bool isWhole(std::span<const Translation> table) {
    for (const Translation& entry : table)
        for (const std::string_view text : entry.texts)
            if (text.empty() || placeholdersOf(text) != placeholdersOf(entry.texts[0]))
                return false;
    return true;
}

}  // namespace language
