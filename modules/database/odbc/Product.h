#pragma once

#include <span>
#include <string_view>

#include <corvane/database/Status.h>

namespace qor_db::odbc {

/// What an error of a product means, where the general state says too little.
struct NativeCode {
    int number;
    ErrorCode code;
    bool endsTransaction = false;  ///< The product rolls the transaction back, or may do so.
};

/// What is particular to a database product. Nothing of it is needed: the general states and
/// attributes serve for every product without an entry.
struct Product {
    std::u16string_view name;  ///< As the driver says it.
    /// Statement that sets how long to wait for a lock, with the milliseconds; null for none.
    const char16_t* lockTimeout = nullptr;
    std::span<const NativeCode> codes;

    /// The entry of an error; null for none.
    const NativeCode* find(int nativeCode) const;

    /// The entry of this name, or the general one.
    static const Product& named(std::u16string_view name);
};

}  // namespace qor_db::odbc
