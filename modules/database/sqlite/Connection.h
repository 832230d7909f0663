#pragma once

#include <memory>
#include <utility>

#include "Database.h"
#include "common/DriverConnection.h"

namespace qor_db::sqlite {

/// A connection to a database file.
class Connection final : public driver::DriverConnection {
public:
    explicit Connection(std::shared_ptr<Database> database) : database_(std::move(database)) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() override;

    Outcome<std::unique_ptr<IQuery>> prepare(std::u16string_view statement) override;
    void setTimeout(int milliseconds) noexcept override;
    bool readOnly() const noexcept override;
    Outcome<int> schemaVersion() override;
    Status setSchemaVersion(int version) override;
    Outcome<bool> isEmpty() override;

private:
    bool inTransaction() const noexcept override { return database_->inTransaction; }
    Status beginTransaction() override;
    Status commitTransaction() override;
    Status rollbackTransaction() override;

    std::shared_ptr<Database> database_;
};

}  // namespace qor_db::sqlite
