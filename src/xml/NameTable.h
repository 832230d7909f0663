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
            // The parser keeps names one after another: a product spreads near addresses.
            constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;  // 2^64 by the golden ratio
            const auto prefix = reinterpret_cast<std::uintptr_t>(key.prefix);
            const auto local = reinterpret_cast<std::uintptr_t>(key.local);
            return static_cast<std::size_t>((local ^ (prefix << 1)) * kOdd >> 32);
        }
    };

    const Name* find(const Key& key);

    Pool& pool_;
    std::unordered_map<Key, const Name*, Hash> names_;
    // The few names of most documents are found here, each in a place of its own.
    std::array<std::pair<Key, const Name*>, 256> recent_{};
};

}  // namespace corvane::xml
