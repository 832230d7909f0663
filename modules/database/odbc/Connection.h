#pragma once

#include <memory>
#include <utility>

#include "Session.h"
#include "common/DriverConnection.h"

namespace qor_db::odbc {

/// A connection to a data source.
///
/// The version of the reference tables is in the one row of a table, QorSchema. begin changes
/// that row to itself, which takes the right to write in every dialect alike; a database without
/// that table takes it with the first change.
class Connection final : public driver::DriverConnection {
public:
    explicit Connection(std::shared_ptr<Session> session) : session_(std::move(session)) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() override {
        static_cast<void>(rollback());
    }  // queries may hold the session for longer

    Outcome<std::unique_ptr<IQuery>> prepare(std::u16string_view statement) override;
    void setTimeout(int milliseconds) noexcept override;
    bool readOnly() const noexcept override { return session_->readOnly(); }
    Outcome<int> schemaVersion() override;
    Status setSchemaVersion(int version) override;
    Outcome<bool> isEmpty() override;

private:
    bool inTransaction() const noexcept override { return session_->inTransaction(); }
    Status beginTransaction() override;
    Status commitTransaction() override { return session_->commit(); }
    Status rollbackTransaction() override { return session_->rollback(); }

    Outcome<bool> hasSchemaTable();
    Outcome<std::unique_ptr<IQuery>> execute(std::u16string_view text,
                                             const std::vector<Value>& parameters = {});

    std::shared_ptr<Session> session_;
    bool schemaTableKnown_ = false;
};

}  // namespace qor_db::odbc
