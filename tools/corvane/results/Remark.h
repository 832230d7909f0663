#pragma once

#include <string>
#include <utility>

namespace results {

/// A sentence about a run. Files of results say the same in every language; people are told in
/// theirs.
struct Remark {
    Remark(std::string said) : text(said), shown(std::move(said)) {}
    Remark(const char* said) : Remark(std::string(said)) {}
    Remark(std::string english, std::string own)
        : text(std::move(english)), shown(std::move(own)) {}

    std::string text;   ///< For files of results.
    std::string shown;  ///< For people.

    friend bool operator==(const Remark& one, const Remark& other) {
        return one.text == other.text;
    }
};

}  // namespace results
