#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// One table of a file in TOML that holds a list of them. Texts are trimmed of nothing; a date is
/// its text, "2027-01-31".
class TomlTable {
public:
    using Value = std::variant<std::string, std::int64_t>;

    TomlTable(std::string place, std::map<std::string, Value> values)
        : place_(std::move(place)), values_(std::move(values)) {}

    const std::string& place() const { return place_; }  ///< "FILE:LINE"
    /// Empty when there is none.
    std::string text(const std::string& key) const;
    std::optional<std::int64_t> whole(const std::string& key) const;

private:
    std::string place_;
    std::map<std::string, Value> values_;
};

/// Reads the tables [[name]] of a file that holds nothing else. Nothing, with the reason and its
/// place in `problem`, when the file cannot be read, has another key than these or a value that is
/// no text, whole number or date.
std::optional<std::vector<TomlTable>> loadTables(const std::string& path, const std::string& name,
                                                 std::initializer_list<const char*> keys,
                                                 std::string& problem);
