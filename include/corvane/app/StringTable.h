#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include <corvane/base/Export.h>

namespace corvane {

/// One text of a string table.
struct StringTableEntry {
    std::uint32_t number;  ///< By which it is asked for.
    const char16_t* text;  ///< Zero-terminated, never null.
};

/// Texts by number, in ascending order of their numbers, each number once.
struct StringTable {
    const StringTableEntry* entries;  ///< The first one.
    std::size_t count;                ///< How many there are.

    /// The entries for a loop.
    std::span<const StringTableEntry> all() const { return {entries, count}; }
};

/// The text of a number in a table; empty when the table has none, or is null. It lives as long as
/// the table's module.
CORVANE_EXPORT std::u16string_view FindTableText(const StringTable* table, std::uint32_t number);

/// Makes a table the calling thread's current one and gives the former one. Null means the
/// table of the library's own resource module. CQorRule::CreateParamStorageObject takes the names
/// of parameters from the current table, and from no other.
CORVANE_EXPORT const StringTable* SetCurrentStringTable(const StringTable* table);

/// Keeps a rule module's table current for a block, such as the body of InitializeParamStorage.
class StringTableScope {
public:
    /// Makes the table current. It is not copied and must outlive the scope.
    explicit StringTableScope(const StringTable& table) : former_(SetCurrentStringTable(&table)) {}
    explicit StringTableScope(StringTable&& table) = delete;  // It would not live long enough.
    StringTableScope(const StringTableScope&) = delete;
    StringTableScope& operator=(const StringTableScope&) = delete;
    ~StringTableScope() { SetCurrentStringTable(former_); }

private:
    const StringTable* former_;
};

/// The signature of the export "QorStringTable" of a resource module.
using StringTableFunction = const StringTable* (*)();
/// The name of that export.
inline constexpr const char* kStringTableName = "QorStringTable";

}  // namespace corvane
