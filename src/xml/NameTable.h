#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <libxml/xmlstring.h>
#include <unordered_map>
#include <utility>

#include "xml/Pool.h"

namespace corvane::xml {

/// Keeps each name of a document once, in 16-bit units. The parser hands out equal names as equal
/// pointers, so that a name is converted when it is first met and never looked at again.
class NameTable {
public:
    explicit NameTable(Pool& pool) : pool_(pool) {}

    /// The name as written; the prefix may be null.
    const Name* name(const xmlChar* prefix, const xmlChar* local);
    /// The name of the attribute that declares a prefix, or the default namespace for null.
    const Name* declaration(const xmlChar* prefix);
    std::size_t size() const { return names_.size(); }

private:
    struct Key {
        const xmlChar* prefix;
        const xmlChar* local;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const noexcept {
            const auto prefix = reinterpret_cast<std::uintptr_t>(key.prefix);
            return reinterpret_cast<std::uintptr_t>(key.local) ^ (prefix << 1);
        }
    };

    const Name* find(const Key& key);

    Pool& pool_;
    std::unordered_map<Key, const Name*, Hash> names_;
    // The few names of most documents are found here, each in a place of its own.
    std::array<std::pair<Key, const Name*>, 64> recent_{};
};

}  // namespace corvane::xml
