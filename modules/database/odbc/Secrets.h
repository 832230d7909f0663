#pragma once

#include <string_view>
#include <vector>

#include <corvane/text/CStringW.h>

namespace qor_db::odbc {

/// The passwords of a connection string, so that no message repeats one.
class Secrets {
public:
    explicit Secrets(std::u16string_view connectionString);

    /// The text with "***" in place of each password.
    CStringW hide(CStringW text) const;

private:
    std::vector<CStringW> secrets_;
};

}  // namespace qor_db::odbc
