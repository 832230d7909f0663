#include <algorithm>
#include <utility>

#include <corvane/app/StringResources.h>
#include <corvane/app/StringTable.h>

#include "app/CCorvaneFrameworkApp.h"
#include "app/Language.h"

namespace corvane {
namespace {

thread_local const StringTable* currentTable = nullptr;

const StringTable* ownTable() {
    const CCorvaneFrameworkApp* framework = app::frameworkApp();
    return framework ? framework->strings() : nullptr;
}

}  // namespace

std::u16string_view FindTableText(const StringTable* table, std::uint32_t number) {
    if (!table) return {};
    const std::span<const StringTableEntry> entries = table->all();
    const auto found = std::ranges::lower_bound(entries, number, {}, &StringTableEntry::number);
    return found != entries.end() && found->number == number ? found->text : std::u16string_view();
}

const StringTable* SetCurrentStringTable(const StringTable* table) {
    return std::exchange(currentTable, table);
}

std::u16string_view ResourceText(std::uint32_t number) {
    return FindTableText(ownTable(), number);
}

namespace app {

const StringTable* currentStringTable() {
    return currentTable ? currentTable : ownTable();
}

}  // namespace app
}  // namespace corvane
