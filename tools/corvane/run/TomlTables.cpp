#include "run/TomlTables.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string_view>
#include <toml++/toml.h>

#include "language/Messages.h"

namespace {

/// Ends the reading, with a reason.
struct Refusal {
    std::string problem;
};

std::string placeIn(const std::string& path, const toml::source_region& region) {
    return path + ":" + std::to_string(region.begin.line);
}

std::string dateText(const toml::date& date) {
    std::ostringstream text;
    text << date;
    return text.str();
}

TomlTable::Value valueOf(const toml::node& node, const std::string& path) {
    if (const auto* text = node.as_string()) return text->get();
    if (const auto* whole = node.as_integer()) return whole->get();
    if (const auto* date = node.as_date()) return dateText(date->get());
    throw Refusal{
        trUtf8("{0}: the value is no text, whole number or date", placeIn(path, node.source()))};
}

TomlTable tableOf(const toml::table& table, const std::string& path,
                  std::initializer_list<const char*> keys) {
    std::map<std::string, TomlTable::Value> values;
    for (const auto& [key, node] : table) {
        const std::string_view name = key.str();
        if (std::ranges::find(keys, name) == keys.end())
            throw Refusal{trUtf8("{0}: the key \"{1}\" is not known here",
                                 placeIn(path, node.source()), name)};
        values.emplace(name, valueOf(node, path));
    }
    return {placeIn(path, table.source()), std::move(values)};
}

std::vector<TomlTable> tablesOf(const toml::table& root, const std::string& path,
                                const std::string& name, std::initializer_list<const char*> keys) {
    std::vector<TomlTable> tables;
    for (const auto& [key, node] : root) {
        const toml::array* list = node.as_array();
        if (key.str() != name || !list)
            throw Refusal{trUtf8("{0}: nothing but [[{1}]] is known here",
                                 placeIn(path, node.source()), name)};
        for (const toml::node& entry : *list) {
            const toml::table* table = entry.as_table();
            if (!table)
                throw Refusal{trUtf8("{0}: this is no table", placeIn(path, entry.source()))};
            tables.push_back(tableOf(*table, path, keys));
        }
    }
    return tables;
}

}  // namespace

std::string TomlTable::text(const std::string& key) const {
    const auto entry = values_.find(key);
    const auto* text = entry == values_.end() ? nullptr : std::get_if<std::string>(&entry->second);
    return text ? *text : std::string();
}

std::optional<std::int64_t> TomlTable::whole(const std::string& key) const {
    const auto entry = values_.find(key);
    const auto* number =
        entry == values_.end() ? nullptr : std::get_if<std::int64_t>(&entry->second);
    return number ? std::optional(*number) : std::nullopt;
}

std::optional<std::vector<TomlTable>> loadTables(const std::string& path, const std::string& name,
                                                 std::initializer_list<const char*> keys,
                                                 std::string& problem) {
    std::error_code failed;
    if (std::filesystem::is_directory(path, failed)) {
        problem = trUtf8("{0} is no file", path);
        return {};
    }
    try {
        return tablesOf(toml::parse_file(path), path, name, keys);
    } catch (const toml::parse_error& error) {
        const toml::source_region& region = error.source();
        problem = region.begin ? placeIn(path, region) : path;
        problem += ": " + std::string(error.description());
    } catch (const Refusal& refusal) {
        problem = refusal.problem;
    }
    return {};
}
