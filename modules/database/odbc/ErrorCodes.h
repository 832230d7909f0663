#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Odbc.h"
#include "Product.h"

namespace qor_db::odbc {

/// When an error came up, which helps to tell what it means.
enum class Phase { Connect, Prepare, Execute };

/// One record of what the driver or its manager says about a call.
struct Diagnostic {
    std::u16string state;  ///< Five letters and digits.
    int nativeCode = 0;
    CStringW message;
};

/// The records of the last call on a handle.
std::vector<Diagnostic> diagnosticsOf(SQLSMALLINT type, SQLHANDLE handle);

/// The record that says what is wrong; those before it are warnings. Null without a record.
const Diagnostic* essential(const std::vector<Diagnostic>& diagnostics);

/// True when the server rolls the open transaction back, or may have done so.
bool endsTransaction(const Diagnostic& diagnostic, const Product& product);

/// What a record means.
ErrorCode codeOf(const Diagnostic& diagnostic, const Product& product, Phase phase);

}  // namespace qor_db::odbc
