#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::emulation {

/// A text or a 32-bit number; neither for a value of a type that nobody here reads.
struct RegistryValue {
    std::optional<std::u16string> text;
    std::optional<std::uint32_t> number;
};

/// The order of names in the registry: by code unit after folding to upper case.
struct RegistryNameOrder {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const;
};

/// A registry key in memory with its values and subkeys. Paths are separated by "\"; empty parts
/// are passed over.
class RegistryNode {
public:
    /// What a path may have at most; deeper and longer ones are refused.
    static constexpr std::size_t kMostLevels = 512;
    static constexpr std::size_t kLongestName = 255;

    /// The key of a path below this one, or null.
    const RegistryNode* find(std::u16string_view path) const;
    RegistryNode* find(std::u16string_view path) {
        return const_cast<RegistryNode*>(std::as_const(*this).find(path));
    }
    /// The same key, made where it is missing. `budget` is how many keys may still be made. Null
    /// when the path is refused or the budget is spent.
    RegistryNode* make(std::u16string_view path, std::size_t& budget);
    /// Takes a key away with all that is below it.
    void remove(std::u16string_view path);
    /// Lays another key's values and subkeys over this one's.
    void overlay(const RegistryNode& upper);

    /// Fixes the order of the subkeys, here and below. Call it when the tree is complete.
    void index();
    /// The names of the subkeys in name order, once index() has run.
    const std::vector<std::u16string_view>& subkeyNames() const { return names_; }

    /// A value by its name, empty for the default value; null when there is none.
    const RegistryValue* value(std::u16string_view name) const;
    void setValue(std::u16string_view name, RegistryValue value);
    void removeValue(std::u16string_view name);

private:
    std::map<std::u16string, std::unique_ptr<RegistryNode>, RegistryNameOrder> subkeys_;
    std::map<std::u16string, RegistryValue, RegistryNameOrder> values_;
    std::vector<std::u16string_view> names_;
};

/// The registry as its files have it: one tree for each root.
struct RegistryTrees {
    RegistryNode machine;
    RegistryNode user;
    RegistryNode classes;
};

}  // namespace corvane::emulation
