#pragma once

#include <deque>
#include <memory>
#include <string_view>
#include <utility>

#include "Database.h"
#include "common/DriverQuery.h"

namespace qor_db::sqlite {

struct EndStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, EndStatement>;

/// A prepared statement. What only reads is read row by row.
class Query final : public driver::DriverQuery {
public:
    static Outcome<std::unique_ptr<IQuery>> prepare(const std::shared_ptr<Database>& database,
                                                    std::u16string_view text);
    Query(std::shared_ptr<Database> database, Statement statement);

    int parameterCount() const noexcept override {
        return sqlite3_bind_parameter_count(statement_.get());
    }

    bool onlyReads() const noexcept override {
        return sqlite3_stmt_readonly(statement_.get()) != 0;
    }

private:
    Status run(const std::vector<Value>& parameters) override;
    Outcome<bool> advance(Row& row) override;

    Status bind(const std::vector<Value>& parameters);
    Status start();
    Row read() const;
    void readColumns();

    std::shared_ptr<Database> database_;
    Statement statement_;   // before its database goes
    std::deque<Row> rows_;  ///< What a changing statement gave.
    bool held_ = false;     ///< The statement is at a row that was not handed out.
};

}  // namespace qor_db::sqlite
