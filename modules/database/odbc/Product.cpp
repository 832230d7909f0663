#include "Product.h"

#include <algorithm>

namespace qor_db::odbc {
namespace {

// https://learn.microsoft.com/sql/relational-databases/errors-events/database-engine-events-and-errors
constexpr NativeCode kServerCodes[] = {
    {229, ErrorCode::ReadOnly},  // permission denied on an object
    {262, ErrorCode::ReadOnly},  // permission denied in the database
    {701, ErrorCode::OutOfMemory},       {824, ErrorCode::Damaged},
    {1101, ErrorCode::StorageFull},      {1105, ErrorCode::StorageFull},
    {1205, ErrorCode::Locked, true},      // deadlock
    {1222, ErrorCode::Locked},            // lock request timed out
    {3609, ErrorCode::Constraint, true},  // a trigger rolled back
    {3616, ErrorCode::Constraint, true},  // an error in a trigger
    {3906, ErrorCode::ReadOnly},          // the database is read-only
    {3960, ErrorCode::Locked, true},      // conflict with another snapshot
    {9002, ErrorCode::StorageFull},       // the log is full
};

// https://www.sqlite.org/rescode.html and https://www.sqlite.org/lang_transaction.html
constexpr NativeCode kFileCodes[] = {
    {1, ErrorCode::BadQuery},          {5, ErrorCode::Locked},   {6, ErrorCode::Locked},
    {7, ErrorCode::OutOfMemory, true}, {8, ErrorCode::ReadOnly}, {9, ErrorCode::TimedOut, true},
    {10, ErrorCode::Failed, true},     {11, ErrorCode::Damaged}, {13, ErrorCode::StorageFull, true},
    {19, ErrorCode::Constraint},       {26, ErrorCode::Damaged},
};

constexpr Product kProducts[] = {
    {u"Microsoft SQL Server", u"SET LOCK_TIMEOUT %d", kServerCodes},
    {u"SQLite", nullptr, kFileCodes},
};

constexpr Product kGeneral{};

}  // namespace

const NativeCode* Product::find(int nativeCode) const {
    const auto found = std::find_if(codes.begin(), codes.end(), [&](const NativeCode& entry) {
        return entry.number == nativeCode;
    });
    return found == codes.end() ? nullptr : &*found;
}

const Product& Product::named(std::u16string_view name) {
    const auto* found = std::find_if(std::begin(kProducts), std::end(kProducts),
                                     [&](const Product& product) { return product.name == name; });
    return found == std::end(kProducts) ? kGeneral : *found;
}

}  // namespace qor_db::odbc
