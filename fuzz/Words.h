#pragma once

#include <cctype>
#include <random>
#include <vector>

#include "Fuzz.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

/// A mutator for texts of words: another number or another thing in the place of one keeps the form
/// of most.
namespace fuzz {

inline bool isOfWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '+' || c == '-' ||
           c == '#' || c == '_';
}

/// The words of a text: numbers, references and names.
inline std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && isOfWord(text[end]))
            ++end;
        if (end > at) words.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return words;
}

inline bool isNumber(std::string_view word) {
    return word.find_first_of("0123456789") != word.npos &&
           word.find_first_not_of("0123456789+-.eE#") == word.npos;
}

/// Something of the same nature as the word.
inline std::string another(std::string_view word, const std::vector<std::string_view>& words,
                           std::minstd_rand& random) {
    static constexpr const char* kOdd[] = {"0",  "-1", "1",     "2",    "1e300",      "-1e-300",
                                           "0.", "7",  "1e-10", "1e10", "2147483647", "100000"};
    if (isNumber(word) && word.front() != '#' && random() % 3 == 0)
        return kOdd[random() % std::size(kOdd)];
    for (int tries = 0; tries < 20; ++tries) {
        const std::string_view other = words[random() % words.size()];
        if (isNumber(other) == isNumber(word) && (other.front() == '#') == (word.front() == '#'))
            return std::string(other);
    }
    return std::string(word);
}

inline std::size_t mutateWords(std::uint8_t* data, std::size_t size, std::size_t most,
                               unsigned seed) {
    std::minstd_rand random(seed + 1);
    std::string text(textOf(data, size));
    const auto words = wordsOf(text);
    if (words.empty() || random() % 8 == 0) return LLVMFuzzerMutate(data, size, most);
    const std::string_view word = words[random() % words.size()];
    const auto at = static_cast<std::size_t>(word.data() - text.data());
    std::string changed = text;
    changed.replace(at, word.size(), another(word, words, random));
    if (changed.size() > most) return LLVMFuzzerMutate(data, size, most);
    std::copy(changed.begin(), changed.end(), data);
    return changed.size();
}

}  // namespace fuzz
