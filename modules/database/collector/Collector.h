#pragma once

#include <memory>

#include <corvane/database/IDatabaseCollector.h>

#include "Driver.h"
#include "ReferenceData.h"
#include "common/Passwords.h"

namespace collector {

/// The rule database, reached by the one driver that its connector names.
class Collector final : public qor_db::IDatabaseCollector {
public:
    explicit Collector(const qor_db::IConnectorData& connector);
    Collector(const Collector&) = delete;
    Collector& operator=(const Collector&) = delete;
    virtual ~Collector() = default;  // after the slots of the interface

    const qor_db::Status& status() const noexcept override { return status_; }
    qor_db::ConnectionInfo connection() const noexcept override;
    qor_db::Status open() override;
    void setTimeout(int milliseconds) noexcept override;
    qor_db::Outcome<std::unique_ptr<qor_db::IQuery>> prepare(
        std::u16string_view statement) override;
    qor_db::Status begin() override;
    qor_db::Status commit() override;
    qor_db::Status rollback() override;
    qor_db::Status installSchema() override;
    qor_db::IReferenceData& reference() noexcept override { return reference_; }

private:
    bool isFile() const { return type_ == qor_db::IConnectorData::DATABASETYPE_SQLITE; }
    qor_db::Status connect();
    void disconnect() noexcept;
    qor_db::Status settleSchema(bool install);
    qor_db::Status upgradeFrom(int version, bool install);
    qor_db::Outcome<bool> isOwnFile(int version);
    qor_db::Status notOpen() const;
    template <typename Work>
    qor_db::Status onConnection(Work&& work);
    qor_db::Status masked(qor_db::Status status) const;

    const qor_db::IConnectorData::DATABASETYPE type_;
    CStringW target_;
    qor_db::driver::Passwords passwords_;
    int timeout_;
    int schemaVersion_ = 0;
    qor_db::Status status_;
    Driver driver_;
    std::unique_ptr<qor_db::IDatabaseConnection> connection_;
    ReferenceData reference_;
};

}  // namespace collector
