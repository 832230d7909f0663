#include "Product.h"

#include <algorithm>

namespace qor_db::odbc {
namespace {

// https://learn.microsoft.com/sql/relational-databases/errors-events/database-engine-events-and-errors
constexpr NativeCode kServerCodes[] = {
    {229, ErrorCode::ReadOnly},  // permission denied on an object
    {262, ErrorCode::ReadOnly},  // permission denied in the database
    {701, ErrorCode::OutOfMemory},  {824, ErrorCode::Damaged}, {1101, ErrorCode::StorageFull},
    {1105, ErrorCode::StorageFull}, {1205, ErrorCode::Locked},  // deadlock
    {1222, ErrorCode::Locked},                                  // lock request timed out
    {3906, ErrorCode::ReadOnly},                                // the database is read-only
    {9002, ErrorCode::StorageFull},                             // the log is full
};

// https://www.sqlite.org/rescode.html
constexpr NativeCode kFileCodes[] = {
    {1, ErrorCode::BadQuery},     {5, ErrorCode::Locked},      {6, ErrorCode::Locked},
    {7, ErrorCode::OutOfMemory},  {8, ErrorCode::ReadOnly},    {11, ErrorCode::Damaged},
    {13, ErrorCode::StorageFull}, {19, ErrorCode::Constraint}, {26, ErrorCode::Damaged},
};

constexpr Product kProducts[] = {
    {u"Microsoft SQL Server", u"SET LOCK_TIMEOUT %d", kServerCodes},
    {u"SQLite", nullptr, kFileCodes},
};

constexpr Product kGeneral{};

}  // namespace

const Product& Product::named(std::u16string_view name) {
    const auto* found = std::find_if(std::begin(kProducts), std::end(kProducts),
                                     [&](const Product& product) { return product.name == name; });
    return found == std::end(kProducts) ? kGeneral : *found;
}

}  // namespace qor_db::odbc
