#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace scripthost {

/// Where an engine's implementation is looked for: beside its type library, under the same stem.
struct Engine {
    std::u16string folder;  ///< "." when the path names none.
    std::string name;       ///< The stem; a Lua name.

    /// Nothing when the stem of the path is no Lua name.
    static std::optional<Engine> fromLibrary(std::u16string_view path);

    std::u16string file(std::u16string_view ending) const;

    friend bool operator==(const Engine&, const Engine&) = default;
};

/// The bytes of a file of at most `most` bytes, or nothing.
std::optional<std::string> readFile(const std::u16string& path, std::uint64_t most);
bool isFile(const std::u16string& path);

}  // namespace scripthost
