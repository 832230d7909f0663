#pragma once

#include <deque>
#include <memory>
#include <string_view>
#include <utility>

#include "Columns.h"
#include "Session.h"
#include "common/DriverQuery.h"

namespace qor_db::odbc {

/// A prepared statement. Its result is read as a whole when it is executed: many servers carry
/// one open result on a connection and close it with the transaction.
class Query final : public driver::DriverQuery {
public:
    static Outcome<std::unique_ptr<IQuery>> prepare(const std::shared_ptr<Session>& session,
                                                    std::u16string_view text);
    explicit Query(std::shared_ptr<Session> session)
        : session_(std::move(session)), statement_(session_->handle()) {}

    int parameterCount() const noexcept override { return parameterCount_; }
    bool onlyReads() const noexcept override { return false; }

private:
    Status prepare(std::u16string_view text);
    Status run(const std::vector<Value>& parameters) override;
    Outcome<bool> advance(Row& row) override;

    bool describe();
    Status fetch();
    Status finish();

    std::shared_ptr<Session> session_;
    StatementHandle statement_;  // before its session goes
    int parameterCount_ = 0;
    std::vector<Column> described_;
    std::deque<Row> rows_;
};

}  // namespace qor_db::odbc
